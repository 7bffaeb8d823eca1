// The dialogs of the cabinet.
#pragma once

#include "platform/dialogs.h"

#include <functional>

class QtEventPump;
class QtWindows;

// A dialog's own part in its showing, given by whoever knows the jukebox.
struct DialogParts {
    // Prepares it; after that it is open.
    std::function<void()> load;
    // Tells whether it is still open.
    std::function<bool()> isOpen;
};

// The on-screen keyboard is a full-screen window that events go to until it is closed. A dialog without a
// window counts as closed the moment it opens, nothing changed and nothing chosen.
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
