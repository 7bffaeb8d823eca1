// Bitmaps of 4 and 8 bits with run-length coding.
#pragma once

#include "platform/pictures/bitmap_file.h"

// Whether the header says that a bitmap is of this kind.
bool HasRunLengths(const BitmapHeader& header);

// Decodes the picture to indices and a palette. Pixels that the data skip or leave out at the end have colour
// 0. Pixels past the right edge of their row are dropped, and a jump stops at the edges. Returns null for
// data that end inside a run, a jump or plain pixels, for a truncated palette, and for more pixels than the
// data can fill or memory may hold.
std::unique_ptr<SystemPicture> LoadRunLengths(std::span<const std::uint8_t> file, const BitmapHeader& header);
