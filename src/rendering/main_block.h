// The Main block's texts, drawn straight onto the frame.
#pragma once

struct Form_Main;

// Repaints the two information lines and lets their state age; nothing at all when the block is not shown.
// Does not refresh.
void BlockMainRedrawInfos(Form_Main& form);

// The credit counter: its ground from the block's picture, and the number on it.
void RepaintCreditBox(Form_Main& form);
void WriteCredits(Form_Main& form);

// The remaining time with its ground.
void RepaintRemain(Form_Main& form);
