// Painting the on-screen keyboard.
#pragma once

struct Form_Main;

// Repaints Picture_Keyboard and shows it: the keys, the selected one highlighted, title, text and the accept
// button's label. An invalid colour or box in the theme ends the program, as with DrawText.
void DrawKeyboard(Form_Main& form);
