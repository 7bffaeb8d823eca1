// From the events of our windows to those of the jukebox.
#pragma once

#include <Qt>

class QCloseEvent;
class QKeyEvent;
class QtEventPump;

// The customary number of a button: 1 left, 2 right, 4 middle, 0 for any other. The first one of several.
int ButtonNumber(Qt::MouseButtons buttons);

// Posts the wish to close. The window stays open: the jukebox decides.
void PostClose(QtEventPump& pump, QCloseEvent& event);

// Posts a key press; keys without a virtual-key code are dropped.
void PostKeyDown(QtEventPump& pump, const QKeyEvent& event);
