// The time of a theme load's look-ups, beside other INI readers.
#pragma once

#include "bench_row.h"

// Reads the file of that path and looks up the 611 keys of a theme, each reader in its usual way. The first
// row is ours; the rows of readers that were not there when the bench was built are missing. Every reader has
// to find the same values: stops the program, and says so, when one does not.
std::vector<BenchRow> IniBench(const QString& themeIni);
