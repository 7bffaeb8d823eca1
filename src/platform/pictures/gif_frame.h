// The first frame of a GIF, decoded by giflib.
#pragma once

#include "platform/system_pictures.h"

// Reads up to the first frame and no further. Nothing for a file that is no GIF, is damaged, ends before the
// frame is full, or whose frame has no pixels or more than decoding may hold. The letters of the signature
// count in either case.
std::unique_ptr<SystemPicture> LoadGifFrame(std::span<const std::uint8_t> bytes);
