// The queue's rows, prepared off screen, and the visible ones on the frame.
#pragma once

#include "core/integer.h"

struct Form_Main;
struct Strip;

// Prepares the rows of the queue in both looks.
void DrawPlaylist(Form_Main& form);

// Makes the next DrawPlaylist measure every text again, because new fonts can change the widths.
void ForgetPlaylistTexts(Form_Main& form);

// Copies the rows to Picture_PlaylistTmp for the touch mode, with the selected row in its selected look.
void CopyPlaylistForTouch(Form_Main& form);

// Copies `height` design pixels of a strip, starting at `top`, to the queue's area on the frame.
void CopyPlaylistRows(Form_Main& form, const Strip& strip, double top, double height);

// Copies the rows that fit the queue's area, starting at `top`.
void CopyPlaylistWindow(Form_Main& form, double top);

// Copies a row (from 1) in its selected look to the first row of the queue's area.
void CopyPlaylistHilightRow(Form_Main& form, Integer16 row);

// Copies the rows at the current position of the drag to the frame.
void ShowDraggedRows(Form_Main& form);

// Returns the scroll offset after a drag, in design pixels. Its limit is wider than that of the next frame.
double ReleaseOffset(const Form_Main& form);

// Copies the visible rows of the queue to the frame: in touch mode from the scroll offset on, else from the
// selected row on.
void ShowPlaylistRows(Form_Main& form);
