// Decodes a large JPEG at a fraction of its size.
#pragma once

#include <cstdint>
#include <span>

class c32bppDIB;

// Decodes a JPEG at the lowest number of eighths of its size that is at least twice the size in which it is
// shown and moves no edge by more than a fifth of a shown pixel. Scaling down the rest then gives the same
// look. Returns false and leaves the object empty when the bytes are not a JPEG, when only the full size is
// sufficient, or when they cannot be decoded. The caller then decodes the whole picture.
bool LoadReducedJpeg(std::span<const std::uint8_t> bytes, int width, int height, c32bppDIB& picture);
