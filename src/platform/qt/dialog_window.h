// The base of the dialogs' windows: controls by name, what they show, and the events that they post.
#pragma once

#include "platform/dialog_controls.h"
#include "platform/input_event.h"

#include <QWidget>

#include <functional>
#include <vector>

class Choice;
class Option;
class PictureView;
class QLineEdit;
class QPushButton;
class QtEventPump;
class Switch;
class WrapLabel;

using ControlLooks = std::function<ControlLook(const ControlName&)>;

// "Text_PositionLeft", "Label_Key(0)".
QString TextOfControl(const ControlName& name);

// Modal: while it is shown, keys and pointer reach no other window of the program. It never closes by itself:
// Escape and a close request count as a click on Command_Cancel, Enter as one on the focused button,
// otherwise on Command_OK. Held keys do not count, because the key may have been pressed for another window.
class DialogWindow : public QWidget {
public:
    // `size` is limited to that of `screen`; the window is in the middle of it.
    DialogWindow(QtEventPump& pump, ControlLooks looks, const QString& name, const QRect& screen,
                 const QSize& size);

    // Shows the current look of every control. A text field with the focus keeps its text. Passes on what
    // `looks` throws.
    void Refresh();

    // Each of these makes the widget of a control. The caller puts it in a layout.
    QLineEdit* AddField(const ControlName& name);
    WrapLabel* AddText(const ControlName& name);
    // A label whose text the dialog does not change.
    WrapLabel* AddCaption(const ControlName& name, const QString& text);
    QPushButton* AddButton(const ControlName& name, const QString& caption);
    Switch* AddSwitch(const ControlName& name);
    Option* AddOption(const ControlName& name, const QString& caption);
    Choice* AddChoice(const ControlName& name);
    PictureView* AddPicture(const ControlName& name, const QSize& largest, const QString& words);
    // Calls `show` with the look of a control, whose own widget is `widget`.
    void AddOther(const ControlName& name, QWidget* widget, std::function<void(const ControlLook&)> show);
    // Calls `show` with the look of a control that has a widget already.
    void Watch(const ControlName& name, std::function<void(const ControlLook&)> show);

    // A key of a gamepad. Directions, "A", "B", the shoulders and "Menu" move and press as a keyboard does:
    // arrows, Space, Escape, Tab, Enter.
    virtual void TakeGamepadKey(int code, bool isRepeat);

    void PostSet(const ControlName& name, const QString& value);
    void PostClick(const ControlName& name);
    void PostDoubleClick(const ControlName& name, const QString& value = {});

protected:
    void showEvent(QShowEvent* event) override;
    // Long texts can make the window larger than `size`.
    void resizeEvent(QResizeEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

    QtEventPump& pump_;

private:
    struct Control {
        ControlName name;
        QWidget* widget; // null for a look that is only watched
        std::function<void(const ControlLook&)> show;
    };

    // A control of this dialog.
    ControlName Mine(const ControlName& name) const;

    QRect screen_;
    ControlLooks looks_;
    std::vector<Control> controls_;
};

// Marks a widget for the style sheet.
void SetRole(QWidget* widget, const char* role);
