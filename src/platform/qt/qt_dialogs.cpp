// Showing the cabinet's dialogs.
#include "platform/qt/qt_dialogs.h"

#include "platform/qt/config_window.h"
#include "platform/qt/folder_window.h"
#include "platform/qt/key_window.h"
#include "platform/qt/qt_event_pump.h"
#include "platform/qt/qt_windows.h"

#include <QGuiApplication>
#include <QScreen>

#include <memory>
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

// The same for the window of another dialog.
class ShownDialog {
public:
    ShownDialog(QtWindows& windows, DialogWindow& dialog) : windows_(windows), dialog_(dialog) {
        windows_.ShowDialog(dialog_);
    }
    ~ShownDialog() { windows_.HideDialog(dialog_); }
    ShownDialog(const ShownDialog&) = delete;
    ShownDialog& operator=(const ShownDialog&) = delete;

private:
    QtWindows& windows_;
    DialogWindow& dialog_;
};

std::unique_ptr<DialogWindow> NewWindow(const QString& dialog, QtEventPump& pump, const ControlLooks& looks) {
    const QRect screen = QGuiApplication::primaryScreen()->geometry();
    if (dialog == u"Form_Config") {
        return std::make_unique<ConfigWindow>(pump, looks, screen);
    }
    if (dialog == u"Form_KeyAssign") {
        return std::make_unique<KeyWindow>(pump, looks, screen);
    }
    return std::make_unique<FolderWindow>(pump, looks, screen);
}

} // namespace

QtDialogs::QtDialogs(QtWindows& windows, QtEventPump& pump, std::map<QString, DialogParts> dialogs)
    : windows_(windows), pump_(pump), dialogs_(std::move(dialogs)) {}

void QtDialogs::ShowModal(const QString& dialog) {
    const auto parts = dialogs_.find(dialog);
    if (parts == dialogs_.end()) {
        return;
    }
    parts->second.load();
    if (dialog == u"Form_KeyBoard") {
        ShowKeyboard(parts->second);
    } else {
        ShowWindow(dialog, parts->second);
    }
}

void QtDialogs::ShowKeyboard(const DialogParts& parts) {
    const ShownKeyboard shown(windows_);
    pump_.RunWhile(parts.isOpen);
}

void QtDialogs::ShowWindow(const QString& dialog, const DialogParts& parts) {
    const std::unique_ptr<DialogWindow> window = NewWindow(dialog, pump_, parts.look);
    window->Refresh();
    const ShownDialog shown(windows_, *window);
    if (parts.shown) {
        parts.shown();
    }
    pump_.RunWhile([&] {
        if (!parts.isOpen()) {
            return false;
        }
        window->Refresh();
        return true;
    });
}
