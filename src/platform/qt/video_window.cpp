// Painting the video window.
#include "platform/qt/video_window.h"

#include "platform/qt/main_window.h"
#include "platform/qt/window_events.h"

#include <QPainter>

VideoWindow::VideoWindow(QtEventPump& pump) : pump_(pump) {
    setWindowTitle(QStringLiteral("Vantorix Jukebox - video"));
    setWindowFlags(Qt::Window | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint |
                   Qt::WindowDoesNotAcceptFocus);
    setAttribute(Qt::WA_OpaquePaintEvent);
    setAttribute(Qt::WA_ShowWithoutActivating);
    setCursor(Qt::BlankCursor);
}

void VideoWindow::SetVideo(const QImage& picture, const QRect& place) {
    video_ = picture;
    videoPlace_ = place;
    update();
}

void VideoWindow::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.fillRect(rect(), Qt::black);
    if (!video_.isNull()) {
        PaintFitted(painter, video_, videoPlace_);
    }
}

void VideoWindow::closeEvent(QCloseEvent* event) {
    PostClose(pump_, *event);
}
