// The Main block's texts, drawn directly on the frame.
#pragma once

#include <QString>

struct Form_Main;

// Sets the state of the information lines and restarts their age.
void SetInfos(Form_Main& form, const QString& infos);

// Repaints the two information lines and changes their state when its time is over. Does nothing when the
// block is not shown. Does not refresh the screen.
void BlockMainRedrawInfos(Form_Main& form);

// Repaint the background of the credit counter, and write the number on it.
void RepaintCreditBox(Form_Main& form);
void WriteCredits(Form_Main& form);

// Repaints the remaining time with its background.
void RepaintRemain(Form_Main& form);
