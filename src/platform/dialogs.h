// Port: modal dialogs. The cabinet and the console each show them in their own way.
#pragma once

#include <QString>

// Event thread only.
struct Dialogs {
    virtual ~Dialogs() = default;

    // Shows the dialog of that name ("Form_Config", "Form_KeyBoard", ...) and returns when it is closed.
    virtual void ShowModal(const QString& dialog) = 0;
};
