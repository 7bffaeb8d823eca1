// Where a running video is shown.
#pragma once

struct Form_Main;

// Called when a video starts, to place its picture. Does nothing.
void DrawMiniVideo(Form_Main& form);

// Called by each frame while the running title ends in "avi" or "mpg", to place the picture again. Does
// nothing.
void PlaceRunningVideo(Form_Main& form);

// Returns true when the configuration places the video beyond the primary screen's right edge. Raises 13 for
// a position that is not a number.
bool VideoLiesBeyondScreen(const Form_Main& form);

// Show and hide the video window.
void ShowVideoForm(Form_Main& form);
void UnloadVideoForm(Form_Main& form);
