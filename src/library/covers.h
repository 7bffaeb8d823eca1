// The pictures shown with tracks and folders: where they come from, and drawing them.
#pragma once

#include "core/integer.h"
#include "rendering/geometry.h"

class FolderNames;
struct Form_Main;

// Draws the cover of the page's entry `slot` into its slot on both caches. True when the slot counts as
// having one, be it decodable or not. `names` are those of the folder shown. A broken tag stops the program.
bool DrawSlotCover(Form_Main& form, const SlotPlace& place, Integer16 slot, const FolderNames& names);

// Finds the big cover of the page's entry `slot`; CoverKind tells what was found. A broken tag stops the
// program.
void LoadBigCover(Form_Main& form, Integer16 slot);
