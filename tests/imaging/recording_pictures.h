// A system picture loader that records its input, for tests of the parsers that call it.
#pragma once

#include "platform/system_pictures.h"

#include <vector>

struct RecordingPictures : SystemPictures {
    std::unique_ptr<SystemPicture> OleLoadPicture(std::span<const std::uint8_t> bytes) override {
        asked.emplace_back(bytes.begin(), bytes.end());
        return answer ? CopyOf(*answer) : nullptr;
    }

    // Shares the pixels.
    static std::unique_ptr<SystemPicture> CopyOf(const SystemPicture& picture) {
        auto copy = std::make_unique<SystemPicture>();
        copy->width = picture.width;
        copy->height = picture.height;
        copy->bitCount = picture.bitCount;
        copy->palette = picture.palette;
        copy->pixels = picture.pixels;
        copy->stride = picture.stride;
        copy->owner = picture.owner;
        return copy;
    }

    // The answer to every request; null means that nothing can be loaded.
    std::unique_ptr<SystemPicture> answer;
    std::vector<std::vector<std::uint8_t>> asked;
};

// A system picture with these pixels.
inline SystemPicture MakeSystemPicture(int width, int height, int bitCount,
                                       std::vector<std::uint8_t> pixels) {
    SystemPicture picture;
    picture.width = width;
    picture.height = height;
    picture.bitCount = bitCount;
    picture.stride = static_cast<std::size_t>(width) * static_cast<std::size_t>(bitCount / 8);
    const auto kept = std::make_shared<std::vector<std::uint8_t>>(std::move(pixels));
    picture.pixels = kept->data();
    picture.owner = kept;
    return picture;
}
