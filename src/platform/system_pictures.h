// Port: the system's picture loader, for the file formats that the jukebox does not decode itself.
#pragma once

#include "platform/pixel_memory.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <vector>

// A loaded picture. The highest row comes first.
struct SystemPicture {
    int width = 0;
    int height = 0;
    // 8: one byte a pixel, an index into the palette. 32: blue, green, red and an unused byte.
    int bitCount = 0;
    // 3 bytes an entry: red, green, blue. An index may be past its end.
    std::vector<std::uint8_t> palette;
    // The pixels, kept alive by `owner` or `memory`, and the distance in bytes from one row to the next.
    const std::uint8_t* pixels = nullptr;
    std::size_t stride = 0;
    std::shared_ptr<const void> owner;
    // Set when the pixels are 32-bit rows without gaps. The caller may take the memory over instead of
    // copying it.
    PixelMemory memory;

    std::span<const std::uint8_t> Row(int y) const {
        return {pixels + static_cast<std::size_t>(y) * stride,
                static_cast<std::size_t>(width) * static_cast<std::size_t>(bitCount / 8)};
    }
};

struct SystemPictures {
    virtual ~SystemPictures() = default;

    // Decodes the bytes of a BMP, JPEG or GIF file; the content decides which. A GIF gives its first frame as
    // palette indices, at the frame's own size. Returns nothing for any other file, a damaged file or too
    // many pixels. May be called from any thread, by several at once.
    virtual std::unique_ptr<SystemPicture> OleLoadPicture(std::span<const std::uint8_t> bytes) = 0;
};
