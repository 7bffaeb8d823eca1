// Fuzzer of the ID3v2 readers: each version reads the same bytes, with a size that fits.
#include "run_files.h"
#include "tag_fuzz.h"

#include <array>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static cTaggedImages tag; // one object for all files, as in the jukebox
    ReadTag(tag, FuzzBytes(data, size));
    if (size < 30) {
        return 0;
    }
    std::vector<std::uint8_t> file(data, data + size);
    const std::array<std::uint8_t, 3> mark = {'I', 'D', '3'};
    std::ranges::copy(mark, file.begin());
    file[4] = 0;
    for (std::size_t i = 0; i < 4; ++i) {
        file[9 - i] = static_cast<std::uint8_t>(size >> (7 * i) & 127);
    }
    for (const int version : {2, 3, 4}) {
        file[3] = static_cast<std::uint8_t>(version);
        ReadTag(tag, file);
    }
    return 0;
}
