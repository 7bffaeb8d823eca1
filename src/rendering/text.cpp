// Shortening, placing and writing text, and replacing accented letters.
#include "rendering/text.h"

#include "core/conversions.h"
#include "core/run_time_error.h"
#include "imaging/picture/surface.h"
#include "state/form_main.h"
#include "state/log.h"
#include "theme/style_places.h"

#include <QStringList>

#include <algorithm>
#include <cstdint>

namespace {

const QString kDots = QStringLiteral("...");

// clang-format off
constexpr QStringView kAccented = u"ÀÁÂÃÄÅàáâãäåÒÓÔÕÖØòóôõöøÈÉÊËèéêëÌÍÎÏìíîïÙÚÛÜùúûüÿÑñÇç";
constexpr QStringView kPlain    = u"AAAAAAaaaaaaOOOOOOooooooEEEEeeeeIIIIiiiiUUUUuuuuyNnCc";
// clang-format on

static_assert(kAccented.size() == 53 && kPlain.size() == 53);

bool FitsWithDots(const Surface& surface, const QString& text, qsizetype length, Integer16 width) {
    return TextWidth(surface, text.left(length) + kDots) <= width.value();
}

// Returns the next shorter length at which a text can be cut. A surrogate pair counts as one character.
qsizetype ShorterLength(const QString& text, qsizetype length) {
    const bool isPair = length > 1 && text[length - 1].isLowSurrogate() && text[length - 2].isHighSurrogate();
    return length - (isPair ? 2 : 1);
}

// Returns how many characters before a cut can change their width because of it: letters take other forms,
// ligatures and kerning pairs are separated. The shaper matches at most 64 glyphs at a time; ligatures of
// plain Latin letters are short.
qsizetype ChangedByCut(const QString& text) {
    constexpr char16_t kFirstMark = 0x300;
    const bool isPlain =
        std::all_of(text.begin(), text.end(), [](QChar c) { return c.unicode() < kFirstMark; });
    return isPlain ? 16 : 64;
}

// Returns a limit that is above every fitting length; the text's size when no smaller limit is proved. When a
// beginning of the text is too wide by itself, no cut fits that is far enough after it to leave its width
// unchanged.
qsizetype FittingLimit(const Surface& surface, const QString& text, Integer16 width) {
    constexpr qsizetype kLong = 1024;
    const qsizetype changed = ChangedByCut(text);
    for (qsizetype begin = 8; begin + changed < text.size(); begin += begin < kLong ? begin / 4 + 8 : begin) {
        if (BeginningWidth(surface, text.left(begin + changed), begin) > width.value()) {
            return begin + changed;
        }
    }
    return text.size();
}

// Binary search below `limit`, correct where the width grows with the length. Returns 0 when nothing fits.
qsizetype SearchedLength(const Surface& surface, const QString& text, Integer16 width, qsizetype limit) {
    qsizetype fitting = 0;
    while (limit - fitting > 1) {
        const qsizetype middle = (fitting + limit) / 2;
        (FitsWithDots(surface, text, middle, width) ? fitting : limit) = middle;
    }
    const bool inPair = fitting > 0 && text[fitting - 1].isHighSurrogate() && text[fitting].isLowSurrogate();
    return inPair ? fitting - 1 : fitting;
}

// Returns the longest length below `limit` that fits the width with the dots after it; 0 when nothing fits.
// Tries each length, starting with the longest, because a longer text can be narrower.
qsizetype FittingLength(const Surface& surface, const QString& text, Integer16 width, qsizetype limit) {
    // Thousands of characters without a width can fit a box, and the time to measure combining marks grows
    // with the square of their number. After this much work the rest is found by binary search.
    constexpr std::int64_t kMostWork = 300'000;
    constexpr std::int64_t kManyCharacters = 4096;
    std::int64_t work = 0;
    qsizetype length = ShorterLength(text, limit);
    while (length > 0 && !FitsWithDots(surface, text, length, width)) {
        work += length * (1 + length / kManyCharacters);
        if (work > kMostWork) {
            return SearchedLength(surface, text, width, length);
        }
        length = ShorterLength(text, length);
    }
    return length;
}

// Returns where an extent begins in the box: at the start, at the end, or centred.
double Aligned(const QString& word, const QString& atStart, const QString& atEnd, Integer16 start,
               Integer16 room, int extent) {
    if (word == atStart) {
        return start.value();
    }
    if (word == atEnd) {
        return (start + room).value() - extent;
    }
    return start.value() + (room.value() / 2.0 - extent / 2.0);
}

int ColourElement(const QStringList& elements, int i, const QString& colour) {
    if (i >= elements.size()) {
        throw RunTimeError(
            kSubscriptOutOfRange,
            QStringLiteral("\"%1\" has %2 of 3 numbers").arg(colour, QString::number(elements.size())));
    }
    const auto where = [&] { return QStringLiteral("\"%1\"").arg(colour); };
    const int value = TellingWhere(where, [&] { return CInt16(elements[i]).value(); });
    if (value < 0) {
        throw RunTimeError(kInvalidProcedureCall,
                           QStringLiteral("\"%1\": %2 is below 0").arg(colour, QString::number(value)));
    }
    return std::min(value, 255);
}

// Returns where the colour of a style is in the theme, for the detail of an error.
QString PlaceOfColour(Form_Main& form, const TextLook& style) {
    return PlacesOfColour(form, style.Font, style.Color) + QStringLiteral(" (expected red,green,blue)");
}

// Describes a text, its box, and where its style is in the theme, for the detail of an error.
QString PlaceOfText(Form_Main& form, const QString& text, const Box16& box, const TextLook& style) {
    return QStringLiteral(
               "the text \"%1\" in a box of %2x%3 at %4,%5, font \"%6\" of %7 points, colour of %8")
        .arg(text, QString::number(box.W.value()), QString::number(box.H.value()),
             QString::number(box.X.value()), QString::number(box.Y.value()), style.Font,
             QString::number(style.Size.value()), PlacesOfColour(form, style.Font, style.Color));
}

} // namespace

