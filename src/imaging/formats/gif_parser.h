// The parser of GIF files.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

class PicturePixels;
struct SystemPictures;

// Reads the first frame of a GIF (GIF87a and GIF89a documents) with its transparent colour. The system's
// loader decodes the picture data. docs/formats/gif.md lists the differences from those documents.
class cGIFparser {
public:
    // Reads `streamLength` bytes at `streamOffset` into the host. Returns false and leaves the host empty
    // when they are not a GIF, when the GIF is damaged, or when they are outside the stream.
    bool LoadStream(std::span<const std::uint8_t> inStream, PicturePixels& cHost, std::size_t streamOffset,
                    std::size_t streamLength, SystemPictures& pictures);
};
