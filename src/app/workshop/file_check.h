// Checking the files in a theme's folder.
#pragma once

struct CheckedTheme;

// Reports files that nothing reads, names in other upper and lower case, and a missing preview.
void CheckFiles(CheckedTheme& theme);
