// Scaled drawing with QPainter. The visible part is calculated first, so any rectangle is safe and the cost
// depends only on what is visible.
#include "imaging/picture/scaling.h"

#include <QPainter>

#include <algorithm>
#include <cstring>

namespace {

// The painter uses fixed-point numbers. A stretch within this range is passed to it whole, because its own
// clipping keeps every pixel in place. A longer one is cut to its visible part first.
constexpr int kPainterReach = 8191;

// Above this number of pixels in a scaled copy, only the visible ones are made.
constexpr std::int64_t kMostKeptPixels = std::int64_t{1} << 24;

// What is drawn in one direction: target pixels and the range of the source that they show.
struct Piece {
    int to = 0;
    int toLength = 0;
    double from = 0;
    double fromLength = 0;
};

bool IsWithinReach(const Stretch& stretch) {
    return stretch.from >= 0 && stretch.fromLength <= stretch.sourceSize - stretch.from &&
           stretch.to >= -kPainterReach && stretch.to <= kPainterReach && stretch.toLength <= kPainterReach;
}

Piece Whole(const Stretch& stretch) {
    return {stretch.to, stretch.toLength, static_cast<double>(stretch.from),
            static_cast<double>(stretch.fromLength)};
}

Piece Visible(const Stretch& stretch) {
    const double from = std::max(0.0, stretch.EdgeOf(stretch.first));
    const double end = std::min(static_cast<double>(stretch.sourceSize), stretch.EdgeOf(stretch.end));
    return {stretch.first, stretch.end - stretch.first, from, end - from};
}

// Returns the first target pixel in begin..end that shows source pixel `column` or a later one, or `end` when
// there is none.
int FirstAtOrBehind(const Stretch& stretch, int begin, int end, int column) {
    while (begin < end) {
        const int middle = begin + (end - begin) / 2;
        if (stretch.SourceOf(middle) < column) {
            begin = middle + 1;
        } else {
            end = middle;
        }
    }
    return begin;
}

QRect TargetRect(const Piece& across, const Piece& down) {
    return {across.to, down.to, across.toLength, down.toLength};
}

QRectF SourceRect(const Piece& across, const Piece& down) {
    return {across.from, down.from, across.fromLength, down.fromLength};
}

void PaintStretched(QPainter& painter, const QImage& picture, const Stretch& across, const Stretch& down) {
    const Piece columns = IsWithinReach(across) ? Whole(across) : Visible(across);
    const Piece rows = IsWithinReach(down) ? Whole(down) : Visible(down);
    const QRectF from = SourceRect(columns, rows);
    const QRect part = from.toAlignedRect() & picture.rect();
    if (part.isEmpty()) {
        return;
    }
    painter.drawImage(QRectF(TargetRect(columns, rows)), ViewOf(picture, part, picture.format()),
                      from.translated(-part.topLeft()));
}

QImage Averaged(const QImage& picture, const QRect& from, const QSize& size) {
    return ViewOf(picture, from, picture.format())
        .scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
}

void PaintShrunk(QPainter& painter, const QImage& picture, const Stretch& across, const Stretch& down) {
    const bool isWhole = MayBeKept(across, down);
    const Piece columns = isWhole ? Whole(across) : Visible(across);
    const Piece rows = isWhole ? Whole(down) : Visible(down);
    const QRect part = SourceRect(columns, rows).toAlignedRect() & picture.rect();
    const QRect to = TargetRect(columns, rows);
    if (part.isEmpty()) {
        return;
    }
    painter.drawImage(to.topLeft(), Averaged(picture, part, to.size()));
}

} // namespace

std::int64_t Stretch::SourceOf(int pixel) const {
    const std::int64_t middle = 2 * (std::int64_t{pixel} - to) + 1;
    return from + middle * fromLength / (2 * std::int64_t{toLength});
}

double Stretch::EdgeOf(int pixel) const {
    return from + (static_cast<double>(pixel) - to) * fromLength / toLength;
}

void Stretch::ShowOnly(int position, int length) {
    first = FirstAtOrBehind(*this, first, end, position);
    const auto behind = static_cast<int>(std::min<std::int64_t>(std::int64_t{position} + length, sourceSize));
    end = FirstAtOrBehind(*this, first, end, behind);
}