QRgb ColourOf(const QString& text) {
    // An empty text has no elements.
    const QStringList elements = text.isEmpty() ? QStringList() : text.split(u',');
    const int red = ColourElement(elements, 0, text);
    const int green = ColourElement(elements, 1, text);
    const int blue = ColourElement(elements, 2, text);
    return qRgb(red, green, blue);
}

QString ShortenedText(const Surface& surface, const QString& text, Integer16 width) {
    const qsizetype limit = FittingLimit(surface, text, width);
    if (limit == text.size() && TextWidth(surface, text) <= width.value()) {
        return text;
    }
    const qsizetype length = text.isEmpty() ? 0 : FittingLength(surface, text, width, limit);
    if (text.isEmpty() || (length == 0 && !FitsWithDots(surface, text, 0, width))) {
        throw RunTimeError(kInvalidProcedureCall, QStringLiteral("the text box has no room for \"...\""));
    }
    return text.left(length) + kDots;
}

QString ShortenedText(Form_Main& form, const Surface& surface, const QString& text, const Box16& box,
                      const TextLook& style) {
    const auto inBox = [&] { return PlaceOfText(form, text, box, style); };
    return TellingWhere(inBox, [&] { return ShortenedText(surface, text, box.W); });
}

QString DrawTextLine(const QString& text, const Box16& box, const TextLook& style, const QString& align,
                     const QString& vAlign) {
    const QStringList arguments = {text,
                                   QString::number(box.X.value()),
                                   QString::number(box.Y.value()),
                                   QString::number(box.W.value()),
                                   QString::number(box.H.value()),
                                   style.Font,
                                   QString::number(style.Size.value()),
                                   style.Color,
                                   align,
                                   vAlign};
    return QStringLiteral(" : DrawText (") + arguments.join(u',') + u')';
}

PlacedText PlaceText(Form_Main& form, const Surface& surface, const QString& text, const Box16& box,
                     const TextLook& style, const QString& align, const QString& vAlign) {
    const QString left = QStringLiteral("left");
    const QString across = align.toLower();
    const int width = across == left ? 0 : TextWidth(surface, text);
    const auto inBox = [&] { return PlaceOfText(form, text, box, style); };
    const double x = TellingWhere(
        inBox, [&] { return Aligned(across, left, QStringLiteral("right"), box.X, box.W, width); });
    const double y = TellingWhere(inBox, [&] {
        return Aligned(vAlign.toLower(), QStringLiteral("top"), QStringLiteral("bottom"), box.Y, box.H,
                       TextHeight(surface, text));
    });
    const auto inTheme = [&] { return PlaceOfColour(form, style); };
    const QRgb colour = TellingWhere(inTheme, [&] { return ColourOf(style.Color); });
    return {CInt32(x).value(), CInt32(y).value(), colour};
}

void DrawText(Form_Main& form, Surface& Pic, const QString& Texte, const Box16& box, const TextLook& style,
              const QString& TypoAlign, const QString& TypoVAlign) {
    EndsProgram("DrawText", [&] { WriteLog(form, DrawTextLine(Texte, box, style, TypoAlign, TypoVAlign)); });
    DrawTextUnlogged(form, Pic, Texte, box, style, TypoAlign, TypoVAlign);
}

void DrawTextUnlogged(Form_Main& form, Surface& Pic, const QString& Texte, const Box16& box,
                      const TextLook& style, const QString& TypoAlign, const QString& TypoVAlign) {
    EndsProgram("DrawText", [&] {
        Pic.FontName = style.Font;
        Pic.FontSize = style.Size;
        const QString text = ShortenedText(form, Pic, Texte, box, style);
        const PlacedText placed = PlaceText(form, Pic, text, box, style, TypoAlign, TypoVAlign);
        Pic.ForeColor = placed.colour;
        TextOutA(Pic, placed.x, placed.y, text);
    });
}

void DrawCentred(Form_Main& form, Surface& Pic, const QString& Texte, const Box16& box,
                 const TextLook& style) {
    DrawText(form, Pic, Texte, box, style, QStringLiteral("center"), QStringLiteral("center"));
}

QString StripAccents(QString text) {
    for (qsizetype i = 0; i < kAccented.size(); ++i) {
        text.replace(kAccented[i], kPlain[i]);
    }
    return text;
}
