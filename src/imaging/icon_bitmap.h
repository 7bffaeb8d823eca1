// A picture of an icon file that is a bitmap with a mask.
#pragma once

#include <cstdint>
#include <span>

class c32bppDIB;

// Reads a device-independent bitmap of 1, 4, 8, 16, 24 or 32 bits with the mask behind it. Below 32 bits a
// bit set in the mask makes its pixel transparent; 32 bits have their own alpha, and the mask is not looked
// at. `alpha` is told by what the picture holds. False when the header makes no sense, rows or mask pass the
// end of the bytes, or a sample has no colour; the host may then be half filled.
bool ReadIconBitmap(std::span<const std::uint8_t> bytes, c32bppDIB& host);
