// What the toolkit does not know or does otherwise about bitmap files.
#pragma once

#include "platform/system_pictures.h"

#include <QByteArray>

#include <optional>

// The fields of a bitmap file that tell where its rows are and how much room they take.
struct BitmapHeader {
    std::uint32_t bytes = 0;
    std::int64_t width = 0;
    // Without its sign, which tells that the highest row comes first.
    std::int64_t height = 0;
    bool isTopDown = false;
    std::uint32_t bitCount = 0;
    std::uint32_t compression = 0;
    // Where the rows begin in the file, and the bytes of each, padded.
    std::int64_t rows = 0;
    std::int64_t stride = 0;
};

// The header of a bitmap that has pixels, no more than a picture may have, and, uncompressed, all its rows
// inside the file. Nothing for any other: the toolkit would show what there is of a file that broke off.
std::optional<BitmapHeader> ReadBitmapHeader(std::span<const std::uint8_t> file);

// The picture of an uncompressed bitmap of 16 bits. Its samples are widened by repeating their bits, so that
// white stays white. Null when its masks have gaps, and without memory.
std::unique_ptr<SystemPicture> LoadSixteenBits(std::span<const std::uint8_t> file,
                                               const BitmapHeader& header);

// A file that the toolkit knows: headers of 52 and 56 bytes, which are the usual one with masks as a part of
// it, become one of 40. Other files stay as they are.
QByteArray WithKnownHeader(const QByteArray& file, const BitmapHeader& header);
