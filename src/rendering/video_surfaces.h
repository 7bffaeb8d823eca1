// Where the picture of a running video is shown.
#pragma once

struct Form_Main;

// Called when a video starts: places its picture on the full surface when that is visible, on the second
// window when the configuration places it beyond the primary screen, otherwise small in the command block. A
// fault ends the program.
void DrawMiniVideo(Form_Main& form);

// Called when the running video was stopped. Does nothing: its picture has gone with its graph.
void HideMiniVideo(Form_Main& form);

// Called by each frame while the running title ends in "avi" or "mpg": shrinks the picture after an input,
// and grows it once the jukebox has been idle for some ticks. `coverHoldsBlock`: the big cover is where the
// small picture would be. A fault ends the program.
void PlaceRunningVideo(Form_Main& form, bool coverHoldsBlock);
