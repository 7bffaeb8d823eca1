// Limits for a picture's pixels and for the data that its file must hold.
#pragma once

#include <cstdint>

// The most pixels that a picture of any kind may have: 8192 x 8192.
inline constexpr std::int64_t kMostPicturePixels = std::int64_t{1} << 26;

// The most bytes that decoding may use at once, without the file: four for each of these pixels, and 8 MiB of
// working memory.
inline constexpr std::int64_t kMostDecodingBytes = kMostPicturePixels * 4 + (std::int64_t{8} << 20);

// Up to 4096 x 4096 pixels a file may hold less data than its picture needs. A larger picture must have at
// least the bytes that its format needs, so that a few bytes cannot claim hundreds of megabytes.
inline constexpr std::int64_t kMostUnfilledPixels = std::int64_t{1} << 24;

// Whether a picture of this size has pixels, and no more than the limit.
constexpr bool IsPictureSize(std::int64_t width, std::int64_t height) {
    return width > 0 && height > 0 && width <= kMostPicturePixels / height;
}

// Whether `bytes` of data can fill `pixels`, or the picture is small enough not to matter. `least` is the
// number of bytes that the format needs for these pixels.
constexpr bool CanFill(std::int64_t pixels, std::int64_t bytes, std::int64_t least) {
    return pixels <= kMostUnfilledPixels || bytes >= least;
}
