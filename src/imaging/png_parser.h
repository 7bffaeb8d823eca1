// The PNG decoder: chunks, checksums, inflated rows, pixels.
#pragma once

#include "imaging/png_header.h"
#include "imaging/png_pixels.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

class c32bppDIB;
struct ZlibLibrary;

// Reads one PNG (W3C PNG document, second edition) of any colour type, depth and interlacing. What differs
// from that document stands in docs/formats/png.md. An object reads one file.
class cPNGparser {
public:
    // Reads `streamLength` bytes at `streamOffset` into the host. False, and an empty host, when they are no
    // PNG or a damaged one, or lie outside the stream. The library makes the checksums, which nobody does
    // without it, and is asked for what the own Inflate refuses.
    bool LoadStream(std::span<const std::uint8_t> inStream, c32bppDIB& host, std::size_t streamOffset,
                    std::size_t streamLength, ZlibLibrary& zlib);

private:
    bool ReadChunks(std::span<const std::uint8_t> chunks, ZlibLibrary& zlib);
    bool TakeChunk(std::uint32_t type, std::span<const std::uint8_t> data);
    bool TakeHeader(std::span<const std::uint8_t> data);
    bool TakePalette(std::span<const std::uint8_t> data);
    void TakeTransparency(std::span<const std::uint8_t> data);
    int TransparentColour() const;
    bool Decode(c32bppDIB& host, ZlibLibrary& zlib);
    bool HasAlpha() const;

    PngHeader header_;
    PngColours colours_;
    std::vector<std::uint8_t> compressed_;
};
