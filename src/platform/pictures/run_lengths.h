// Run-length coded bitmaps of 4 and 8 bits.
#pragma once

#include "platform/pictures/bitmap_file.h"

// Whether a bitmap is of this kind, by its header.
bool HasRunLengths(const BitmapHeader& header);

// The picture as indices and colours. What the data jump over and what they leave out at their end is colour
// 0; what passes the right edge of its row is dropped, and a jump ends at the edges. Null for data that end
// inside a run, a jump or plain pixels, for a palette that is cut, and for more pixels than the data can fill
// or memory may hold.
std::unique_ptr<SystemPicture> LoadRunLengths(std::span<const std::uint8_t> file, const BitmapHeader& header);
