// The dialogs of the cabinet.
#pragma once

#include "platform/dialog_controls.h"
#include "platform/dialogs.h"

#include <map>

class QtEventPump;
class QtWindows;

// A dialog is a window that receives all input until it closes. One that is not among `dialogs` closes as
// soon as it opens, with nothing changed and nothing chosen.
class QtDialogs : public Dialogs {
public:
    QtDialogs(QtWindows& windows, QtEventPump& pump, std::map<QString, DialogParts> dialogs);

    void ShowModal(const QString& dialog) override;

private:
    void ShowKeyboard(const DialogParts& parts);
    void ShowWindow(const QString& dialog, const DialogParts& parts);

    QtWindows& windows_;
    QtEventPump& pump_;
    std::map<QString, DialogParts> dialogs_;
};
