// Expands rows of 8-bit colours to pixels, several at a time where the processor supports it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

// Writes `target.size() / 4` opaque pixels (blue, green, red, 255) from bytes red, green, blue. A pixel of
// the colour `transparent`, 0xRRGGBB, becomes four zero bytes. A negative `transparent` means none.
void ExpandColours(const std::uint8_t* row, int transparent, std::span<std::uint8_t> target);

// The same from bytes red, green, blue, alpha: each colour times alpha / 255, rounded down.
void ExpandColoursWithAlpha(const std::uint8_t* row, std::span<std::uint8_t> target);
