// One slot of the track zone.
#pragma once

#include "core/integer.h"
#include "rendering/geometry.h"

struct Form_Main;
class FolderNames;

// Paints the page's entry `slot` at its place on both caches. `names` belongs to the folder shown.
void DrawSlot(Form_Main& form, const SlotPlace& place, Integer16 slot, const FolderNames& names);
