// A picture of a video in its place of a window, and how it is painted.
#pragma once

#include "platform/video_screen.h"

#include <QRegion>

class QPainter;

// The picture keeps its proportions and is centred across, with black beside it. In the small view of the
// frame it begins at the top of its place, and nothing is painted below it; on the two full surfaces it is in
// the middle, with black above and below it.
struct ShownVideo {
    enum class Look { kSmall, kFull };

    VideoPicture picture;
    // In pixels of the window.
    QRect place;
    Look look = Look::kFull;

    // The pixels that the picture covers, with the black around it.
    QRect Covered() const;
    // The pixels of the picture alone.
    QRect Target() const;
};

// Paints the part of a video that is inside the region, and may set the painter's clip.
void PaintVideo(QPainter& painter, const ShownVideo& video, const QRegion& region);
