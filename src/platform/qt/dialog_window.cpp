// Making the controls of a dialog and keeping them up to date.
#include "platform/qt/dialog_window.h"

#include "platform/qt/dialog_style.h"
#include "platform/qt/dialog_widgets.h"
#include "platform/qt/qt_event_pump.h"

#include <QCloseEvent>
#include <QCoreApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalBlocker>
#include <QStyle>
#include <QWindow>

#include <algorithm>
#include <array>
#include <utility>

namespace {

const QString kTrue = QStringLiteral("true");
const QString kFalse = QStringLiteral("false");

// What a gamepad does in a dialog; `code` is a virtual-key code.
struct GamepadMeaning {
    int code;
    Qt::Key key;
    const char* text;
};

constexpr std::array kGamepadMeanings = {
    GamepadMeaning{195, Qt::Key_Space, " "}, GamepadMeaning{196, Qt::Key_Escape, ""},
    GamepadMeaning{199, Qt::Key_Tab, "\t"},  GamepadMeaning{200, Qt::Key_Backtab, ""},
    GamepadMeaning{203, Qt::Key_Up, ""},     GamepadMeaning{204, Qt::Key_Down, ""},
    GamepadMeaning{205, Qt::Key_Left, ""},   GamepadMeaning{206, Qt::Key_Right, ""},
    GamepadMeaning{207, Qt::Key_Return, ""}, GamepadMeaning{211, Qt::Key_Up, ""},
    GamepadMeaning{212, Qt::Key_Down, ""},   GamepadMeaning{213, Qt::Key_Right, ""},
    GamepadMeaning{214, Qt::Key_Left, ""},
};

void ShowText(WrapLabel& label, const ControlLook& look) {
    if (label.text() != look.value) {
        label.setText(look.value);
    }
}

void ShowWarning(QWidget& label, const ControlLook& look) {
    if (label.property("warns").toBool() != look.warns) {
        label.setProperty("warns", look.warns);
        label.style()->unpolish(&label);
        label.style()->polish(&label);
    }
}

void ShowTyped(QLineEdit& field, const ControlLook& look) {
    if (!field.hasFocus() && field.text() != look.value) {
        const QSignalBlocker blocker(field);
        field.setText(look.value);
    }
}

void ShowChecked(QAbstractButton& button, const ControlLook& look) {
    const bool checked = look.value == kTrue;
    if (button.isChecked() != checked) {
        const QSignalBlocker blocker(button);
        button.setChecked(checked);
    }
}

bool HasEntries(const Choice& list, const QStringList& entries) {
    if (list.count() != entries.size()) {
        return false;
    }
    for (int i = 0; i < list.count(); ++i) {
        if (list.itemText(i) != entries[i]) {
            return false;
        }
    }
    return true;
}

void ShowChoice(Choice& list, const ControlLook& look) {
    const QSignalBlocker blocker(list);
    if (!HasEntries(list, look.entries)) {
        list.clear();
        list.addItems(look.entries);
        list.updateGeometry();
    }
    const int chosen = look.value.isEmpty() ? -1 : static_cast<int>(look.entries.indexOf(look.value));
    if (list.currentIndex() != chosen) {
        list.setCurrentIndex(chosen);
    }
}

void ShowState(QWidget& widget, const ControlLook& look) {
    if (widget.isHidden() == look.visible) {
        widget.setVisible(look.visible);
    }
    if (widget.isEnabledTo(widget.parentWidget()) != look.enabled) {
        widget.setEnabled(look.enabled);
    }
}

} // namespace

QString TextOfControl(const ControlName& name) {
    return name.index < 0 ? name.name : QStringLiteral("%1(%2)").arg(name.name).arg(name.index);
}

void SetRole(QWidget* widget, const char* role) {
    widget->setProperty("role", QLatin1String(role));
}

DialogWindow::DialogWindow(QtEventPump& pump, ControlLooks looks, const QString& name, const QRect& screen,
                           const QSize& size)
    : pump_(pump), screen_(screen), looks_(std::move(looks)) {
    setObjectName(name);
    setWindowFlags(Qt::Dialog | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint);
    setWindowModality(Qt::ApplicationModal);
    setAttribute(Qt::WA_StyledBackground);
    setCursor(Qt::ArrowCursor);
    SetRole(this, "window");
    setStyleSheet(DialogStyleSheet(DialogTextSize(screen.size())));
    setMaximumSize(screen.size());
    resize(size.boundedTo(screen.size()));
}

// The context menus of fields and scroll bars have no use here, and some run an event loop of their own.
void DialogWindow::showEvent(QShowEvent* event) {
    for (QWidget* widget : findChildren<QWidget*>()) {
        widget->setContextMenuPolicy(Qt::NoContextMenu);
    }
    QWidget::showEvent(event);
}

void DialogWindow::resizeEvent(QResizeEvent* /*event*/) {
    QRect place(QPoint(0, 0), size());
    place.moveCenter(screen_.center());
    move(place.topLeft());
}

void DialogWindow::Refresh() {
    for (const Control& control : controls_) {
        const ControlLook look = looks_(Mine(control.name));
        if (control.widget != nullptr) {
            ShowState(*control.widget, look);
        }
        control.show(look);
    }
}

