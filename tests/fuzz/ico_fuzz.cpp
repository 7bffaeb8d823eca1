// Fuzzer of the icon parser, for two desired sizes. An icon can be a PNG.
#include "imaging/formats/ico_parser.h"
#include "imaging/picture_pixels.h"
#include "platform/posix/dlopened_zlib.h"
#include "run_files.h"
#include "small_png.h"

#include <span>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (!IsSmall(std::span(data, size))) {
        return 0;
    }
    DlopenedZlib missing("no-such-library");
    for (const int desired : {0, 9}) {
        PicturePixels image;
        cICOparser().LoadStream(std::span(data, size), desired, desired, image, 0, size, missing);
    }
    return 0;
}
