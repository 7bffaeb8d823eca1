// The icon and cursor parser of the image object.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

class c32bppDIB;
struct ZlibLibrary;

class cICOparser {
public:
    // Reads the entry of an icon or cursor that comes nearest to the desired size. False, and an empty host,
    // when it is none. The library is for entries that are PNG.
    bool LoadStream(std::span<const std::uint8_t> inStream, int desiredWidth, int desiredHeight,
                    c32bppDIB& cHost, std::size_t streamOffset, std::size_t streamLength, ZlibLibrary& zlib);
};
