// Touch on the frame: press, drag, release, double tap.
#pragma once

#include "core/integer.h"
#include "imaging/picture/surface.h"

struct Form_Main;

// Pointer events in pixels of Picture_Main. They act only in touch mode; outside it, a move only stores the
// position.
void Picture_Main_MouseDown(Form_Main& form, Integer16 Button, Integer16 Shift, float X, float Y);
void Picture_Main_MouseMove(Form_Main& form, Integer16 Button, Integer16 Shift, float X, float Y);
void Picture_Main_MouseUp(Form_Main& form, Integer16 Button, Integer16 Shift, float X, float Y);
void Picture_Main_DblClick(Form_Main& form);

// Handles a press on slots, queue, coin box, buttons, navigation and menu. One press can have several
// effects; the action of a button comes last.
void PressAt(Form_Main& form, float X, float Y);

// Returns whether a point, in pixels of the frame, is inside a rectangle of the theme, in design pixels. The
// left and top edges are inside.
bool Hits(const Form_Main& form, const Box& box, double x, double y);

// Returns whether a point, in pixels of the frame, is in the area of the queue's rows.
bool OnQueue(const Form_Main& form, double x, double y);
