// The on-screen keyboard: a full-screen form for typing a text with a few keys or by touch.
#pragma once

#include "core/integer.h"

struct Form_Main;

// Opens the form: loads its pictures and its theme, selects the first key and draws. The caller sets
// KeyboardTitle, KeyboardText and KeyboardButton first. The form is open while Form_KeyBoard.Visible is set.
// Any error ends the program: 11 for a theme without "keyboard.png", 13 and 6 for its numbers, 9 for more
// than 100 lines or columns.
void Form_KeyBoard_Load(Form_Main& form);

// Handles a pressed key. KeyCode is a virtual-key code; Shift is not used.
void Form_KeyBoard_KeyDown(Form_Main& form, Integer16 KeyCode, Integer16 Shift);

// A press next to the picture cancels the input and closes the form.
void Form_KeyBoard_MouseDown(Form_Main& form);

// Pointer events in pixels of Picture_Keyboard.
void Picture_Keyboard_MouseDown(Form_Main& form, Integer16 Button, Integer16 Shift, float X, float Y);
void Picture_Keyboard_MouseUp(Form_Main& form, Integer16 Button, Integer16 Shift, float X, float Y);
