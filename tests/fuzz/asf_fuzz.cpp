// Fuzzer of the ASF reader, with the bytes as they are and with a valid header.
#include "imaging/tags/asf_parser.h"
#include "run_files.h"
#include "tag_fuzz.h"

#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static cTaggedImages tag; // one object for all files, as in the jukebox
    ReadTag(tag, FuzzBytes(data, size));
    if (size < 62) {
        return 0;
    }
    std::vector<std::uint8_t> file(data, data + size);
    std::ranges::copy(kAsfHeader, file.begin());
    for (std::size_t i = 0; i < 8; ++i) {
        file[16 + i] = static_cast<std::uint8_t>(i < 4 ? (size - 1) >> (8 * i) & 255 : 0);
    }
    file[29] = 2;
    ReadTag(tag, file);
    return 0;
}
