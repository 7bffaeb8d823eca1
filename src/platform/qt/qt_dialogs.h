// The dialogs of the cabinet.
#pragma once

#include "platform/dialog_controls.h"
#include "platform/dialogs.h"

class QtEventPump;
class QtWindows;

// The on-screen keyboard is a full-screen window that receives all input until it closes. A dialog without a
// window closes as soon as it opens, with nothing changed and nothing chosen.
class QtDialogs : public Dialogs {
public:
    QtDialogs(QtWindows& windows, QtEventPump& pump, DialogParts keyboard);

    void ShowModal(const QString& dialog) override;

private:
    void ShowKeyboard();

    QtWindows& windows_;
    QtEventPump& pump_;
    DialogParts keyboard_;
};
