// The window of the video on a second monitor.
#pragma once

struct Form_Main;

// Returns true when the configuration places the video beyond the primary screen's right edge. Raises 13 for
// a position that is not a number.
bool VideoLiesBeyondScreen(const Form_Main& form);

// Places the video window where the configuration says, in desktop pixels, and gives its picture the same
// size, black. Does not show it, and does nothing if the window is loaded already. An empty top is the upper
// edge of the monitor that holds the left edge; an empty width or height is what is left of this monitor, or
// the primary screen's size where there is none. Raises 13 for a place that is not a number, 6 beyond 32
// bits, 7 for a size of more than 1 GiB of pixels.
void LoadVideoForm(Form_Main& form);

// Loads the video window if necessary, and shows it.
void ShowVideoForm(Form_Main& form);

// Hides the video window. It is loaded again when a video is given to it, but only ShowVideoForm makes it
// visible.
void UnloadVideoForm(Form_Main& form);
