// Building and showing the whole frame.
#pragma once

#include "core/integer.h"

struct Form_Main;
struct Surface;

// Builds a whole frame on Picture_Main from the prepared surfaces, and shows it.
void RedrawJukebox(Form_Main& form);

// Shows the current content of Picture_Main.
void RefreshMain(Form_Main& form);

// Copies a slot of the page from one of the caches to its place on the frame.
void StretchSlot(Form_Main& form, const Surface& cache, Integer16 slot);

// Draw the fade picture or the waiting picture over the whole frame.
void FadeMain(Form_Main& form);
void ShowWait(Form_Main& form);
