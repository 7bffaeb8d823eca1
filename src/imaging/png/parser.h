// The PNG decoder: chunks, checksums, inflated rows, pixels.
#pragma once

#include "imaging/png/pixels.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

class PicturePixels;
struct ZlibLibrary;

// Reads one PNG (W3C PNG document, second edition) of any colour type, depth and interlacing.
// docs/formats/png.md lists the differences from that document. An object reads only one file.
class cPNGparser {
public:
    // Reads `streamLength` bytes at `streamOffset` into the host. Returns false and leaves the host empty
    // when they are not a PNG, when the PNG is damaged, or when they are outside the stream. The library
    // tests the checksums and inflates what our own Inflate refuses; without the library both steps are left
    // out.
    bool LoadStream(std::span<const std::uint8_t> inStream, PicturePixels& cHost, std::size_t streamOffset,
                    std::size_t streamLength, ZlibLibrary& zlib);

private:
    bool ReadChunks(std::span<const std::uint8_t> chunks, ZlibLibrary& zlib);
    bool TakeChunk(std::uint32_t type, std::span<const std::uint8_t> data);
    bool TakeHeader(std::span<const std::uint8_t> data);
    bool TakePalette(std::span<const std::uint8_t> data);
    void TakeTransparency(std::span<const std::uint8_t> data);
    int TransparentColour() const;
    bool Decode(PicturePixels& cHost, ZlibLibrary& zlib);
    bool HasAlpha() const;

    PngHeader header_;
    PngColours colours_;
    std::vector<std::uint8_t> compressed_;
};
