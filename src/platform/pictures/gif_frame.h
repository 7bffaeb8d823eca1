// The first frame of a GIF, decoded by giflib.
#pragma once

#include "platform/system_pictures.h"

// Reads no further than the first frame. Returns nothing for a file that is not a GIF, is damaged or ends
// before the frame is complete, and for a frame without pixels or with more than decoding may hold. The
// signature may be in upper or lower case.
std::unique_ptr<SystemPicture> LoadGifFrame(std::span<const std::uint8_t> bytes);
