// Decoding a large JPEG at a fraction of its size.
#pragma once

#include <cstdint>
#include <span>

class c32bppDIB;

// Decodes a JPEG in the least number of eighths of its size that is still twice the size in which it is to be
// shown and moves no edge by a fifth of a pixel there, so that what is left to scale down looks the same.
// False, and an empty object, when the bytes are no JPEG, when only the full size would do, and when they
// cannot be decoded: whole decoding is for those.
bool LoadReducedJpeg(std::span<const std::uint8_t> bytes, int width, int height, c32bppDIB& picture);
