// Fuzzer of our own Inflate, which must give the same result as zlib for all data.
#include "imaging/png/inflate.h"
#include "run_files.h"

// Makes the input of zlib const.
#define ZLIB_CONST
#include <zlib.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

namespace {

constexpr std::size_t kHeader = 2;

// The picture data if there are any, otherwise all bytes.
std::span<const std::uint8_t> StreamIn(std::span<const std::uint8_t> bytes) {
    constexpr std::string_view kMark = "IDAT";
    const auto found = std::search(bytes.begin(), bytes.end(), kMark.begin(), kMark.end());
    return found == bytes.end() ? bytes : std::span(found + kMark.size(), bytes.end());
}

// Inflates the stream after its header with zlib. Returns the number of bytes, or nothing when the stream is
// malformed before the target is full.
std::optional<std::size_t> InflateByZlib(std::span<const std::uint8_t> source,
                                         std::span<std::uint8_t> target) {
    z_stream stream = {};
    if (inflateInit2(&stream, -MAX_WBITS) != Z_OK) {
        std::abort();
    }
    stream.next_in = source.data() + kHeader;
    stream.avail_in = static_cast<uInt>(source.size() - kHeader);
    stream.next_out = target.data();
    stream.avail_out = static_cast<uInt>(target.size());
    const int result = inflate(&stream, Z_FINISH);
    const std::size_t made = target.size() - stream.avail_out;
    inflateEnd(&stream);
    return result == Z_STREAM_END || made == target.size() ? std::optional(made) : std::nullopt;
}

std::optional<std::vector<std::uint8_t>> InPieces(std::span<const std::uint8_t> source, std::size_t most) {
    std::vector<std::uint8_t> made;
    const bool isDone = InflateInPieces(source, most, [&made](std::span<const std::uint8_t> piece) {
        made.insert(made.end(), piece.begin(), piece.end());
        return true;
    });
    return isDone ? std::optional(made) : std::nullopt;
}

// Returns whether the target was filled.
bool Compare(std::span<const std::uint8_t> source, std::size_t targetSize) {
    std::vector<std::uint8_t> own(targetSize);
    std::vector<std::uint8_t> theirs(targetSize);
    const auto ownMade = Inflate(source, own);
    const auto theirsMade = InflateByZlib(source, theirs);
    const bool isSame =
        ownMade == theirsMade &&
        (!ownMade ||
         std::equal(own.begin(), own.begin() + static_cast<std::ptrdiff_t>(*ownMade), theirs.begin()));
    if (!isSame) {
        std::fprintf(stderr, "own %zd, zlib %zd of %zu bytes\n",
                     ownMade ? static_cast<std::ptrdiff_t>(*ownMade) : -1,
                     theirsMade ? static_cast<std::ptrdiff_t>(*theirsMade) : -1, targetSize);
        std::abort();
    }
    own.resize(ownMade.value_or(0));
    const auto pieces = InPieces(source, targetSize);
    if (pieces.has_value() != ownMade.has_value() || pieces.value_or(own) != own) {
        std::fprintf(stderr, "other bytes in pieces, of %zu\n", targetSize);
        std::abort();
    }
    return ownMade == targetSize;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto source = StreamIn(std::span(data, size));
    if (source.size() >= kHeader) {
        Compare(source, 1);
        Compare(source, 259);
        // More than one piece, for the few streams that are long enough.
        if (Compare(source, 70000)) {
            Compare(source, 600000);
        }
    }
    return 0;
}
