// The pictures shown with tracks and folders.
#pragma once

#include "core/integer.h"
#include "rendering/geometry.h"

struct Form_Main;

// Draws the cover of the page's entry `slot` into its slot on both caches. True when one was drawn.
bool DrawSlotCover(Form_Main& form, const SlotPlace& place, Integer16 slot);

// Loads the big cover of the page's entry `slot`; CoverKind tells what was found.
void LoadBigCover(Form_Main& form, Integer16 slot);
