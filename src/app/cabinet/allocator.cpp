// Fixed thresholds instead of those that the allocator moves while the program runs.
#include "app/cabinet/allocator.h"

#include <malloc.h>

namespace {

// Most pictures and surfaces and the buffers of streams reach this size; hardly anything else does.
constexpr int kSmallestMapping = 1 << 20;
// Free memory kept at the top of a heap, so that smaller buffers do not move the top with every call.
constexpr int kKeptAtTop = 4 << 20;

} // namespace

// By default every freed mapping of up to 32 MB raises the threshold to its own size. After one large picture
// all later ones of that size and below come from a heap. There they leave holes between small blocks that
// live longer, and up to 64 MB of free memory stay at the top: 31 MB after a single page of large covers.
// Setting a threshold switches the adjustment off. A refused setting changes nothing.
void TuneAllocator() {
    mallopt(M_MMAP_THRESHOLD, kSmallestMapping);
    mallopt(M_TRIM_THRESHOLD, kKeptAtTop);
}
