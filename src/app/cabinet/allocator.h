// Settings of the C library's allocator.
#pragma once

// Keeps large blocks out of the heaps, so that their memory goes back to the system when they are freed. Call
// it before other threads start.
void TuneAllocator();
