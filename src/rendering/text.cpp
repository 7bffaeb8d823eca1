// Shortening, placing and writing text.
#include "rendering/text.h"

#include "core/conversions.h"
#include "core/run_time_error.h"
#include "imaging/surface.h"
#include "shell/form_main.h"
#include "shell/log.h"
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

// The next shorter length that a text may be cut to. A surrogate pair is one character.
qsizetype ShorterLength(const QString& text, qsizetype length) {
    const bool isPair = length > 1 && text[length - 1].isLowSurrogate() && text[length - 2].isHighSurrogate();
    return length - (isPair ? 2 : 1);
}

// How many characters in front of a cut can change their width by it. Letters take other forms, ligatures and
// pairs come apart. The shaper matches at most 64 glyphs at a time; ligatures of plain Latin letters are
// short.
qsizetype ChangedByCut(const QString& text) {
    constexpr char16_t kFirstMark = 0x300;
    const bool isPlain =
        std::all_of(text.begin(), text.end(), [](QChar c) { return c.unicode() < kFirstMark; });
    return isPlain ? 16 : 64;
}

// A length below which every fitting length is; the text's size when that is not proved of a smaller one.
// A beginning that is too wide by itself proves that no cut so far after it that it cannot change the
// beginning's width, or further, can fit.
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

// Binary search below `limit`, right where widths grow with the length. 0 when nothing fits.
qsizetype SearchedLength(const Surface& surface, const QString& text, Integer16 width, qsizetype limit) {
    qsizetype fitting = 0;
    while (limit - fitting > 1) {
        const qsizetype middle = (fitting + limit) / 2;
        (FitsWithDots(surface, text, middle, width) ? fitting : limit) = middle;
    }
    const bool inPair = fitting > 0 && text[fitting - 1].isHighSurrogate() && text[fitting].isLowSurrogate();
    return inPair ? fitting - 1 : fitting;
}

// The first length below `limit` that fits the width with the dots after it, tried one by one from the
// longest: a longer text can be narrower. 0 when nothing fits.
qsizetype FittingLength(const Surface& surface, const QString& text, Integer16 width, qsizetype limit) {
    // Thousands of characters without a width can fit a box. Measuring marks takes a time that grows with the
    // square of their number, so after this much work the rest is searched.
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

// Where an extent begins in a room of the box: at its start, at its end, or in the middle.
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

QRgb Colour(const QString& text) {
    // An empty text has no element at all.
    const QStringList elements = text.isEmpty() ? QStringList() : text.split(u',');
    const int red = ColourElement(elements, 0, text);
    const int green = ColourElement(elements, 1, text);
    const int blue = ColourElement(elements, 2, text);
    return qRgb(red, green, blue);
}

// Where the colour of a style is in the theme.
QString PlaceOfColour(Form_Main& form, const TextStyle& style) {
    return PlacesOfColour(form, style.Typo, style.TypoColor) + QStringLiteral(" (expected red,green,blue)");
}

// A text in its box, and where its style is in the theme.
QString PlaceOfText(Form_Main& form, const QString& text, const TextBox& box, const TextStyle& style) {
    return QStringLiteral(
               "the text \"%1\" in a box of %2x%3 at %4,%5, font \"%6\" of %7 points, colour of %8")
        .arg(text, QString::number(box.Width.value()), QString::number(box.Height.value()),
             QString::number(box.Left.value()), QString::number(box.Top.value()), style.Typo,
             QString::number(style.TypoSize.value()), PlacesOfColour(form, style.Typo, style.TypoColor));
}

} // namespace

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

QString ShortenedText(Form_Main& form, const Surface& surface, const QString& text, const TextBox& box,
                      const TextStyle& style) {
    const auto inBox = [&] { return PlaceOfText(form, text, box, style); };
    return TellingWhere(inBox, [&] { return ShortenedText(surface, text, box.Width); });
}

QString DrawTextLine(const QString& text, const TextBox& box, const TextStyle& style, const QString& align,
                     const QString& vAlign) {
    const QStringList arguments = {text,
                                   QString::number(box.Left.value()),
                                   QString::number(box.Top.value()),
                                   QString::number(box.Width.value()),
                                   QString::number(box.Height.value()),
                                   style.Typo,
                                   QString::number(style.TypoSize.value()),
                                   style.TypoColor,
                                   align,
                                   vAlign};
    return QStringLiteral(" : DrawText (") + arguments.join(u',') + u')';
}

PlacedText PlaceText(Form_Main& form, const Surface& surface, const QString& text, const TextBox& box,
                     const TextStyle& style, const QString& align, const QString& vAlign) {
    const QString left = QStringLiteral("left");
    const QString across = align.toLower();
    const int width = across == left ? 0 : TextWidth(surface, text);
    const auto inBox = [&] { return PlaceOfText(form, text, box, style); };
    const double x = TellingWhere(
        inBox, [&] { return Aligned(across, left, QStringLiteral("right"), box.Left, box.Width, width); });
    const double y = TellingWhere(inBox, [&] {
        return Aligned(vAlign.toLower(), QStringLiteral("top"), QStringLiteral("bottom"), box.Top, box.Height,
                       TextHeight(surface, text));
    });
    const auto inTheme = [&] { return PlaceOfColour(form, style); };
    const QRgb colour = TellingWhere(inTheme, [&] { return Colour(style.TypoColor); });
    return {CInt32(x).value(), CInt32(y).value(), colour};
}

void DrawText(Form_Main& form, Surface& Pic, const QString& Texte, const TextBox& box, const TextStyle& style,
              const QString& TypoAlign, const QString& TypoVAlign) {
    EndsProgram("DrawText", [&] { WriteLog(form, DrawTextLine(Texte, box, style, TypoAlign, TypoVAlign)); });
    DrawTextUnlogged(form, Pic, Texte, box, style, TypoAlign, TypoVAlign);
}

void DrawTextUnlogged(Form_Main& form, Surface& Pic, const QString& Texte, const TextBox& box,
                      const TextStyle& style, const QString& TypoAlign, const QString& TypoVAlign) {
    EndsProgram("DrawText", [&] {
        Pic.FontName = style.Typo;
        Pic.FontSize = style.TypoSize;
        const QString text = ShortenedText(form, Pic, Texte, box, style);
        const PlacedText placed = PlaceText(form, Pic, text, box, style, TypoAlign, TypoVAlign);
        Pic.ForeColor = placed.colour;
        TextOutA(Pic, placed.x, placed.y, text);
    });
}

void DrawCentred(Form_Main& form, Surface& Pic, const QString& Texte, const TextBox& box,
                 const TextStyle& style) {
    DrawText(form, Pic, Texte, box, style, QStringLiteral("center"), QStringLiteral("center"));
}

QString StripAccents(QString text) {
    for (qsizetype i = 0; i < kAccented.size(); ++i) {
        text.replace(kAccented[i], kPlain[i]);
    }
    return text;
}