Stretch VisibleStretch(int to, int toLength, int from, int fromLength, int targetSize, int sourceSize) {
    if (toLength < 1 || fromLength < 1) {
        return {};
    }
    Stretch stretch{to, toLength, from, fromLength, sourceSize};
    const int lowest = std::max(0, to);
    const auto highest = static_cast<int>(std::min<std::int64_t>(targetSize, std::int64_t{to} + toLength));
    if (lowest >= highest) {
        return {};
    }
    stretch.first = FirstAtOrBehind(stretch, lowest, highest, 0);
    stretch.end = FirstAtOrBehind(stretch, stretch.first, highest, sourceSize);
    return stretch;
}

bool IsShrunkFar(const Stretch& across, const Stretch& down) {
    return std::int64_t{across.toLength} * 2 < across.fromLength ||
           std::int64_t{down.toLength} * 2 < down.fromLength;
}

bool MayBeKept(const Stretch& across, const Stretch& down) {
    return IsWithinReach(across) && IsWithinReach(down) &&
           std::int64_t{across.toLength} * down.toLength <= kMostKeptPixels;
}

QImage ViewOf(const QImage& picture, const QRect& part, QImage::Format format) {
    const uchar* const first = picture.constScanLine(part.top()) + std::ptrdiff_t{part.left()} * 4;
    return {first, part.width(), part.height(), picture.bytesPerLine(), format};
}

QImage SmoothPart(const QImage& picture, const QRect& from, const QSize& size) {
    const Stretch across =
        VisibleStretch(0, size.width(), from.x(), from.width(), size.width(), picture.width());
    const Stretch down =
        VisibleStretch(0, size.height(), from.y(), from.height(), size.height(), picture.height());
    if (IsShrunkFar(across, down)) {
        return Averaged(picture, from, size);
    }
    QImage copy(size, picture.format());
    if (copy.isNull()) {
        return copy;
    }
    copy.fill(Qt::transparent);
    QPainter painter(&copy);
    PaintSmooth(painter, picture, across, down);
    return copy;
}

void CopyRows(QImage& target, const QImage& picture, const Stretch& across, const Stretch& down) {
    const qsizetype targetLine = target.bytesPerLine();
    const qsizetype sourceLine = picture.bytesPerLine();
    // Gets the target's address first, because that can make a separate copy of its pixels.
    uchar* to = target.bits() + down.first * targetLine + std::ptrdiff_t{across.first} * 4;
    const uchar* from =
        picture.constBits() + down.SourceOf(down.first) * sourceLine + across.SourceOf(across.first) * 4;
    const auto bytes = static_cast<std::size_t>(across.end - across.first) * 4;
    const int rows = down.end - down.first;
    if (static_cast<qsizetype>(bytes) == targetLine && targetLine == sourceLine) {
        std::memmove(to, from, bytes * static_cast<std::size_t>(rows));
        return;
    }
    // Within one picture, a copy downwards must begin with the last row.
    const bool fromBelow = to > from;
    for (int i = 0; i < rows; ++i) {
        const std::ptrdiff_t row = fromBelow ? rows - 1 - i : i;
        std::memmove(to + row * targetLine, from + row * sourceLine, bytes);
    }
}

void PaintCopy(QPainter& painter, const QImage& picture, const Stretch& across, const Stretch& down) {
    const QRect from(static_cast<int>(across.SourceOf(across.first)),
                     static_cast<int>(down.SourceOf(down.first)), across.end - across.first,
                     down.end - down.first);
    painter.drawImage(QPoint(across.first, down.first), picture, from);
}

void PaintSmooth(QPainter& painter, const QImage& picture, const Stretch& across, const Stretch& down) {
    if (IsShrunkFar(across, down)) {
        PaintShrunk(painter, picture, across, down);
        return;
    }
    painter.setRenderHint(QPainter::SmoothPixmapTransform, true);
    PaintStretched(painter, picture, across, down);
}

void PaintNearest(QPainter& painter, const QImage& picture, const Stretch& across, const Stretch& down) {
    painter.setRenderHint(QPainter::SmoothPixmapTransform, false);
    PaintStretched(painter, picture, across, down);
}
