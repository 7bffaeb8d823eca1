// Painting a picture of a video.
#include "platform/qt/shown_video.h"

#include <QImage>
#include <QPainter>

QRect ShownVideo::Target() const {
    const QSize size = FittedSize(picture.shape, place.size());
    const int left = place.left() + (place.width() - size.width()) / 2;
    const int down = look == Look::kFull ? (place.height() - size.height()) / 2 : 0;
    return {QPoint(left, place.top() + down), size};
}

QRect ShownVideo::Covered() const {
    const QRect target = Target();
    return look == Look::kFull ? place : QRect(place.left(), target.top(), place.width(), target.height());
}

void PaintVideo(QPainter& painter, const ShownVideo& video, const QRegion& region) {
    const QRect target = video.Target();
    const bool isBlack = video.picture.pixels == nullptr;
    const QRegion black = isBlack ? QRegion(video.Covered()) : QRegion(video.Covered()) - target;
    for (const QRect& part : black& region) {
        painter.fillRect(part, Qt::black);
    }
    if (!isBlack) {
        painter.setClipRegion(region & target);
        const QSize size = video.picture.size;
        painter.setRenderHint(QPainter::SmoothPixmapTransform, target.size() != size);
        painter.drawImage(target, QImage(video.picture.pixels.get(), size.width(), size.height(),
                                         video.picture.bytesPerRow, QImage::Format_RGB32));
    }
}
