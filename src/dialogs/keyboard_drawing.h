// Painting the on-screen keyboard.
#pragma once

struct Form_Main;

// Paints Picture_Keyboard anew and makes it visible: the keys, the selected one lit, heading, text and the
// accept button's word. A theme's colour or box that is of no use ends the program, as with DrawText.
void DrawKeyboard(Form_Main& form);
