// A tall picture of equal rows, stored as a list of what was drawn and painted when it is copied.
#pragma once

#include "imaging/picture/surface.h"

#include <QHash>
#include <QString>

#include <memory>
#include <optional>
#include <vector>

class c32bppDIB;

// A part of a picture that is drawn at the top left corner of every row, in its own size. A part without a
// size means the whole picture.
struct StripPicture {
    std::shared_ptr<const c32bppDIB> picture;
    Box from;
};

// A text and the lines of pixels that its letters cover, counted from the top of the text.
struct StripLetters {
    QString text;
    TextReach reach;
};

// Letters at a position on the strip. They belong to a row: they are drawn after the pictures of this row and
// before those of the next row, and are not clipped to it.
struct StripText {
    int row = 0;
    int x = 0;
    int y = 0;
    std::shared_ptr<const StripLetters> letters;
};

// What was drawn on a strip, from the first row to the last.
struct StripDrawing {
    int width = 0;
    int height = 0;
    int rowHeight = 0;
    std::vector<StripPicture> ground;
    // The number of rows, from the first, that have the ground. The others are clear.
    int groundRows = 0;
    QString fontName;
    Integer16 fontSize = 8;
    QRgb foreColor = 0xFF000000;
    std::vector<StripText> texts;
    // How far letters extend above and below their rows.
    int reachAbove = 0;
    int reachBelow = 0;
};

// Lines of one strip that are shown at the same position of another one.
struct StripPaste {
    std::shared_ptr<const StripDrawing> drawing;
    int y = 0;
    int height = 0;
};

// A picture box like a Surface, black where nothing was drawn. It uses memory only for the texts and for the
// lines that were copied last.
struct Strip {
    int Left = 0;
    int Top = 0;
    bool Visible = true;
    std::shared_ptr<StripDrawing> drawing;
    std::optional<StripPaste> paste;
    // The painted lines, starting at `paintedTop`.
    mutable Surface painted;
    mutable int paintedTop = 0;

    int Width() const { return drawing ? drawing->width : 0; }
    int Height() const { return drawing ? drawing->height : 0; }
};

// The shortened and measured texts of a strip's rows, by the whole text, for one font and one width of the
// strip. Measuring is slow, and most rows do not change.
struct StripTexts {
    QString fontName;
    Integer16 fontSize;
    Integer16 stripWidth;
    QHash<QString, std::shared_ptr<const StripLetters>> letters;
};

// Gives the strip a new size and clears it. Sizes have the same limits and errors as in Resize.
void ResizeStrip(Strip& strip, int width, int height, int rowHeight);

// Draws letters in the strip's font.
void AddStripText(Strip& strip, const StripText& text);

// Makes the first strip a copy of the second one.
void CopyStrip(Strip& to, const Strip& from);

// Shows `height` lines of the second strip, from `y` on, at the same position of the first one. Replaces what
// was pasted there before.
void PasteStripLines(Strip& to, const Strip& from, int y, int height);

// Like StretchBlt from a surface with the same pixels.
void StretchBlt(Surface& target, const Box& to, const Strip& source, const Box& from);

// Paints the whole strip. Raises 7 when there is not enough memory.
QImage PictureOf(const Strip& strip);
