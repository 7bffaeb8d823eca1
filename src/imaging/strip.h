// A tall picture of equal rows, kept as the list of what was drawn on it and painted where it is copied.
#pragma once

#include "imaging/surface.h"

#include <QHash>
#include <QString>

#include <memory>
#include <optional>
#include <vector>

class c32bppDIB;

// A part of a picture that every row has at its top left corner, in its own size. A part without a size is
// the whole picture.
struct StripPicture {
    std::shared_ptr<const c32bppDIB> picture;
    Box from;
};

// Letters, and the lines of pixels that they reach, counted from the top of the text.
struct StripLetters {
    QString text;
    TextReach reach;
};

// Letters at a place of the strip. They belong to a row: they are drawn after the pictures of this row and
// before those of the next one. They are not clipped to it.
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
    // The first rows, which have the ground; the others are clear.
    int groundRows = 0;
    QString fontName;
    Integer16 fontSize = 8;
    QRgb foreColor = 0xFF000000;
    std::vector<StripText> texts;
    // How far letters reach above and below their rows.
    int reachAbove = 0;
    int reachBelow = 0;
};

// Lines of one strip that are seen in the same place of another one.
struct StripPaste {
    std::shared_ptr<const StripDrawing> drawing;
    int y = 0;
    int height = 0;
};

// A picture box as a Surface is, black where nothing was drawn. Its memory is that of the texts and of the
// lines that were copied last.
struct Strip {
    int Left = 0;
    int Top = 0;
    bool Visible = true;
    std::shared_ptr<StripDrawing> drawing;
    std::optional<StripPaste> paste;
    // Lines that have been painted, from `paintedTop` on.
    mutable Surface painted;
    mutable int paintedTop = 0;

    int Width() const { return drawing ? drawing->width : 0; }
    int Height() const { return drawing ? drawing->height : 0; }
};

// The texts of a strip's rows as they were shortened and measured last, by the whole text, for one font and
// one width of the strip. Measuring is slow, and most rows stay as they are.
struct StripTexts {
    QString fontName;
    Integer16 fontSize;
    Integer16 stripWidth;
    QHash<QString, std::shared_ptr<const StripLetters>> letters;
};

// Gives the strip a new size and clears it. Sizes count and raise as those of Resize do.
void ResizeStrip(Strip& strip, int width, int height, int rowHeight);

// Draws letters in the strip's font.
void AddStripText(Strip& strip, const StripText& text);

// Makes the first strip a copy of the second one.
void CopyStrip(Strip& to, const Strip& from);

// Shows `height` lines of the second strip, from `y` on, in the same place of the first one, instead of what
// was pasted there before.
void PasteStripLines(Strip& to, const Strip& from, int y, int height);

// As StretchBlt from a surface with the same pixels.
void StretchBlt(Surface& target, const Box& to, const Strip& source, const Box& from);

// The whole strip. Raises 7 when there is no memory for it.
QImage PictureOf(const Strip& strip);
