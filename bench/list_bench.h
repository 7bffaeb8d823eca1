// The time it takes to list a large folder, beside other ways to do it.
#pragma once

// Fills temporary folders with 10,000 and 30,000 files, lists them, and prints the rows. Ours is the whole of
// CreateList: reading, keys, counts, log lines, sorting; the peers read and sort the same lines.
void BenchLists();
