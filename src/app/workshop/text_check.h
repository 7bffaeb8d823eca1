// Checking the fonts of a theme, and that its texts fit into their rectangles.
#pragma once

struct CheckedTheme;

// Installs the fonts of the theme's folder, as the jukebox does.
void InstallFonts(CheckedTheme& theme);

void CheckFonts(CheckedTheme& theme);
void CheckTexts(CheckedTheme& theme);
