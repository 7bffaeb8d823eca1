// Painting the main window and forwarding its input.
#include "platform/qt/main_window.h"

#include "platform/input_event.h"
#include "platform/qt/qt_event_pump.h"
#include "platform/qt/window_events.h"

#include <QMouseEvent>
#include <QPaintEvent>
#include <QPainter>

#include <cstring>

namespace {

constexpr int kBytesPerPixel = 4;

} // namespace

MainWindow::MainWindow(QtEventPump& pump) : pump_(pump) {
    setWindowTitle(QStringLiteral("Vantorix Jukebox"));
    setWindowFlags(Qt::Window | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint);
    setAttribute(Qt::WA_OpaquePaintEvent);
    setAttribute(Qt::WA_NoSystemBackground);
    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(true);
}

void MainWindow::Refresh(const QImage& frame, int left, int top) {
    FitCanvas();
    const QRect place(QPoint(left, top), frame.size());
    if (place != framePlace_) {
        framePlace_ = place;
        canvas_.fill(Qt::black);
        CopyChangedRows(frame);
        repaint();
        return;
    }
    const QRect changed = CopyChangedRows(frame);
    if (!changed.isEmpty()) {
        repaint(changed);
    }
}

// Returns the band of the window that contains every changed row.
QRect MainWindow::CopyChangedRows(const QImage& frame) {
    const QRect visible = framePlace_ & canvas_.rect();
    if (visible.isEmpty() || frame.depth() != kBytesPerPixel * 8) {
        return {};
    }
    const auto length = static_cast<std::size_t>(visible.width()) * kBytesPerPixel;
    const qsizetype fromColumn = qsizetype{visible.left() - framePlace_.left()} * kBytesPerPixel;
    const qsizetype toColumn = qsizetype{visible.left()} * kBytesPerPixel;
    QRect band;
    for (int y = visible.top(); y <= visible.bottom(); ++y) {
        const uchar* from = frame.constScanLine(y - framePlace_.top()) + fromColumn;
        uchar* to = canvas_.scanLine(y) + toColumn;
        if (std::memcmp(from, to, length) != 0) {
            std::memcpy(to, from, length);
            band |= QRect(visible.left(), y, visible.width(), 1);
        }
    }
    return band;
}

std::optional<ShownVideo> MainWindow::VideoOnWindow() const {
    std::optional<ShownVideo> video = video_;
    if (video && video->look == ShownVideo::Look::kSmall) {
        video->place.translate(framePlace_.topLeft());
    }
    return video;
}

// Most pictures replace one in the same place: only its pixels are painted, and at once. A new place is
// painted with the next frame, or when the event loop runs, so that one that is corrected at once is never
// seen.
void MainWindow::SetVideo(const std::optional<ShownVideo>& video) {
    const std::optional<ShownVideo> before = VideoOnWindow();
    video_ = video;
    const std::optional<ShownVideo> now = VideoOnWindow();
    const QRect old = before ? before->Covered() : QRect();
    const QRect fresh = now ? now->Covered() : QRect();
    if (before && now && old == fresh && before->Target() == now->Target()) {
        repaint(now->Target());
    } else if (before || now) {
        update(QRegion(old) + fresh);
    }
}

void MainWindow::SetNotice(const std::optional<Notice>& notice) {
    notice_ = notice;
    repaint();
}

void MainWindow::paintEvent(QPaintEvent* event) {
    QPainter painter(this);
    if (notice_) {
        PaintNotice(painter, rect(), *notice_);
        return;
    }
    const std::optional<ShownVideo> video = VideoOnWindow();
    const QRegion frame = video ? event->region() - video->Covered() : event->region();
    painter.setCompositionMode(QPainter::CompositionMode_Source);
    for (const QRect& part : frame) {
        painter.drawImage(part.topLeft(), canvas_, part);
    }
    if (video) {
        PaintVideo(painter, *video, event->region());
    }
}

void MainWindow::resizeEvent(QResizeEvent* /*event*/) {
    FitCanvas();
}

// A hidden window has its size before it gets a resize event.
void MainWindow::FitCanvas() {
    if (canvas_.size() == size()) {
        return;
    }
    QImage fitting(size(), QImage::Format_RGB32);
    fitting.fill(Qt::black);
    QPainter painter(&fitting);
    painter.drawImage(0, 0, canvas_);
    painter.end();
    canvas_ = fitting;
}

void MainWindow::closeEvent(QCloseEvent* event) {
    PostClose(pump_, *event);
}

void MainWindow::keyPressEvent(QKeyEvent* event) {
    PostKeyDown(pump_, *event);
}

// On a notice page, positions are relative to the window.
QPointF MainWindow::OnFrame(const QMouseEvent& event) const {
    return notice_ ? event.position() : event.position() - framePlace_.topLeft();
}

bool MainWindow::HitsFrame(const QMouseEvent& event) const {
    return notice_ || framePlace_.contains(event.position().toPoint());
}

void MainWindow::mousePressEvent(QMouseEvent* event) {
    const QPointF at = OnFrame(*event);
    const int button = ButtonNumber(event->button());
    if (button != 0 && HitsFrame(*event)) {
        pump_.Post({.kind = InputKind::kMouseDown, .button = button, .x = at.x(), .y = at.y()});
    }
}

// While a button is held, the pointer belongs to the frame even outside it.
void MainWindow::mouseMoveEvent(QMouseEvent* event) {
    const QPointF at = OnFrame(*event);
    const int button = ButtonNumber(event->buttons());
    if (button != 0 || HitsFrame(*event)) {
        pump_.Post({.kind = InputKind::kMouseMove, .button = button, .x = at.x(), .y = at.y()});
    }
}

void MainWindow::mouseReleaseEvent(QMouseEvent* event) {
    const QPointF at = OnFrame(*event);
    const int button = ButtonNumber(event->button());
    if (button != 0) {
        pump_.Post({.kind = InputKind::kMouseUp, .button = button, .x = at.x(), .y = at.y()});
    }
}

// The second press of a double click is not a press of its own.
void MainWindow::mouseDoubleClickEvent(QMouseEvent* event) {
    if (HitsFrame(*event)) {
        pump_.Post({.kind = notice_ ? InputKind::kMouseDown : InputKind::kDblClick});
    }
}
