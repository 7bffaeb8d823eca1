// The bitmap parser of the image object, and through it the system's picture loader.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

class c32bppDIB;
struct SystemPicture;
struct SystemPictures;

// Reads 32-bit bitmap files with their alpha. Everything else goes to the system's picture loader, whose
// pictures are opaque. What differs from the format stands in docs/formats/bmp.md.
class cBMPparser {
public:
    // Reads `streamLength` bytes at `streamOffset` into the host. False, and an empty host, when they are
    // neither a 32-bit bitmap nor anything that the system knows, or lie outside the stream.
    bool LoadStream(std::span<const std::uint8_t> inStream, c32bppDIB& cHost, std::size_t streamOffset,
                    std::size_t streamLength, SystemPictures& pictures);
    // Fills the host with a picture of the system, of `bitCount` bits a pixel: 8, which are looked up in its
    // palette, or 32. Every alpha becomes 255. Takes the picture's memory over where it can. False, and an
    // empty host, for other bit counts, too many pixels and an index without a colour.
    bool ConvertstdPicTo32bpp(SystemPicture& stdPic, c32bppDIB& cHost, int bitCount);
};
