// Building the window of Form_KeyAssign and taking a key.
#include "platform/qt/key_window.h"

#include "platform/qt/dialog_style.h"
#include "platform/qt/dialog_widgets.h"
#include "platform/qt/qt_event_pump.h"
#include "platform/qt/window_events.h"

#include <QKeyEvent>
#include <QPushButton>
#include <QVBoxLayout>

namespace {

// In lines of text.
constexpr QSize kSize(34, 17);
constexpr int kActionLines = 3;

} // namespace

KeyWindow::KeyWindow(QtEventPump& pump, ControlLooks looks, const QRect& screen)
    : DialogWindow(pump, std::move(looks), QStringLiteral("Form_KeyAssign"), screen,
                   kSize * DialogTextSize(screen.size())) {
    setWindowTitle(QStringLiteral("Vantorix Jukebox - key"));
    setFocusPolicy(Qt::StrongFocus);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(28, 24, 28, 24);
    column->setSpacing(12);
    WrapLabel* action = AddText({QStringLiteral("Label_Key")});
    SetRole(action, "action");
    WrapLabel* prompt = AddCaption({QStringLiteral("Label1")}, QStringLiteral("Press any Key"));
    SetRole(prompt, "prompt");
    auto* note = new WrapLabel(QStringLiteral("The next key that you press is taken, Esc and Enter too. To "
                                              "keep things as they are, click or touch Cancel."));
    SetRole(note, "explanation");
    QPushButton* cancel = AddButton({QStringLiteral("Command_Cancel")}, QStringLiteral("Cancel"));
    cancel->setFocusPolicy(Qt::NoFocus);
    for (WrapLabel* label : {action, prompt, note}) {
        label->setAlignment(Qt::AlignCenter);
        if (label == action) {
            column->addWidget(NewScrolled(action, kActionLines));
        } else {
            column->addWidget(label);
        }
    }
    column->addStretch();
    column->addWidget(cancel, 0, Qt::AlignHCenter);
    setFocus();
}

// A held key was pressed for another window. Later presses are not for this window either, although it is
// still there until the first one has been handled.
void KeyWindow::keyPressEvent(QKeyEvent* event) {
    if (!event->isAutoRepeat() && !taken_) {
        taken_ = PostKeyDown(pump_, *event);
    }
}

void KeyWindow::TakeGamepadKey(int code, bool isRepeat) {
    if (!isRepeat && !taken_) {
        taken_ = true;
        pump_.Post({.kind = InputKind::kKeyDown, .code = code});
    }
}
