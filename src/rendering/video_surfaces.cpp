// Where a running video is shown.
#include "rendering/video_surfaces.h"

// Both do nothing: the platform's video graph refuses every file, so there is no picture to place.
void DrawMiniVideo(Form_Main& /*form*/) {}
void PlaceRunningVideo(Form_Main& /*form*/) {}
