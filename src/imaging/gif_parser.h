// The GIF parser of the image object.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

class c32bppDIB;
struct SystemPictures;

// Reads the first frame of a GIF (GIF87a and GIF89a documents) with its transparent colour. The system's
// loader opens the picture data. What differs from those documents stands in docs/formats/gif.md.
class cGIFparser {
public:
    // Reads `streamLength` bytes at `streamOffset` into the host. False, and an empty host, when they are no
    // GIF or a damaged one, or lie outside the stream.
    bool LoadStream(std::span<const std::uint8_t> inStream, c32bppDIB& cHost, std::size_t streamOffset,
                    std::size_t streamLength, SystemPictures& pictures);
};
