// Rows of 8-bit colours as pixels, several at once where the processor can.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

// Writes `target.size() / 4` opaque pixels (blue, green, red, 255) from bytes red, green, blue. One of the
// colour `transparent`, as 0xRRGGBB, becomes four zero bytes; a negative one is none.
void ExpandColours(const std::uint8_t* row, int transparent, std::span<std::uint8_t> target);

// The same from bytes red, green, blue, alpha: each colour times alpha / 255, cut.
void ExpandColoursWithAlpha(const std::uint8_t* row, std::span<std::uint8_t> target);
