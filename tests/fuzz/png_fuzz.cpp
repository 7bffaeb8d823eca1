// Fuzzer of the PNG decoder, with the compression library and without it.
#include "imaging/picture_pixels.h"
#include "imaging/png/parser.h"
#include "platform/posix/dlopened_zlib.h"
#include "run_files.h"
#include "small_png.h"

#include <span>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (!IsSmall(std::span(data, size))) {
        return 0;
    }
    DlopenedZlib zlib;
    DlopenedZlib missing("no-such-library");
    for (ZlibLibrary* const library : {&zlib, &missing}) {
        PicturePixels image;
        cPNGparser().LoadStream(std::span(data, size), image, 0, size, *library);
    }
    return 0;
}
