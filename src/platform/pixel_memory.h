// Memory for the pixels of pictures.
#pragma once

#include <cstddef>

// Bytes of any content, to be given back with std::free; null when there are not so many. Large ones come in
// large pages where the system has them: a picture of the screen's size is two thousand small ones, each of
// which costs a stop at its first use.
void* AllocatePixels(std::size_t bytes);
