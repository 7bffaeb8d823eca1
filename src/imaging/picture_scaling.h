// Scaled drawing of 32-bit pictures, for surfaces and image objects alike.
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
    // The pixels of the target that are seen: inside the target, and showing a pixel that the source has.
    int first = 0;
    int end = 0;

    bool IsEmpty() const { return first >= end; }
    // The size of a pixel stays.
    bool IsCopy() const { return toLength == fromLength; }
    // The source pixel under the middle of one of the target pixels.
    std::int64_t SourceOf(int pixel) const;
    // Where in the source the left or upper edge of a target pixel lies.
    double EdgeOf(int pixel) const;
};

// A direction with its visible pixels, for a target and a source of these sizes. Any numbers will do; without
// a length of 1 or more nothing is visible.
Stretch VisibleStretch(int to, int toLength, int from, int fromLength, int targetSize, int sourceSize);

// Smaller than half in one direction or both, where each pixel has to be made of all those that it stands
// for.
bool IsShrunkFar(const Stretch& across, const Stretch& down);

// The whole target rectangle lies near enough and is small enough for a copy of it to be made and kept.
bool MayBeKept(const Stretch& across, const Stretch& down);

// A smoothly scaled copy of a part of the picture, in the picture's format. Shrunk far, each pixel is the
// average of what it stands for.
QImage SmoothPart(const QImage& picture, const QRect& from, const QSize& size);

// Copies the visible pixels row by row, for two directions that are copies. Both pictures have 4 bytes a
// pixel, and may be the same.
void CopyRows(QImage& target, const QImage& picture, const Stretch& across, const Stretch& down);

// A picture of a part of the pixels of another, without a copy. It must not outlive it.
QImage ViewOf(const QImage& picture, const QRect& part, QImage::Format format);

// Draws the visible pixels one to one, for two directions that are copies, blended as the painter is set.
void PaintCopy(QPainter& painter, const QImage& picture, const Stretch& across, const Stretch& down);

// Draws a part of the picture scaled with smooth transitions, blended as the painter is set.
void PaintSmooth(QPainter& painter, const QImage& picture, const Stretch& across, const Stretch& down);

// The same without transitions: each pixel shows the one under its middle.
void PaintNearest(QPainter& painter, const QImage& picture, const Stretch& across, const Stretch& down);
