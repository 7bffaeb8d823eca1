// Which pictures are worth fuzzing.
#pragma once

#include "core/byte_reader.h"

#include <algorithm>
#include <cstdint>
#include <span>
#include <string_view>

// Large pictures are slow to fuzz and use the same code as small ones. The last PNG header of a file counts,
// so every header must be small.
inline bool IsSmall(std::span<const std::uint8_t> file) {
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
