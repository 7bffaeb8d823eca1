// A 32-bit picture that the jukebox draws on: copies, text, size.
#pragma once

#include "core/integer.h"

#include <QImage>
#include <QString>

#include <memory>

// A rectangle in whole pixels.
struct Box {
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;
};

// Scaling quality of StretchBlt.
enum StretchMode : int { kStretchFast = 1, kStretchHalftone = 4 };

// A font made ready for measuring and drawing.
struct SurfaceFont;

// A picture box: a place on its owner, the pixels, and the drawing state that lives on it. Pixels are black
// and opaque until drawn, and stay opaque. Coordinates are its own pixels, (0, 0) at the top left.
struct Surface {
    int Left = 0;
    int Top = 0;
    bool Visible = true;
    QString FontName;
    // Points at 96 dots per inch.
    Integer16 FontSize = 8;
    QRgb ForeColor = 0xFF000000;
    int stretchMode = kStretchFast;
    // Format_RGB32.
    QImage picture;
    // The font of FontName and FontSize as it was last used; made anew when they differ.
    mutable std::shared_ptr<const SurfaceFont> lastFont;

    int Width() const { return picture.width(); }
    int Height() const { return picture.height(); }
};

// The size that a surface is given: negative sizes count as 0, and a size of 0 in one direction as 0 in both.
// Raises 7 when the pixels would pass 1 GiB.
QSize SurfaceSize(int width, int height);

// Gives the surface a new size, see SurfaceSize, and clears it.
void Resize(Surface& surface, int width, int height);

// Fills the surface with black.
void Cls(Surface& surface);

// Copies a rectangle with scaling, without transparency, in the quality of the target's stretch mode. Source
// parts outside the source are left out together with their share of the target; an empty or negative
// rectangle copies nothing. The two surfaces may be the same. Where the size stays, pixels are copied as they
// are in either mode.
void StretchBlt(Surface& target, const Box& to, const Surface& source, const Box& from);

// The same from a taller picture, of which `lines` holds what is copied, line `top` first. `height` is the
// height of the whole picture. All lines of `from` that the picture has must be there.
void StretchBltLines(Surface& target, const Box& to, const Surface& lines, int top, int height,
                     const Box& from);

// Copies a rectangle one to one.
void BitBlt(Surface& target, const Box& to, const Surface& source, int fromX, int fromY);

// Size of a text in the surface's font, in pixels at 96 dots per inch. An empty text is 0 wide and one line
// high.
int TextWidth(const Surface& surface, const QString& text);
int TextHeight(const Surface& surface, const QString& text);

// Width of the first `length` characters of a text as they are drawn in front of the rest of it. Letters may
// take another form, and another width, when they are the last ones.
int BeginningWidth(const Surface& surface, const QString& text, qsizetype length);

// The lines of pixels that the letters of a text reach, counted from its top: above it they are negative.
struct TextReach {
    int top = 0;
    int bottom = 0;
};

// How far a text reaches up and down in the surface's font, no less than its line. Stacked marks and some
// letters pass the line by any length.
TextReach ReachOfText(const Surface& surface, const QString& text);

// Writes a text with its top left corner at (x, y) in the surface's font and colour, the ground left as it
// is, not clipped to anything but the surface.
void TextOutA(Surface& surface, int x, int y, const QString& text);
