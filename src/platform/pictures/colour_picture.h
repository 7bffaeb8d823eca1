// Memory for the pictures of the system's loader.
#pragma once

#include "platform/system_pictures.h"

// A picture of 32 bits a pixel whose memory the caller of the loader may take over; its pixels have any
// content. Null without memory.
std::unique_ptr<SystemPicture> NewColourPicture(std::int64_t width, std::int64_t height);
