// Where a running video is shown.
#pragma once

struct Form_Main;

// Called when a video starts, to place its picture. Does nothing.
void DrawMiniVideo(Form_Main& form);

// Called by each frame while the running title ends in "avi" or "mpg", to place the picture again. Does
// nothing.
void PlaceRunningVideo(Form_Main& form);
