// The cursor on the page.
#pragma once

#include "core/integer.h"

struct Form_Main;

// The 0-based slot under the cursor: (SelX - 1) x rows of a column + (SelY - 1).
Integer16 SlotUnderCursor(const Form_Main& form);

// The page number one back, from 0 to the last; one on, from the last to 0. The current page does not change.
Integer16 PageBefore(const Form_Main& form);
Integer16 PageAfter(const Form_Main& form);
