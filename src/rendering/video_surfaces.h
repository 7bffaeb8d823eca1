// The homes of a running video.
#pragma once

struct Form_Main;

// Puts the running video into its home: the full view, the command block, or the window of the video.
void DrawMiniVideo(Form_Main& form);

// Places the running video during a frame.
void PlaceRunningVideo(Form_Main& form);

// The configuration puts the video beyond the primary screen's right edge. Raises 13 for a position that is
// no number.
bool VideoLiesBeyondScreen(const Form_Main& form);

// Shows and takes away the window of the video.
void ShowVideoForm(Form_Main& form);
void UnloadVideoForm(Form_Main& form);
