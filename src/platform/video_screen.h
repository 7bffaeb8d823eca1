// Port: where the pictures of a running video are shown.
#pragma once

#include <QRect>
#include <QSize>
#include <QString>

#include <memory>
#include <optional>

// One picture of a video, in rows of 32-bit pixels: blue, green, red and an unused byte. Without pixels it is
// black.
struct VideoPicture {
    std::shared_ptr<const unsigned char> pixels;
    QSize size;
    int bytesPerRow = 0;
    // The size in square pixels, which differs from `size` when the file has pixels of another shape. Empty
    // for a video without a picture.
    QSize shape;
};

// The size in which a picture of this shape fills a box without losing its proportions. A picture without a
// shape fills the box.
inline QSize FittedSize(QSize shape, QSize box) {
    return shape.isEmpty() || box.isEmpty() ? box : shape.scaled(box, Qt::KeepAspectRatio);
}

// The pictures of a running video. Event thread only.
struct VideoPictures {
    virtual ~VideoPictures() = default;

    // The picture that has become due since the last call, without waiting. Returns nothing while the picture
    // of the last call stays.
    virtual std::optional<VideoPicture> TakeDue() = 0;
    // Milliseconds after which TakeDue should be called again; nothing while the video is halted.
    virtual std::optional<int> NextDueIn() = 0;
};

// Shows one video at a time. Event thread only.
struct VideoScreen {
    virtual ~VideoScreen() = default;

    // Shows these pictures from now on, in the place that is set next. They must outlive their showing.
    virtual void Attach(VideoPictures& pictures) = 0;
    // Removes the pictures from the screen. Does nothing when others are attached by now.
    virtual void Detach(VideoPictures& pictures) = 0;
    // Calls TakeDue again soon: the video was started or moved to another position.
    virtual void Wake() = 0;
    // Places the pictures in a rectangle of their owner: "Picture_Main" (the frame), "Picture_MainVideo" (the
    // surface over the main window) or "Picture_Video" (the second window).
    virtual void Place(const QString& owner, const QRect& place) = 0;
    virtual void SetVisible(bool visible) = 0;
};
