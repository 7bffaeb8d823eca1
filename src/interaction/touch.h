// Touch and mouse on the frame.
#pragma once

#include "core/integer.h"

struct Form_Main;

// Pointer events in pixels of Picture_Main; they act in the touch mode alone.
void Picture_Main_MouseDown(Form_Main& form, Integer16 Button, Integer16 Shift, float X, float Y);
void Picture_Main_MouseMove(Form_Main& form, Integer16 Button, Integer16 Shift, float X, float Y);
void Picture_Main_MouseUp(Form_Main& form, Integer16 Button, Integer16 Shift, float X, float Y);
void Picture_Main_DblClick(Form_Main& form);
