// Moving the cursor and the focus.
#pragma once

#include "core/integer.h"

struct Form_Main;

// The cursor's position when a key was pressed.
struct CursorPlace {
    float SelX = 0;
    float SelY = 0;
};

// Handle an arrow key. `entry` is the cursor's position before it. When the frame has moved the cursor back
// there from an empty slot, MoveDown goes to the first slot of the list, and MoveRight turns the page.
void MoveLeft(Form_Main& form);
void MoveRight(Form_Main& form, const CursorPlace& entry);
void MoveUp(Form_Main& form);
void MoveDown(Form_Main& form, const CursorPlace& entry);

// Return the previous page number, wrapping from 0 to the last, or the next one, wrapping from the last to 0.
// The current page does not change.
Integer16 PageBefore(const Form_Main& form);
Integer16 PageAfter(const Form_Main& form);

// Moves the focus to the next zone that is shown and active.
void GoToNextZone(Form_Main& form);
