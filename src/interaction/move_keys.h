// The four arrows in each zone.
#pragma once

struct Form_Main;

// Where the cursor stood when a key came in.
struct CursorPlace {
    float SelX = 0;
    float SelY = 0;
};

// Right and down look whether the cursor has moved away from `entry`: the frame sends it back from an empty
// slot.
void MoveLeft(Form_Main& form);
void MoveRight(Form_Main& form, const CursorPlace& entry);
void MoveUp(Form_Main& form);
void MoveDown(Form_Main& form, const CursorPlace& entry);
