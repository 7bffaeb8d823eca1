// Title and artist of a slot.
#pragma once

#include "rendering/geometry.h"
#include "rendering/titles.h"

struct Form_Main;

// Writes title and artist on one, two or three lines in both looks. With `slotDrawn` they are next to the
// cover or the number, else they use its space as well. Raises 5 when there is an artist and the title's
// first word is wider than its box.
void DrawSlotTitle(Form_Main& form, const SlotPlace& place, const TitleParts& parts, bool slotDrawn);
