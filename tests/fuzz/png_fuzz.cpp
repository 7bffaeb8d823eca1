// Fuzzer of the PNG decoder, with the compression library and without it.
#include "core/byte_reader.h"
#include "imaging/c32bppdib.h"
#include "imaging/png_parser.h"
#include "platform/posix/dlopened_zlib.h"
#include "run_files.h"

#include <algorithm>
#include <span>
#include <string_view>

namespace {

// Large pictures are slow to fuzz and take the same ways as small ones; the last header of a file counts, so
// none may tell of one.
bool IsSmall(std::span<const std::uint8_t> file) {
    constexpr std::string_view kName = "IHDR";
    constexpr std::uint64_t kMostPixels = std::uint64_t{1} << 20;
    for (auto at = file.begin(); at != file.end();) {
        at = std::search(at, file.end(), kName.begin(), kName.end());
        ByteReader sides(std::span(at, file.end()));
        sides.Skip(kName.size());
        const std::uint64_t width = sides.ReadBigEndian32().value_or(0);
        if (width * sides.ReadBigEndian32().value_or(0) > kMostPixels) {
            return false;
        }
        at += at != file.end() ? 1 : 0;
    }
    return true;
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
