// The menu's rows, prepared off screen, and the window of them on the frame.
#pragma once

struct Form_Main;

// Prepares the rows of the current menu in both looks, with the choices now in force.
void DrawCommand(Form_Main& form);

// Copies the menu's rows to the frame, scrolled so that the current row is seen.
void ShowCommandRows(Form_Main& form);
