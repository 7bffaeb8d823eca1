// The GIF parser of the image object.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

class c32bppDIB;

class cGIFparser {
public:
    // Reads the first frame of a GIF. False, and an empty host, when it is none.
    bool LoadStream(std::span<const std::uint8_t> inStream, c32bppDIB& cHost, std::size_t streamOffset,
                    std::size_t streamLength);
};
