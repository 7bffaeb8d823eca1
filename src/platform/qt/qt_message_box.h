// Message boxes as pages of words on the cabinet's screen.
#pragma once

#include "platform/message_box.h"

class QtEventPump;
class QtWindows;

// A cabinet may have no keyboard: any key or a touch closes a message, and after 60 seconds it closes by
// itself. A question is answered by the arrows and any other key, by Y and N, or by a touch; Escape and
// silence mean no. A wish to close the program closes it too and stays pending.
class QtMessageBox : public MessageBox {
public:
    // What arrives in the first `unheeded` milliseconds of a page was meant for something else and closes
    // nothing.
    QtMessageBox(QtWindows& windows, QtEventPump& pump, int unheeded = 500)
        : windows_(windows), pump_(pump), unheeded_(unheeded) {}

    void Show(const QString& title, const QString& text) override;
    bool AskYesNo(const QString& title, const QString& text) override;

    // Shows a page of words until a key or a touch, but no longer than `milliseconds`.
    void ShowPage(const QString& title, const QStringList& lines, const QString& hint, int milliseconds);

private:
    void PassUnheeded();

    QtWindows& windows_;
    QtEventPump& pump_;
    const int unheeded_;
};
