// The time of a theme load's look-ups, beside other INI readers.
#pragma once

#include <QString>

// Reads the file of that path and looks up the 611 keys of a theme, each reader in its usual way, and prints
// a row. The readers that were not there when the bench was built are missing. Stops the program, and says
// so, when a reader does not find the same values.
void BenchIni(const QString& themeIni);
