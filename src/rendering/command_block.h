// The menu's rows, drawn off screen, and the visible ones on the frame.
#pragma once

struct Form_Main;

// Draws the rows of the current menu in both looks, with the current choices.
void DrawCommand(Form_Main& form);

// Copies the menu's rows to the frame, scrolled so that the current row is visible.
void ShowCommandRows(Form_Main& form);
