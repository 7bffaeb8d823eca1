// Message boxes as notice pages on the cabinet's screen.
#pragma once

#include "platform/message_box.h"

class QtEventPump;
class QtWindows;

// A cabinet may have no keyboard: any key or touch closes a message, and it closes by itself after 60
// seconds. A question is answered with the arrows and any other key, with Y and N, or by touch; Escape and
// the timeout mean no. A close request for the program also closes the page and stays pending.
class QtMessageBox : public MessageBox {
public:
    // Input in the first `unheeded` milliseconds of a page was meant for something else and does not close
    // it.
    QtMessageBox(QtWindows& windows, QtEventPump& pump, int unheeded = 500)
        : windows_(windows), pump_(pump), unheeded_(unheeded) {}

    void Show(const QString& title, const QString& text) override;
    bool AskYesNo(const QString& title, const QString& text) override;

    // Shows a notice page until a key or a touch, for at most `milliseconds`.
    void ShowPage(const QString& title, const QStringList& lines, const QString& hint, int milliseconds);

private:
    void PassUnheeded();

    QtWindows& windows_;
    QtEventPump& pump_;
    const int unheeded_;
};
