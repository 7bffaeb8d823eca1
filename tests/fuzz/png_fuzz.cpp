// Fuzzer of the PNG decoder, with the compression library and without it.
#include "imaging/c32bppdib.h"
#include "imaging/png_parser.h"
#include "platform/posix/dlopened_zlib.h"

#include <cstdint>
#include <span>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    DlopenedZlib zlib;
    DlopenedZlib missing("no-such-library");
    for (ZlibLibrary* const library : {&zlib, &missing}) {
        c32bppDIB image;
        cPNGparser().LoadStream(std::span(data, size), image, 0, size, *library);
    }
    return 0;
}

#ifdef VANTORIX_FUZZ_MAIN
#include <fstream>
#include <iterator>
#include <vector>

// Runs the files named on the command line.
int main(int argumentCount, char** arguments) {
    for (int i = 1; i < argumentCount; ++i) {
        std::ifstream file(arguments[i], std::ios::binary);
        const std::vector<char> bytes{std::istreambuf_iterator<char>(file), {}};
        LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
    }
}
#endif
