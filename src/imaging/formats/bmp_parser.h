// The parser of bitmaps. It passes all other files to the system's picture loader.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

class PicturePixels;
struct SystemPicture;
struct SystemPictures;

// Reads 32-bit bitmap files with their alpha. All other files go to the system's picture loader, whose
// pictures are opaque. docs/formats/bmp.md lists the differences from the format.
class cBMPparser {
public:
    // Reads `streamLength` bytes at `streamOffset` into the host. Returns false and leaves the host empty
    // when they are neither a 32-bit bitmap nor a file that the system can load, or when they are outside the
    // stream.
    bool LoadStream(std::span<const std::uint8_t> inStream, PicturePixels& cHost, std::size_t streamOffset,
                    std::size_t streamLength, SystemPictures& pictures);
    // Fills the host with a picture from the system's loader. `bitCount` is the number of bits per pixel: 8
    // for palette indices or 32. Every alpha becomes 255. Takes over the picture's memory if possible.
    // Returns false and leaves the host empty for other bit counts, for too many pixels and for an index
    // without a colour.
    bool ConvertstdPicTo32bpp(SystemPicture& stdPic, PicturePixels& cHost, int bitCount);
};
