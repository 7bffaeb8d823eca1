// The system's picture loader: BMP and JPEG by the toolkit's reader, GIF by giflib.
#pragma once

#include "platform/system_pictures.h"

class PictureLoader : public SystemPictures {
public:
    std::unique_ptr<SystemPicture> OleLoadPicture(std::span<const std::uint8_t> bytes) override;
};

// Loads what the toolkit needs to read the first JPEG, which takes as long as drawing a page. From any
// thread, while the toolkit is up.
void PrepareJpeg();
