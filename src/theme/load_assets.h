// The fonts, pictures and sounds of a theme.
#pragma once

#include <QStringList>

struct Form_Main;
struct MediaGraph;

// The names of a theme's pictures, in the order in which they are loaded.
QStringList ThemePictures();

// Makes the theme's own fonts available; one that cannot be installed is told in a message box.
void InstallFonts(Form_Main& form);

// Loads the pictures; one that is missing or broken leaves its object empty.
void LoadImages(Form_Main& form);

// Gives a graph a sound file of the theme. Raises 5 when the file is missing or cannot be decoded.
void RenderThemeSound(Form_Main& form, MediaGraph& graph, const QString& name);

// Makes new graphs for the sounds. Raises 5 for a sound that is missing or cannot be decoded.
void LoadSounds(Form_Main& form);
