// The time of getting pictures out of tags, and of a page full of large covers.
#pragma once

#include <QString>

// Prints two rows for the pictures of 1,000 mp3 files, small and large ones: our reader beside reading the
// same bytes, and TagLib.
void BenchTags();

// Prints a row for a page of 20 covers of 1400 x 1400 pixels, half of them beside their tracks and half in
// tags: seen for the first time, and again. `delivered` is the folder home/ of the repository.
void BenchCovers(const QString& delivered);
