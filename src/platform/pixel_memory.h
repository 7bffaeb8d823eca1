// Memory for the pixels of pictures.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>

// Allocates uninitialised bytes, to be freed with std::free. Returns null when memory is short. Large blocks
// use large pages where the system has them: a picture of the screen's size covers two thousand small ones,
// and each costs a page fault at its first use.
void* AllocatePixels(std::size_t bytes);

// The same with bytes of 0. In a large block, pages that are never written take no memory.
void* AllocateClearPixels(std::size_t bytes);

struct FreePixels {
    void operator()(std::uint8_t* bytes) const { std::free(bytes); }
};

// Pixels from AllocatePixels, or null.
using PixelMemory = std::unique_ptr<std::uint8_t[], FreePixels>;
