// The queue's rows, prepared off screen, and the window of them on the frame.
#pragma once

#include "core/integer.h"

struct Form_Main;
struct Strip;

// Prepares the rows of the queue in both looks.
void DrawPlaylist(Form_Main& form);

// Makes the next DrawPlaylist measure every text, as new fonts can change their widths.
void ForgetPlaylistTexts(Form_Main& form);

// Makes Picture_PlaylistTmp a copy of the rows with the selected one in its selected look, as the touch mode
// shows it.
void CopyPlaylistForTouch(Form_Main& form);

// Copies `height` design pixels of a strip, from `top` on, to the queue's place on the frame.
void CopyPlaylistRows(Form_Main& form, const Strip& strip, double top, double height);

// Copies what of the queue fits its place, from `top` on.
void CopyPlaylistWindow(Form_Main& form, double top);

// Copies a row (from 1) in its selected look to the first row of the queue's place.
void CopyPlaylistHilightRow(Form_Main& form, Integer16 row);

// Copies the rows as the finger has dragged them to the frame.
void ShowDraggedRows(Form_Main& form);

// Where a released drag leaves the rows, in design pixels; its limit is wider than that of the next frame.
double ReleaseOffset(const Form_Main& form);

// Copies the rows of the queue to the frame, as its mode shows them.
void ShowPlaylistRows(Form_Main& form);
