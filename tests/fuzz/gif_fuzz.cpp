// Fuzzer of the GIF parser and the decoder.
#include "imaging/formats/gif_parser.h"
#include "imaging/picture_pixels.h"
#include "platform/pictures/picture_loader.h"
#include "run_files.h"

#include <span>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    PictureLoader pictures;
    PicturePixels image;
    cGIFparser().LoadStream(std::span(data, size), image, 0, size, pictures);
    // The decoder without the parser, as for a file that the parser has refused.
    pictures.OleLoadPicture(std::span(data, size));
    return 0;
}
