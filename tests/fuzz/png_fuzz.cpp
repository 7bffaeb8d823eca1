// Fuzzer of the PNG decoder, with the compression library and without it.
#include "imaging/c32bppdib.h"
#include "imaging/png_parser.h"
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
        c32bppDIB image;
        cPNGparser().LoadStream(std::span(data, size), image, 0, size, *library);
    }
    return 0;
}
