// Fitting the theme to the screen.
#pragma once

struct Form_Main;

// Places the picture area and the video surface, prepares the caches and sets the scale, from the sizes of
// the theme and the window and from the configuration. Raises 11 for a theme without a size, 13 for a
// coordinate that is not a number, 6 for one out of range; the detail names file, section and key.
void FitToScreen(Form_Main& form);
