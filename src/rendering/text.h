// Shortening, placing and writing text, and replacing accented letters.
#pragma once

#include "core/integer.h"
#include "imaging/picture/surface.h"
#include "state/box.h"

#include <QString>

struct Form_Main;

// Returns the text when it fits the width in the surface's font, else its longest beginning that fits with
// "..." after it. Raises 5 when not even the dots fit.
QString ShortenedText(const Surface& surface, const QString& text, Integer16 width);

// Does the same for the width of a box; an error's detail names the text, its box and its style in the theme.
QString ShortenedText(Form_Main& form, const Surface& surface, const QString& text, const Box16& box,
                      const TextLook& style);

// The position and the colour of a text.
struct PlacedText {
    int x = 0;
    int y = 0;
    QRgb colour = 0;
};

// Places a shortened text in the surface's font. Raises 6 for a box that exceeds 16 bits; 13, 6, 9 or 5 for a
// colour that is not three numbers. The detail names the key in the theme.
PlacedText PlaceText(Form_Main& form, const Surface& surface, const QString& text, const Box16& box,
                     const TextLook& style, const QString& align, const QString& vAlign);

// Returns the colour "red,green,blue". Values above 255 count as 255. Raises 9 for fewer than three numbers,
// 13 for one that is invalid, 6 for one beyond 16 bits, 5 for one below 0.
QRgb ColourOf(const QString& text);

// Returns the log line of a text that is drawn.
QString DrawTextLine(const QString& text, const Box16& box, const TextLook& style, const QString& align,
                     const QString& vAlign);

// Writes one line of text into a box, shortened with "..." to its width, aligned by the words "left",
// "right", "top", "bottom" in any case; any other word centres. Logs all its arguments. Any error ends the
// program: 13, 6, 9 or 5 for a colour that is not three numbers, 5 for a box without room for three dots, 6
// for a box that exceeds 16 bits.
void DrawText(Form_Main& form, Surface& Pic, const QString& Texte, const Box16& box, const TextLook& style,
              const QString& TypoAlign, const QString& TypoVAlign);

// Does the same without a log line.
void DrawTextUnlogged(Form_Main& form, Surface& Pic, const QString& Texte, const Box16& box,
                      const TextLook& style, const QString& TypoAlign, const QString& TypoVAlign);

// DrawText centred both ways.
void DrawCentred(Form_Main& form, Surface& Pic, const QString& Texte, const Box16& box,
                 const TextLook& style);

// Replaces 53 accented letters with plain ones.
QString StripAccents(QString text);
