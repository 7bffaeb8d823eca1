// Shortening, placing and writing text.
#include "rendering/text.h"

#include "core/conversions.h"
#include "core/run_time_error.h"
#include "imaging/surface.h"
#include "shell/form_main.h"
#include "shell/log.h"

#include <QStringList>

#include <algorithm>

namespace {

const QString kDots = QStringLiteral("...");

// clang-format off
constexpr QStringView kAccented = u"ÀÁÂÃÄÅàáâãäåÒÓÔÕÖØòóôõöøÈÉÊËèéêëÌÍÎÏìíîïÙÚÛÜùúûüÿÑñÇç";
constexpr QStringView kPlain    = u"AAAAAAaaaaaaOOOOOOooooooEEEEeeeeIIIIiiiiUUUUuuuuyNnCc";
// clang-format on

static_assert(kAccented.size() == 53 && kPlain.size() == 53);

void LogDrawing(Form_Main& form, const QString& text, const TextBox& box, const TextStyle& style,
                const QString& align, const QString& vAlign) {
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
    WriteLog(form, QStringLiteral(" : DrawText (") + arguments.join(u',') + u')');
}

bool FitsWithDots(const Surface& surface, const QString& text, qsizetype length, Integer16 width) {
    return TextWidth(surface, text.left(length) + kDots) <= width.value();
}

// The longest beginning of a text that fits the width with the dots behind it. It is looked for by halves, as
// a name may be long and each measurement is dear. A pair of surrogates is one character.
qsizetype FittingLength(const Surface& surface, const QString& text, Integer16 width) {
    qsizetype fitting = 0;
    qsizetype tooLong = text.size();
    while (tooLong - fitting > 1) {
        const qsizetype middle = (fitting + tooLong) / 2;
        (FitsWithDots(surface, text, middle, width) ? fitting : tooLong) = middle;
    }
    const bool inPair = fitting > 0 && text[fitting - 1].isHighSurrogate();
    return inPair ? fitting - 1 : fitting;
}

// The text as it fits the width, its last characters replaced by dots. Raises 5 when not even the dots fit.
QString Shortened(const Surface& surface, const QString& text, Integer16 width) {
    if (TextWidth(surface, text) <= width.value()) {
        return text;
    }
    if (text.isEmpty() || !FitsWithDots(surface, text, 0, width)) {
        throw RunTimeError(kInvalidProcedureCall, QStringLiteral("the text box has no room for \"...\""));
    }
    return text.left(FittingLength(surface, text, width)) + kDots;
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
        throw RunTimeError(kSubscriptOutOfRange,
                           QStringLiteral("colour \"%1\" (expected red,green,blue)").arg(colour));
    }
    const auto where = [&] { return QStringLiteral("colour \"%1\"").arg(colour); };
    const int value = TellingWhere(where, [&] { return CInt16(elements[i]).value(); });
    if (value < 0) {
        throw RunTimeError(kInvalidProcedureCall,
                           QStringLiteral("colour \"%1\": %2").arg(colour, QString::number(value)));
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

} // namespace

void DrawText(Form_Main& form, Surface& Pic, const QString& Texte, const TextBox& box, const TextStyle& style,
              const QString& TypoAlign, const QString& TypoVAlign) {
    EndsProgram("DrawText", [&] { LogDrawing(form, Texte, box, style, TypoAlign, TypoVAlign); });
    DrawTextUnlogged(Pic, Texte, box, style, TypoAlign, TypoVAlign);
}

void DrawTextUnlogged(Surface& Pic, const QString& Texte, const TextBox& box, const TextStyle& style,
                      const QString& TypoAlign, const QString& TypoVAlign) {
    EndsProgram("DrawText", [&] {
        Pic.FontName = style.Typo;
        Pic.FontSize = style.TypoSize;
        const QString text = Shortened(Pic, Texte, box.Width);
        const double x = Aligned(TypoAlign.toLower(), QStringLiteral("left"), QStringLiteral("right"),
                                 box.Left, box.Width, TextWidth(Pic, text));
        const double y = Aligned(TypoVAlign.toLower(), QStringLiteral("top"), QStringLiteral("bottom"),
                                 box.Top, box.Height, TextHeight(Pic, text));
        Pic.ForeColor = Colour(style.TypoColor);
        TextOutA(Pic, CInt32(x).value(), CInt32(y).value(), text);
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
