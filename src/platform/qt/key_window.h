// The window of Form_KeyAssign.
#pragma once

#include "platform/qt/dialog_window.h"

// Takes the first fresh press of a key that has a code, whatever the key: Tab, Shift, Escape and Enter too.
class KeyWindow : public DialogWindow {
public:
    KeyWindow(QtEventPump& pump, ControlLooks looks, const QRect& screen);

    void TakeGamepadKey(int code, bool isRepeat) override;

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    bool taken_ = false;
};
