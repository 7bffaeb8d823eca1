// The time of opening PNG pictures of the screen's size, beside the toolkit's reader.
#pragma once

#include "bench_row.h"

// Decodes an opaque and a transparent picture of 1920 x 1080 pixels, made here, from memory: with the
// compression library, with the own Inflate, and with QImage (libpng) into the same premultiplied format.
// Stops the program, and says so, when a reader fails.
std::vector<BenchRow> PngRows();
