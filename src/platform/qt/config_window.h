// The window of Form_Config.
#pragma once

#include "platform/qt/dialog_window.h"

class QListWidget;
class QStackedWidget;

// A list of pages at the left, the page at the right, OK and Cancel below it.
class ConfigWindow : public DialogWindow {
public:
    ConfigWindow(QtEventPump& pump, ControlLooks looks, const QRect& screen);

private:
    void AddPage(const QString& title, QWidget* page);
    QWidget* ButtonBar();

    QListWidget* titles_;
    QStackedWidget* pages_;
};
