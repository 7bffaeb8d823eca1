// Allocating large pictures in large pages (madvise, MADV_HUGEPAGE).
#include "platform/pixel_memory.h"

#include <cstdlib>

#include <sys/mman.h>

namespace {

constexpr std::size_t kLargePage = std::size_t{1} << 21;

} // namespace

void* AllocatePixels(std::size_t bytes) {
    if (bytes < 2 * kLargePage) {
        return std::malloc(bytes);
    }
    void* memory = nullptr;
    if (::posix_memalign(&memory, kLargePage, bytes) != 0) {
        return nullptr;
    }
    // The rest that does not fill a large page stays in small ones, so no memory is wasted. If the system
    // refuses, nothing changes.
    ::madvise(memory, bytes / kLargePage * kLargePage, MADV_HUGEPAGE);
    return memory;
}
