// Allocating large pictures in large pages (madvise: MADV_HUGEPAGE, MADV_DONTNEED).
#include "platform/pixel_memory.h"

#include <cstdlib>
#include <cstring>

#include <sys/mman.h>

namespace {

constexpr std::size_t kLargePage = std::size_t{1} << 21;
// A multiple of the page size of every system.
constexpr std::size_t kPage = std::size_t{1} << 16;

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

void* AllocateClearPixels(std::size_t bytes) {
    if (bytes < 2 * kLargePage) {
        return std::calloc(bytes, 1);
    }
    void* const memory = AllocatePixels(bytes);
    if (memory == nullptr) {
        return nullptr;
    }
    // Pages without contents are zeros. A new block has none, a block that was in use loses them here.
    const std::size_t pages = bytes / kPage * kPage;
    if (::madvise(memory, pages, MADV_DONTNEED) != 0) {
        std::memset(memory, 0, pages);
    }
    std::memset(static_cast<char*>(memory) + pages, 0, bytes - pages);
    return memory;
}
