// An image object's pixels in the form in which they are drawn.
#pragma once

#include "imaging/surface.h"

#include <QImage>
#include <QRect>

#include <cstdint>
#include <span>

// The picture with its highest row first. A picture without transparency has a format without alpha, so that
// blending it is copying. A part that is drawn in one size twice running is kept in that size, and one that
// is shrunk far at once: a frame draws the same assets as the frame before.
struct PictureDrawing {
    QImage picture;
    QRect scaledFrom;
    QSize scaledSize;
    QImage scaled;
};

// Makes the drawing of premultiplied pixels, highest row first, which must outlive it.
PictureDrawing MakeDrawing(std::span<const std::uint8_t> pixels, int width, int height);

// The same picture mirrored, and the same picture with its alpha left out. The latter must not outlive the
// first.
PictureDrawing Mirrored(const PictureDrawing& drawing, bool across, bool down);
PictureDrawing WithoutAlpha(const PictureDrawing& drawing);

enum class ScalingQuality { kSmooth, kNearest };

// Draws a part of the picture, which lies inside it, scaled into a rectangle of the target. Opacity is 0..1.
void DrawPart(PictureDrawing& drawing, const Box& from, Surface& target, const Box& to, double opacity,
              ScalingQuality quality);
