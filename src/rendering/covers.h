// The covers of tracks and folders on the pages, and the big cover.
#pragma once

#include "core/integer.h"
#include "rendering/geometry.h"

class FolderNames;
struct Form_Main;

// Draws the cover of the page's entry `slot` into its slot on both caches. Returns true when there is a
// cover that the settings allow, even one that cannot be decoded. `names` belongs to the folder shown. A
// broken tag stops the program.
bool DrawSlotCover(Form_Main& form, const SlotPlace& place, Integer16 slot, const FolderNames& names);

// Finds the big cover of the page's entry `slot` and sets CoverKind. A broken tag stops the program.
void LoadBigCover(Form_Main& form, Integer16 slot);
