// The rows of a PNG, pass by pass: unfiltered and put into the host.
#pragma once

#include "imaging/png_pixels.h"

#include <cstdint>
#include <span>

class c32bppDIB;

// Draws all passes of a picture from its inflated data, which hold PngInflatedSize bytes and are changed on
// the way. The host has the header's size. False for an unknown filter or a sample without a colour.
bool DrawPngPasses(const PngHeader& header, const PngPixelWriter& writer, std::span<std::uint8_t> data,
                   c32bppDIB& host);
