// The time of decoding PNG pictures, beside other readers.
#pragma once

#include <QString>

// Prints a row for each of two pictures of the screen's size made here, opaque and transparent, and one for
// all PNGs of a theme folder together. Ours ends with premultiplied pixels, as does QImage; the other peers
// stop at straight colours, which is less work. Stops the program, and says so, when a reader fails.
void BenchPng(const QString& themeFolder);
