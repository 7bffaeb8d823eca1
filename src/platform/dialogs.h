// Port: modal dialogs, which the cabinet and the console each show in their own way.
#pragma once

#include <QString>

// Event thread only.
struct Dialogs {
    virtual ~Dialogs() = default;

    // Shows the dialog of that name ("Form_Config", "Form_KeyBoard", ...) and returns when it has been
    // closed.
    virtual void ShowModal(const QString& dialog) = 0;
};
