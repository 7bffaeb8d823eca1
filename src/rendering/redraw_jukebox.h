// The whole frame.
#pragma once

#include "core/integer.h"

struct Form_Main;
struct Surface;

// Builds one whole frame on Picture_Main out of what has been prepared off screen, and shows it.
void RedrawJukebox(Form_Main& form);

// Makes Picture_Main visible as it stands.
void RefreshMain(Form_Main& form);

// Copies a slot of the page from one of the caches to its place on the frame.
void StretchSlot(Form_Main& form, const Surface& cache, Integer16 slot);

// Draws the veil, or the waiting picture, over the whole frame.
void FadeMain(Form_Main& form);
void ShowWait(Form_Main& form);
