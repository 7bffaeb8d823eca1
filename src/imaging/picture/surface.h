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

// A font, ready for measuring and drawing.
struct SurfaceFont;

// A picture box: a position on its owner, the pixels, and the drawing state. Pixels are black and opaque
// until they are drawn, and stay opaque. Coordinates are the box's own pixels, with (0, 0) at the top left.
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
    // The last used font of FontName and FontSize; replaced when they change.
    mutable std::shared_ptr<const SurfaceFont> lastFont;

    int Width() const { return picture.width(); }
    int Height() const { return picture.height(); }
};

// The size of a surface for a requested size: negative sizes count as 0, and a size of 0 in one direction
// makes both 0. Raises 7 when the pixels would exceed 1 GiB.
QSize SurfaceSize(int width, int height);

// Gives the surface a new size (see SurfaceSize) and clears it.
void Resize(Surface& surface, int width, int height);

// Fills the surface with black.
void Cls(Surface& surface);

// Copies a rectangle with scaling and without transparency, in the quality of the target's stretch mode.
// Parts of the rectangle outside the source are left out together with the corresponding parts of the target;
// an empty or negative rectangle copies nothing. Source and target can be the same surface. Without scaling,
// pixels are copied unchanged in both modes.
void StretchBlt(Surface& target, const Box& to, const Surface& source, const Box& from);

// Like StretchBlt onto a target that already shows the same rectangle of the source, which has changed only
// inside `part`.
void StretchBltPart(Surface& target, const Box& to, const Surface& source, const Box& from, const Box& part);

// Like StretchBlt from a taller picture. `lines` contains the part that is copied, starting with line `top`.
// `height` is the height of the whole picture. `lines` must contain all lines of `from` that the picture has.
void StretchBltLines(Surface& target, const Box& to, const Surface& lines, int top, int height,
                     const Box& from);

// Copies a rectangle one to one.
void BitBlt(Surface& target, const Box& to, const Surface& source, int fromX, int fromY);

// Size of a text in the surface's font, in pixels at 96 dots per inch. An empty text is 0 wide and one line
// high.
int TextWidth(const Surface& surface, const QString& text);
int TextHeight(const Surface& surface, const QString& text);

// Whether an installed font, or one of the theme, has this character. The surface's font comes first.
bool HasGlyph(const Surface& surface, char32_t character);

// Width of the first `length` characters of a text when the rest follows them. The last letters of a text can
// have another shape and width.
int BeginningWidth(const Surface& surface, const QString& text, qsizetype length);

// The lines of pixels that the letters of a text cover, counted from its top; negative above it.
struct TextReach {
    int top = 0;
    int bottom = 0;
};

// How far a text extends up and down in the surface's font, at least its line. Stacked marks and some letters
// can extend any distance beyond the line.
TextReach ReachOfText(const Surface& surface, const QString& text);

// Draws a text with its top left corner at (x, y) in the surface's font and colour. The background stays;
// only the surface clips the text.
void TextOutA(Surface& surface, int x, int y, const QString& text);
