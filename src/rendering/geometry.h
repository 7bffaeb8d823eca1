// From design pixels of the theme to pixels of the screen.
#pragma once

#include "core/integer.h"
#include "imaging/surface.h"
#include "rendering/text.h"

struct Form_Main;

// A rectangle of the theme on the screen: every value times the scale, rounded half to even.
Box ScaledBox(const Form_Main& form, double x, double y, double width, double height);

// The same as a box for text. Raises 6 outside 16 bits.
TextBox ScaledTextBox(const Form_Main& form, double x, double y, double width, double height);

// A style whose size is scaled for text on the screen.
TextStyle ScaledStyle(const Form_Main& form, const QString& font, Integer16 size, const QString& colour);

// The 0-based slot under the cursor: (SelX - 1) x rows of a column + (SelY - 1).
Integer16 SlotUnderCursor(const Form_Main& form);

// Column (1 or 2) and row (from 1) of a 0-based slot of the page.
struct SlotPlace {
    int column = 1;
    int row = 1;
};
SlotPlace PlaceOfSlot(const Form_Main& form, Integer16 slot);

// A slot's whole rectangle: in the caches, and on the screen.
Box SlotInCache(const Form_Main& form, const SlotPlace& place);
Box SlotOnScreen(const Form_Main& form, const SlotPlace& place);
