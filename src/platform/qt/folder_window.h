// The window of Form_SelectDirectory.
#pragma once

#include "platform/qt/dialog_window.h"

class FolderWindow : public DialogWindow {
public:
    FolderWindow(QtEventPump& pump, ControlLooks looks, const QRect& screen);
};
