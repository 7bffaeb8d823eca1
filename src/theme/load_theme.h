// Loading a theme: the record, the assets, the fit to the screen, the first frame.
#pragma once

#include <QString>

struct Form_Main;

// The path of a file of the theme in use, as it is on disk whatever the case of its letters; the plain path
// when there is none.
QString ThemeFile(Form_Main& form, const QString& name);

// The folder of the theme in use.
QString ThemeFolder(const Form_Main& form);

// Loads the theme named in Theme, builds the list and draws the first frame. A run-time error in it ends the
// program: a missing or wrong number is told with file, section and key.
void LoadTheme(Form_Main& form);

// Reads the slots of both pages from the theme file. A run-time error in it ends the program.
void LoadThemePositionPistes(Form_Main& form);
