// The time it takes to list a large folder, beside other ways to do it.
#pragma once

#include "bench_row.h"

// Fills folders of 10,000 and 30,000 files below `scratch`, which is made when missing and removed again, and
// lists them. Ours is the whole of CreateList: reading, keys, counts, log lines, sorting. The peers read and
// sort the same lines.
std::vector<BenchRow> ListBench(const QString& scratch);
