// The light show: its tick next to an FFT, on a line, and what it costs a patron's key.
#pragma once

#include <QString>

// Prints three rows: a tick without the line next to one FFT, a tick on a line that is read, and the time
// from a key to its frame with a strip that is too long for its line. `homeFolder` is the delivered home.
void BenchLeds(const QString& homeFolder);
