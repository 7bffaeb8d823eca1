// Touch on the frame: press, drag, release, double tap.
#pragma once

#include "core/integer.h"

struct Form_Main;

// Pointer events in pixels of Picture_Main. They act only in touch mode; outside it, a move only stores the
// position.
void Picture_Main_MouseDown(Form_Main& form, Integer16 Button, Integer16 Shift, float X, float Y);
void Picture_Main_MouseMove(Form_Main& form, Integer16 Button, Integer16 Shift, float X, float Y);
void Picture_Main_MouseUp(Form_Main& form, Integer16 Button, Integer16 Shift, float X, float Y);
void Picture_Main_DblClick(Form_Main& form);
