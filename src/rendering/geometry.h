// Converting design pixels of the theme to screen pixels.
#pragma once

#include "core/integer.h"
#include "imaging/picture/surface.h"
#include "state/box.h"

struct Form_Main;

// Returns a rectangle of the theme as a Box, in design pixels.
Box BoxOf(const Box16& box);

// Converts a rectangle relative to a block's corner to design pixels of the whole theme.
Box InBlock(const Corner16& corner, const Box16& box);
// Does the same for a rectangle in the track zone.
Box InZone(const Form_Main& form, const Box16& box);

// Converts a rectangle of the theme to screen pixels: each value times the scale, rounded half to even.
Box ScaledBox(const Form_Main& form, double x, double y, double width, double height);
Box ScaledBox(const Form_Main& form, const Box& box);

// Does the same for the box of a text. Raises 6 outside 16 bits.
Box16 ScaledTextBox(const Form_Main& form, const Box& box);

// Returns a look with its font size scaled for the screen.
TextLook ScaledLook(const Form_Main& form, const TextLook& look);

// Returns the 0-based slot under the cursor: (SelX - 1) x rows of a column + (SelY - 1).
Integer16 SlotUnderCursor(const Form_Main& form);

// Column (1 or 2) and row (from 1) of a 0-based slot of the page.
struct SlotPlace {
    int column = 1;
    int row = 1;
};
SlotPlace PlaceOfSlot(const Form_Main& form, Integer16 slot);

// Return a slot's whole rectangle in the caches and on the screen.
Box SlotInCache(const Form_Main& form, const SlotPlace& place);
Box SlotOnScreen(const Form_Main& form, const SlotPlace& place);
