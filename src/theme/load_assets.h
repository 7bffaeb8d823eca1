// The pictures and sounds of a theme.
#pragma once

#include <QStringList>

struct Form_Main;
struct MediaGraph;

// The names of a theme's pictures, in the order in which they are loaded.
QStringList ThemePictures();
// The names of a theme's sounds.
QStringList ThemeSounds();

// Loads the pictures. A missing or broken picture leaves its object empty.
void LoadImages(Form_Main& form);

// Loads a sound file of the theme into a graph. Raises 5 when the file is missing or cannot be decoded.
void RenderThemeSound(Form_Main& form, MediaGraph& graph, const QString& name);

// Creates new graphs for the sounds. Raises 5 for a sound that is missing or cannot be decoded.
void LoadSounds(Form_Main& form);
