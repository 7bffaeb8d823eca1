// What the alpha bytes of a 32-bit bitmap mean.
#pragma once

#include <cstdint>
#include <span>

// Colour times alpha, cut, as every parser counts it.
constexpr std::uint8_t Premultiplied(int colour, int alpha) {
    return static_cast<std::uint8_t>(colour * alpha / 255);
}

// Looks at all pixels (blue, green, red, alpha, in the order in which the rows lie) and makes of them what a
// 32-bit picture holds: nothing but zeros in every alpha byte is no alpha, and all bytes become 255; colours
// that never exceed their alpha are premultiplied already and stay; others are multiplied. True when the
// picture has alpha, that is in all cases but the first.
bool SettleAlpha(std::span<std::uint8_t> pixels);
