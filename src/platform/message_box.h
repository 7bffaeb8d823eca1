// Port: message boxes.
#pragma once

#include <QString>

// Event thread only.
struct MessageBox {
    virtual ~MessageBox() = default;

    // Shows a message and waits until it is closed.
    virtual void Show(const QString& title, const QString& text) = 0;
    // Asks a question and returns true for yes. Closing the box without an answer means no.
    virtual bool AskYesNo(const QString& title, const QString& text) = 0;
};
