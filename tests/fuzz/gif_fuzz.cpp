// Fuzzer of the GIF parser with the decoder behind it.
#include "imaging/c32bppdib.h"
#include "imaging/gif_parser.h"
#include "platform/pictures/picture_loader.h"
#include "run_files.h"

#include <span>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    PictureLoader pictures;
    c32bppDIB image;
    cGIFparser().LoadStream(std::span(data, size), image, 0, size, pictures);
    // The decoder alone, as it meets a file that the parser has refused.
    pictures.OleLoadPicture(std::span(data, size));
    return 0;
}
