// Allocating pictures of 32 bits a pixel in memory that can change its owner.
#include "platform/pictures/colour_picture.h"

std::unique_ptr<SystemPicture> NewColourPicture(std::int64_t width, std::int64_t height) {
    constexpr std::int64_t kPixelBytes = 4;
    auto picture = std::make_unique<SystemPicture>();
    picture->width = static_cast<int>(width);
    picture->height = static_cast<int>(height);
    picture->bitCount = 32;
    picture->stride = static_cast<std::size_t>(width * kPixelBytes);
    picture->memory.reset(
        static_cast<std::uint8_t*>(AllocatePixels(static_cast<std::size_t>(width * height * kPixelBytes))));
    picture->pixels = picture->memory.get();
    return picture->memory ? std::move(picture) : nullptr;
}
