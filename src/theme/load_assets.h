// The fonts, pictures and sounds of a theme.
#pragma once

#include <QStringList>

struct Form_Main;

// The names of a theme's pictures, in the order in which they are loaded.
QStringList ThemePictures();

// Makes the theme's own fonts available; one that cannot be installed is told in a message box.
void InstallFonts(Form_Main& form);

// Loads the pictures; one that is missing or broken leaves its object empty.
void LoadImages(Form_Main& form);

// Makes the graphs of the sounds anew. Raises 5 for a sound that is missing or cannot be decoded.
void LoadSounds(Form_Main& form);
