// The one text routine of the jukebox.
#pragma once

#include "core/integer.h"
#include "imaging/surface.h"

#include <QString>

struct Form_Main;

// A box in pixels of the surface it is drawn on. Making one from other numbers rounds half to even and raises
// 6 outside 16 bits.
struct TextBox {
    Integer16 Left;
    Integer16 Top;
    Integer16 Width;
    Integer16 Height;
};

// A font: name, size in points at 96 dots per inch, colour as "red,green,blue".
struct TextStyle {
    QString Typo;
    Integer16 TypoSize;
    QString TypoColor;
};

// A text as it fits a width in the surface's font: itself, or else its longest beginning that fits with "..."
// after it. Raises 5 when not even the dots fit.
QString ShortenedText(const Surface& surface, const QString& text, Integer16 width);

// The same for the width of a box; an error's detail names the text, its box and its style in the theme.
QString ShortenedText(Form_Main& form, const Surface& surface, const QString& text, const TextBox& box,
                      const TextStyle& style);

// Where a text is written in a box, and in which colour.
struct PlacedText {
    int x = 0;
    int y = 0;
    QRgb colour = 0;
};

// Places a text that has been shortened, in the surface's font. Raises 6 for a box that leaves 16 bits; 13,
// 6, 9 or 5 for a colour that is not three numbers. The detail names the key in the theme.
PlacedText PlaceText(Form_Main& form, const Surface& surface, const QString& text, const TextBox& box,
                     const TextStyle& style, const QString& align, const QString& vAlign);

// The line of the log about a text that is drawn.
QString DrawTextLine(const QString& text, const TextBox& box, const TextStyle& style, const QString& align,
                     const QString& vAlign);

// Writes one line of text into a box, shortened with "..." to its width, aligned by the words "left",
// "right", "top", "bottom" in any case; any other word centres. Logs all its arguments. Any fault ends the
// program: 13, 6, 9 or 5 for a colour that is not three numbers, 5 for a box without room for three dots, 6
// for a box that leaves 16 bits.
void DrawText(Form_Main& form, Surface& Pic, const QString& Texte, const TextBox& box, const TextStyle& style,
              const QString& TypoAlign, const QString& TypoVAlign);

// The same without the line in the log.
void DrawTextUnlogged(Form_Main& form, Surface& Pic, const QString& Texte, const TextBox& box,
                      const TextStyle& style, const QString& TypoAlign, const QString& TypoVAlign);

// DrawText centred both ways.
void DrawCentred(Form_Main& form, Surface& Pic, const QString& Texte, const TextBox& box,
                 const TextStyle& style);

// Replaces 53 accented letters by plain ones.
QString StripAccents(QString text);
