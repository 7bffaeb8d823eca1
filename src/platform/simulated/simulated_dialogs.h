// The simulated modal dialogs: whoever drives the simulation shows them.
#pragma once

#include "platform/dialogs.h"

#include <functional>

class SimulatedDialogs : public Dialogs {
public:
    void ShowModal(const QString& dialog) override {
        if (showModal) {
            showModal(dialog);
        }
    }

    // Shows a dialog and returns when it has been closed. Empty: a dialog closes at once, cancelled.
    std::function<void(const QString&)> showModal;
};
