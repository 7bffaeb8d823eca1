// Painting the on-screen keyboard's window and forwarding its input.
#include "platform/qt/keyboard_window.h"

#include "platform/input_event.h"
#include "platform/qt/qt_event_pump.h"
#include "platform/qt/window_events.h"

#include <QMouseEvent>
#include <QPainter>

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
    PostClose(pump_, *event);
}

void KeyboardWindow::keyPressEvent(QKeyEvent* event) {
    PostKeyDown(pump_, *event);
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

// A double click counts as two presses.
void KeyboardWindow::mouseDoubleClickEvent(QMouseEvent* event) {
    mousePressEvent(event);
}
