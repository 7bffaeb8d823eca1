// The icon and cursor parser of the image object.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

class c32bppDIB;
struct ZlibLibrary;

// Reads one entry of an icon or cursor file. What differs from the format stands in docs/formats/ico.md.
class cICOparser {
public:
    // Reads `streamLength` bytes at `streamOffset` into the host: the only entry, or the one that comes
    // nearest to the desired size. False, and an empty host, when they are no icon or a damaged one, or lie
    // outside the stream. The library is for entries that are PNG.
    bool LoadStream(std::span<const std::uint8_t> inStream, int desiredWidth, int desiredHeight,
                    c32bppDIB& cHost, std::size_t streamOffset, std::size_t streamLength, ZlibLibrary& zlib);
};
