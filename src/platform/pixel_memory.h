// Memory for the pixels of pictures.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>

// Bytes of any content, to be given back with std::free; null when there are not so many. Large ones come in
// large pages where the system has them: a picture of the screen's size is two thousand small ones, each of
// which costs a stop at its first use.
void* AllocatePixels(std::size_t bytes);

struct FreePixels {
    void operator()(std::uint8_t* bytes) const { std::free(bytes); }
};

// Pixels from AllocatePixels, or null.
using PixelMemory = std::unique_ptr<std::uint8_t[], FreePixels>;
