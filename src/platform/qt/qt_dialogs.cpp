// Showing the cabinet's dialogs.
#include "platform/qt/qt_dialogs.h"

#include "platform/qt/qt_event_pump.h"
#include "platform/qt/qt_windows.h"

#include <utility>

namespace {

// Hides the keyboard's window however the dialog ends, so that it never covers a stop page.
class ShownKeyboard {
public:
    explicit ShownKeyboard(QtWindows& windows) : windows_(windows) { windows_.ShowKeyboard(); }
    ~ShownKeyboard() { windows_.HideKeyboard(); }
    ShownKeyboard(const ShownKeyboard&) = delete;
    ShownKeyboard& operator=(const ShownKeyboard&) = delete;

private:
    QtWindows& windows_;
};

} // namespace

QtDialogs::QtDialogs(QtWindows& windows, QtEventPump& pump, DialogParts keyboard)
    : windows_(windows), pump_(pump), keyboard_(std::move(keyboard)) {}

void QtDialogs::ShowModal(const QString& dialog) {
    if (dialog == u"Form_KeyBoard") {
        ShowKeyboard();
    }
}

void QtDialogs::ShowKeyboard() {
    keyboard_.load();
    const ShownKeyboard shown(windows_);
    pump_.RunWhile(keyboard_.isOpen);
}
