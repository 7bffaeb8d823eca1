// Draws image objects: copies whole rows if possible, keeps shrunk copies, and uses the painter for
// everything else.
#include "imaging/picture/drawing.h"

#include "imaging/picture/scaling.h"

#include <QPainter>

#include <cstddef>

namespace {

bool IsOpaqueRow(std::span<const std::uint8_t> row) {
    std::uint8_t all = 255;
    for (std::size_t i = 3; i < row.size(); i += 4) {
        all &= row[i];
    }
    return all == 255;
}

// Most transparent pictures are transparent in the first row.
bool IsOpaque(std::span<const std::uint8_t> pixels, std::size_t line) {
    while (!pixels.empty() && IsOpaqueRow(pixels.first(line))) {
        pixels = pixels.subspan(line);
    }
    return pixels.empty();
}

// Returns the kept copy and makes it if necessary. Null when the part is to be drawn directly.
const QImage& ScaledCopy(PictureDrawing& drawing, const QRect& from, const QSize& size, bool atOnce) {
    const bool isRepeated = drawing.scaledFrom == from && drawing.scaledSize == size;
    if (!isRepeated) {
        drawing.scaledFrom = from;
        drawing.scaledSize = size;
        drawing.scaled = QImage();
    }
    if (drawing.scaled.isNull() && (isRepeated || atOnce)) {
        drawing.scaled = SmoothPart(drawing.picture, from, size);
    }
    return drawing.scaled;
}

void DrawSmooth(PictureDrawing& drawing, QPainter& painter, const Stretch& across, const Stretch& down) {
    if (MayBeKept(across, down)) {
        const QRect part(across.from, down.from, across.fromLength, down.fromLength);
        const QSize size(across.toLength, down.toLength);
        const QImage& copy = ScaledCopy(drawing, part, size, IsShrunkFar(across, down));
        if (!copy.isNull()) {
            painter.drawImage(QPoint(across.to, down.to), copy);
            return;
        }
    }
    PaintSmooth(painter, drawing.picture, across, down);
}

} // namespace

PictureDrawing MakeDrawing(std::span<const std::uint8_t> pixels, int width, int height) {
    const qsizetype line = qsizetype{width} * 4;
    const bool isOpaque = IsOpaque(pixels, static_cast<std::size_t>(line));
    const auto format = isOpaque ? QImage::Format_RGB32 : QImage::Format_ARGB32_Premultiplied;
    return {QImage(pixels.data(), width, height, line, format), {}, {}, {}};
}

PictureDrawing Mirrored(const PictureDrawing& drawing, bool across, bool down) {
    return {drawing.picture.mirrored(across, down), {}, {}, {}};
}

PictureDrawing WithoutAlpha(const PictureDrawing& drawing) {
    return {ViewOf(drawing.picture, drawing.picture.rect(), QImage::Format_RGB32), {}, {}, {}};
}

void DrawPart(PictureDrawing& drawing, const Box& from, Surface& target, const Box& to, double opacity,
              ScalingQuality quality) {
    const QImage& picture = drawing.picture;
    const Stretch across =
        VisibleStretch(to.x, to.width, from.x, from.width, target.Width(), picture.width());
    const Stretch down =
        VisibleStretch(to.y, to.height, from.y, from.height, target.Height(), picture.height());
    if (across.IsEmpty() || down.IsEmpty()) {
        return;
    }
    const bool isCopy = across.IsCopy() && down.IsCopy();
    if (isCopy && opacity == 1.0 && !picture.hasAlphaChannel()) {
        CopyRows(target.picture, picture, across, down);
        return;
    }
    QPainter painter(&target.picture);
    painter.setOpacity(opacity);
    if (isCopy) {
        PaintCopy(painter, picture, across, down);
    } else if (quality == ScalingQuality::kNearest) {
        PaintNearest(painter, picture, across, down);
    } else {
        DrawSmooth(drawing, painter, across, down);
    }
}
