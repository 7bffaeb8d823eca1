// Title and artist of a slot.
#pragma once

#include "rendering/geometry.h"
#include "rendering/titles.h"

struct Form_Main;

// Writes title and artist on one, two or three lines in both looks. With `slotDrawn` they stand beside the
// cover or the number, else they take its room. Raises 5 for one word that is wider than its box with an
// artist beside it.
void DrawSlotTitle(Form_Main& form, const SlotPlace& place, const TitleParts& parts, bool slotDrawn);