void DialogWindow::AddOther(const ControlName& name, QWidget* widget,
                            std::function<void(const ControlLook&)> show) {
    widget->setObjectName(TextOfControl(name));
    controls_.push_back({name, widget, std::move(show)});
}

void DialogWindow::Watch(const ControlName& name, std::function<void(const ControlLook&)> show) {
    controls_.push_back({name, nullptr, std::move(show)});
}

QLineEdit* DialogWindow::AddField(const ControlName& name) {
    auto* field = new QLineEdit;
    AddOther(name, field, [field](const ControlLook& look) { ShowTyped(*field, look); });
    connect(field, &QLineEdit::textEdited, this, [this, name](const QString& text) { PostSet(name, text); });
    return field;
}

WrapLabel* DialogWindow::AddText(const ControlName& name) {
    auto* label = new WrapLabel;
    AddOther(name, label, [label](const ControlLook& look) {
        ShowText(*label, look);
        ShowWarning(*label, look);
    });
    return label;
}

WrapLabel* DialogWindow::AddCaption(const ControlName& name, const QString& text) {
    auto* label = new WrapLabel(text);
    AddOther(name, label, [label](const ControlLook& look) { ShowWarning(*label, look); });
    return label;
}

QPushButton* DialogWindow::AddButton(const ControlName& name, const QString& caption) {
    auto* button = new QPushButton(caption);
    button->setSizePolicy(QSizePolicy::Minimum, QSizePolicy::Fixed);
    AddOther(name, button, [](const ControlLook& /*look*/) {});
    connect(button, &QPushButton::clicked, this, [this, name] { PostClick(name); });
    return button;
}

Switch* DialogWindow::AddSwitch(const ControlName& name) {
    auto* button = new Switch;
    AddOther(name, button, [button](const ControlLook& look) { ShowChecked(*button, look); });
    connect(button, &QCheckBox::clicked, this,
            [this, name](bool checked) { PostSet(name, checked ? kTrue : kFalse); });
    return button;
}

Option* DialogWindow::AddOption(const ControlName& name, const QString& caption) {
    auto* button = new Option(caption);
    AddOther(name, button, [button](const ControlLook& look) { ShowChecked(*button, look); });
    connect(button, &QRadioButton::clicked, this, [this, name] { PostSet(name, kTrue); });
    return button;
}

Choice* DialogWindow::AddChoice(const ControlName& name) {
    auto* list = new Choice;
    AddOther(name, list, [list](const ControlLook& look) { ShowChoice(*list, look); });
    connect(list, &QComboBox::textActivated, this,
            [this, name](const QString& entry) { PostSet(name, entry); });
    return list;
}

PictureView* DialogWindow::AddPicture(const ControlName& name, const QSize& largest, const QString& words) {
    auto* view = new PictureView(largest, words);
    AddOther(name, view, [view](const ControlLook& look) { view->SetPicture(look.picture); });
    return view;
}

ControlName DialogWindow::Mine(const ControlName& name) const {
    return {name.name, name.index, objectName()};
}

void DialogWindow::PostSet(const ControlName& name, const QString& value) {
    pump_.Post({.kind = InputKind::kControlSet, .control = Mine(name), .value = value});
}

void DialogWindow::PostClick(const ControlName& name) {
    pump_.Post({.kind = InputKind::kControlClick, .control = Mine(name)});
}

void DialogWindow::PostDoubleClick(const ControlName& name, const QString& value) {
    pump_.Post({.kind = InputKind::kControlDoubleClick, .control = Mine(name), .value = value});
}

// Sent to the window, not to a widget: the toolkit then passes it to an unfolded list or to the focus.
void DialogWindow::TakeGamepadKey(int code, bool isRepeat) {
    const auto* const meaning =
        std::find_if(kGamepadMeanings.begin(), kGamepadMeanings.end(),
                     [code](const GamepadMeaning& candidate) { return candidate.code == code; });
    if (meaning == kGamepadMeanings.end() || windowHandle() == nullptr) {
        return;
    }
    const QString text = QString::fromLatin1(meaning->text);
    QKeyEvent press(QEvent::KeyPress, meaning->key, Qt::NoModifier, text, isRepeat);
    QCoreApplication::sendEvent(windowHandle(), &press);
    QKeyEvent release(QEvent::KeyRelease, meaning->key, Qt::NoModifier, text, isRepeat);
    QCoreApplication::sendEvent(windowHandle(), &release);
}

void DialogWindow::closeEvent(QCloseEvent* event) {
    event->ignore();
    PostClick({QStringLiteral("Command_Cancel")});
}

void DialogWindow::keyPressEvent(QKeyEvent* event) {
    const int key = event->key();
    if (event->isAutoRepeat()) {
        return;
    }
    if (key == Qt::Key_Escape) {
        PostClick({QStringLiteral("Command_Cancel")});
    } else if (key == Qt::Key_Return || key == Qt::Key_Enter) {
        auto* button = qobject_cast<QPushButton*>(focusWidget());
        if (button == nullptr) {
            button = findChild<QPushButton*>(QStringLiteral("Command_OK"));
        }
        if (button != nullptr) {
            button->click(); // does nothing while the button is disabled
        }
    }
}
