// The time from the start of the program to its first frame on the screen, beside a bare window with one
// picture.
#pragma once

#include <QString>

// Needs an X display; prints that the row is left out when there is none. `programs` is the folder of the
// programs to start, `homeFolder` the delivered home, `demoFolder` the music.
void BenchStart(const QString& programs, const QString& homeFolder, const QString& demoFolder);
