// Scaled drawing of 32-bit pictures, for both surfaces and image objects.
#pragma once

#include <QImage>
#include <QRect>

#include <cstdint>

class QPainter;

// One direction of a scaled copy: `toLength` pixels at `to` show `fromLength` pixels at `from`.
struct Stretch {
    int to = 0;
    int toLength = 1;
    int from = 0;
    int fromLength = 1;
    int sourceSize = 0;
    // The visible pixels of the target: inside the target, and showing a pixel of the source.
    int first = 0;
    int end = 0;

    bool IsEmpty() const { return first >= end; }
    // Whether pixels keep their size.
    bool IsCopy() const { return toLength == fromLength; }
    // The source pixel under the middle of a target pixel.
    std::int64_t SourceOf(int pixel) const;
    // The position in the source of the left or upper edge of a target pixel.
    double EdgeOf(int pixel) const;
    // Leaves visible only the pixels whose source pixel is one of `length` at `position`.
    void ShowOnly(int position, int length);
};

// Returns a direction with its visible pixels, for a target and a source of these sizes. Accepts any numbers;
// without a length of at least 1 nothing is visible.
Stretch VisibleStretch(int to, int toLength, int from, int fromLength, int targetSize, int sourceSize);

// Smaller than half in at least one direction. Each pixel must then be the average of all source pixels that
// it covers.
bool IsShrunkFar(const Stretch& across, const Stretch& down);

// Whether the whole target rectangle is near enough and small enough to make and keep a copy.
bool MayBeKept(const Stretch& across, const Stretch& down);

// Returns a smoothly scaled copy of a part of the picture, in the picture's format. If it is shrunk far, each
// pixel is the average of what it covers.
QImage SmoothPart(const QImage& picture, const QRect& from, const QSize& size);

// Copies the visible pixels row by row, if both directions are copies. Both pictures have 4 bytes per pixel,
// and can be the same picture.
void CopyRows(QImage& target, const QImage& picture, const Stretch& across, const Stretch& down);

// Returns a view of a part of a picture, without a copy. It must not outlive the picture.
QImage ViewOf(const QImage& picture, const QRect& part, QImage::Format format);

// Draws the visible pixels one to one, if both directions are copies, with the painter's blending.
void PaintCopy(QPainter& painter, const QImage& picture, const Stretch& across, const Stretch& down);

// Draws a part of the picture scaled smoothly, with the painter's blending.
void PaintSmooth(QPainter& painter, const QImage& picture, const Stretch& across, const Stretch& down);

// The same with nearest neighbour: each pixel shows the source pixel under its middle.
void PaintNearest(QPainter& painter, const QImage& picture, const Stretch& across, const Stretch& down);
