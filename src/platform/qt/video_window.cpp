// Painting the video window.
#include "platform/qt/video_window.h"

#include "platform/qt/window_events.h"

#include <QPaintEvent>
#include <QPainter>

VideoWindow::VideoWindow(QtEventPump& pump) : pump_(pump) {
    setWindowTitle(QStringLiteral("Vantorix Jukebox - video"));
    setWindowFlags(Qt::Window | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint |
                   Qt::WindowDoesNotAcceptFocus);
    setAttribute(Qt::WA_OpaquePaintEvent);
    setAttribute(Qt::WA_ShowWithoutActivating);
    setCursor(Qt::BlankCursor);
}

void VideoWindow::SetVideo(const std::optional<ShownVideo>& video) {
    const bool samePlace = video && video_ && video->Target() == video_->Target();
    const bool changes = video || video_;
    video_ = video;
    if (samePlace) {
        repaint(video->Target());
    } else if (changes) {
        update();
    }
}

void VideoWindow::paintEvent(QPaintEvent* event) {
    QPainter painter(this);
    const QRegion bare = video_ ? event->region() - video_->Covered() : event->region();
    for (const QRect& part : bare) {
        painter.fillRect(part, Qt::black);
    }
    if (video_) {
        PaintVideo(painter, *video_, event->region());
    }
}

void VideoWindow::closeEvent(QCloseEvent* event) {
    PostClose(pump_, *event);
}
