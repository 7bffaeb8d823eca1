// The window of the video on a second monitor.
#pragma once

struct Form_Main;

// Returns true when the configuration places the video beyond the primary screen's right edge. Raises 13 for
// a position that is not a number.
bool VideoLiesBeyondScreen(const Form_Main& form);

// Show and hide the video window.
void ShowVideoForm(Form_Main& form);
void UnloadVideoForm(Form_Main& form);
