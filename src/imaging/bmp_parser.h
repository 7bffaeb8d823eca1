// The bitmap parser of the image object, and through it the system's picture loader.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

class c32bppDIB;

class cBMPparser {
public:
    // Reads a 32-bit bitmap, and whatever else the system's picture loader knows. False, and an empty host,
    // when it is neither.
    bool LoadStream(std::span<const std::uint8_t> inStream, c32bppDIB& cHost, std::size_t streamOffset,
                    std::size_t streamLength);
};
