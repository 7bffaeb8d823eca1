// Title and artist of a slot.
#pragma once

#include "core/integer.h"
#include "rendering/geometry.h"
#include "rendering/titles.h"

struct Form_Main;

// Writes title and artist on one, two or three lines in both looks. With `slotDrawn` they are next to the
// cover or the number, else they use its space as well. Raises 5 when there is an artist and the title's
// first word is wider than its box.
void DrawSlotTitle(Form_Main& form, const SlotPlace& place, const TitleParts& parts, bool slotDrawn);

// Whether DrawSlotTitle stops the program with this title in a slot of this title width, because its first
// word is wider (D-32). Measures in the theme's font.
bool StopsAtTitle(Form_Main& form, const TitleParts& parts, Integer16 width);
