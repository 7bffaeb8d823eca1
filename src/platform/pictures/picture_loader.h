// The system's picture loader: the toolkit reads BMP and JPEG, giflib reads GIF.
#pragma once

#include "platform/system_pictures.h"

class PictureLoader : public SystemPictures {
public:
    std::unique_ptr<SystemPicture> OleLoadPicture(std::span<const std::uint8_t> bytes) override;
};

// Loads what the toolkit needs to read the first JPEG, which takes as long as drawing a page. From any
// thread, while the toolkit runs.
void PrepareJpeg();
