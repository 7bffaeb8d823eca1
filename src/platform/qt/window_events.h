// Converting the windows' events to those of the jukebox.
#pragma once

#include <Qt>

class QCloseEvent;
class QKeyEvent;
class QtEventPump;

// The number of a button: 1 left, 2 right, 4 middle, 0 for any other. With several buttons, the first of
// these.
int ButtonNumber(Qt::MouseButtons buttons);

// Posts a close request. The window stays open because the jukebox decides.
void PostClose(QtEventPump& pump, QCloseEvent& event);

// Posts a key press and returns true; drops a key without a virtual-key code and returns false.
bool PostKeyDown(QtEventPump& pump, const QKeyEvent& event);
