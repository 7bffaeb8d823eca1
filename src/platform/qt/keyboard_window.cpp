// Painting the on-screen keyboard's window and passing its input on.
#include "platform/qt/keyboard_window.h"

#include "platform/input_event.h"
#include "platform/qt/key_table.h"
#include "platform/qt/qt_event_pump.h"

#include <QCloseEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>

namespace {

// The toolkit's numbers of the three usual buttons are the customary ones: 1 left, 2 right, 4 middle.
int ButtonNumber(Qt::MouseButton button) {
    const bool known = button == Qt::LeftButton || button == Qt::RightButton || button == Qt::MiddleButton;
    return known ? static_cast<int>(button) : 0;
}

} // namespace

KeyboardWindow::KeyboardWindow(QtEventPump& pump) : pump_(pump) {
    setWindowTitle(QStringLiteral("Vantorix Jukebox - keyboard"));
    setWindowFlags(Qt::Window | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint);
    setWindowModality(Qt::ApplicationModal);
    setAttribute(Qt::WA_OpaquePaintEvent);
    setAttribute(Qt::WA_NoSystemBackground);
    setFocusPolicy(Qt::StrongFocus);
}

void KeyboardWindow::SetGround(const QImage& ground) {
    ground_ = ground;
    update();
}

void KeyboardWindow::SetPicture(const QImage& picture, const QPoint& place) {
    picture_ = picture.copy();
    place_ = place;
    repaint();
}

void KeyboardWindow::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.setCompositionMode(QPainter::CompositionMode_Source);
    if (!ground_.rect().contains(rect())) {
        painter.fillRect(rect(), Qt::black);
    }
    painter.drawImage(0, 0, ground_);
    painter.drawImage(place_, picture_);
}

void KeyboardWindow::closeEvent(QCloseEvent* event) {
    event->ignore();
    pump_.Post({.kind = InputKind::kClose});
}

void KeyboardWindow::keyPressEvent(QKeyEvent* event) {
    const SystemKey pressed{event->key(), event->modifiers().testFlag(Qt::KeypadModifier),
                            event->nativeScanCode()};
    if (const std::optional<int> code = VirtualKeyOf(pressed)) {
        pump_.Post({.kind = InputKind::kKeyDown, .code = *code});
    }
}

void KeyboardWindow::mousePressEvent(QMouseEvent* event) {
    const int button = ButtonNumber(event->button());
    const QPointF at = event->position() - place_;
    if (button == 0) {
        return;
    }
    const bool onPicture = QRect(place_, picture_.size()).contains(event->position().toPoint());
    pump_.Post({.kind = onPicture ? InputKind::kMouseDown : InputKind::kMouseBeside,
                .button = button,
                .x = at.x(),
                .y = at.y()});
}

void KeyboardWindow::mouseReleaseEvent(QMouseEvent* event) {
    const int button = ButtonNumber(event->button());
    const QPointF at = event->position() - place_;
    if (button != 0) {
        pump_.Post({.kind = InputKind::kMouseUp, .button = button, .x = at.x(), .y = at.y()});
    }
}

// Who types a letter twice in a hurry presses its key twice.
void KeyboardWindow::mouseDoubleClickEvent(QMouseEvent* event) {
    mousePressEvent(event);
}
