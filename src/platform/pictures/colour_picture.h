// Memory for the pictures of the system's loader.
#pragma once

#include "platform/system_pictures.h"

// Allocates a picture of 32 bits a pixel with uninitialised pixels. The loader's caller may take over its
// memory. Returns null without memory.
std::unique_ptr<SystemPicture> NewColourPicture(std::int64_t width, std::int64_t height);
