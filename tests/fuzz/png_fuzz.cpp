// Fuzzer of the PNG decoder, with the compression library and without it.
#include "core/byte_reader.h"
#include "imaging/c32bppdib.h"
#include "imaging/png_parser.h"
#include "platform/posix/dlopened_zlib.h"
#include "run_files.h"

#include <span>

namespace {

// The sides that the first header tells. Large pictures are slow to fuzz and take the same ways as small
// ones.
bool IsSmall(std::span<const std::uint8_t> file) {
    constexpr std::size_t kSidesAt = 16;
    constexpr std::uint64_t kMostPixels = std::uint64_t{1} << 20;
    ByteReader reader(file);
    if (!reader.Skip(kSidesAt)) {
        return true;
    }
    const std::uint64_t width = reader.ReadBigEndian32().value_or(0);
    return width * reader.ReadBigEndian32().value_or(0) <= kMostPixels;
}

} // namespace

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
