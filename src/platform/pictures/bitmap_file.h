// Bitmap files that the toolkit does not know or reads differently.
#pragma once

#include "platform/system_pictures.h"

#include <QByteArray>

#include <optional>

// The header fields that say where the rows are and how much room they take.
struct BitmapHeader {
    std::uint32_t bytes = 0;
    std::int64_t width = 0;
    // Without its sign. A negative height means that the highest row comes first.
    std::int64_t height = 0;
    bool isTopDown = false;
    std::uint32_t bitCount = 0;
    std::uint32_t compression = 0;
    // The offset of the rows in the file, and the padded bytes of each row.
    std::int64_t rows = 0;
    std::int64_t stride = 0;
};

// Reads the header of a bitmap that has pixels, no more than a picture may have, and, if uncompressed, all
// its rows inside the file. Returns nothing for any other bitmap: the toolkit would show the rows that are
// present in a truncated file.
std::optional<BitmapHeader> ReadBitmapHeader(std::span<const std::uint8_t> file);

// Decodes an uncompressed bitmap of 16 bits a pixel. Widens its samples by repeating their bits, so that
// white stays white. Returns null when its masks have gaps, and without memory.
std::unique_ptr<SystemPicture> LoadSixteenBits(std::span<const std::uint8_t> file,
                                               const BitmapHeader& header);

// Makes a header that the toolkit knows: headers of 52 and 56 bytes, which are the usual header with masks
// inside, become headers of 40 bytes. Returns other files unchanged.
QByteArray WithKnownHeader(const QByteArray& file, const BitmapHeader& header);
