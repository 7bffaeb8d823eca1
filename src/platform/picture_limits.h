// How many pixels a picture may have, and how many its file must be able to fill.
#pragma once

#include <cstdint>

// Pixels that a picture of any kind may have: 8192 x 8192.
inline constexpr std::int64_t kMostPicturePixels = std::int64_t{1} << 26;

// Bytes that decoding may hold at once beside the file: four for each of these pixels, and 8 MiB to work in.
inline constexpr std::int64_t kMostDecodingBytes = kMostPicturePixels * 4 + (std::int64_t{8} << 20);

// Up to 4096 x 4096 pixels a file may hold less data than its picture needs. A larger picture must have the
// bytes that its format needs at the least, so that a few bytes cannot claim hundreds of megabytes.
inline constexpr std::int64_t kMostUnfilledPixels = std::int64_t{1} << 24;

// Whether a picture of these sizes has pixels, and no more than any picture may have.
constexpr bool IsPictureSize(std::int64_t width, std::int64_t height) {
    return width > 0 && height > 0 && width <= kMostPicturePixels / height;
}

// Whether `bytes` of data can fill `pixels`, or need not. `least` is how many bytes the format needs for
// them.
constexpr bool CanFill(std::int64_t pixels, std::int64_t bytes, std::int64_t least) {
    return pixels <= kMostUnfilledPixels || bytes >= least;
}
