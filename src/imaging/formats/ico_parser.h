// The parser of icon and cursor files.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

class PicturePixels;
struct ZlibLibrary;

// Reads one entry of an icon or cursor file. docs/formats/ico.md lists the differences from the format.
class cICOparser {
public:
    // Reads `streamLength` bytes at `streamOffset` into the host: the only entry, or the entry that is
    // nearest to the desired size. Returns false and leaves the host empty when they are not an icon, when
    // the icon is damaged, or when they are outside the stream. Entries in PNG format use the library.
    bool LoadStream(std::span<const std::uint8_t> inStream, int desiredWidth, int desiredHeight,
                    PicturePixels& cHost, std::size_t streamOffset, std::size_t streamLength,
                    ZlibLibrary& zlib);
};
