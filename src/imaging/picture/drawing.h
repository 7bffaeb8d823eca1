// An image object's pixels in the form in which they are drawn.
#pragma once

#include "imaging/picture/surface.h"

#include <QImage>
#include <QRect>

#include <cstdint>
#include <span>

// The picture with its top row first. A picture without transparency has a format without alpha, so that
// blending becomes copying. A part that is drawn twice in the same size is kept in that size, and one that is
// shrunk far is kept at once, because most frames draw the same pictures as the frame before.
struct PictureDrawing {
    QImage picture;
    QRect scaledFrom;
    QSize scaledSize;
    QImage scaled;
};

// Makes the drawing from premultiplied pixels, top row first. The pixels must outlive it.
PictureDrawing MakeDrawing(std::span<const std::uint8_t> pixels, int width, int height);

// Return the picture mirrored, and the picture without its alpha. The latter must not outlive the original.
PictureDrawing Mirrored(const PictureDrawing& drawing, bool across, bool down);
PictureDrawing WithoutAlpha(const PictureDrawing& drawing);

enum class ScalingQuality { kSmooth, kNearest };

// Draws a part of the picture, scaled into a rectangle of the target. The part must be inside the picture.
// Opacity is 0 to 1.
void DrawPart(PictureDrawing& drawing, const Box& from, Surface& target, const Box& to, double opacity,
              ScalingQuality quality);
