// Loading a theme: the record, the assets, the fit to the screen, the first frame.
#pragma once

struct Form_Main;

// Loads the theme named in Theme, builds the list and draws the first frame. A run-time error in it ends the
// program.
void LoadTheme(Form_Main& form);
