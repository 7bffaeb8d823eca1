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

// Cuts the last character; a pair of surrogates is one.
void CutLast(QString& text) {
    if (text.isEmpty()) {
        throw RunTimeError(kInvalidProcedureCall, QStringLiteral("the text box has no room for \"...\""));
    }
    const bool pair =
        text.size() >= 2 && text.back().isLowSurrogate() && text[text.size() - 2].isHighSurrogate();
    text.chop(pair ? 2 : 1);
}

// The text as it fits the width.
QString Shortened(const Surface& surface, const QString& text, Integer16 width) {
    QString cut = text;
    int needed = TextWidth(surface, cut);
    while (needed > width.value()) {
        CutLast(cut);
        needed = TextWidth(surface, cut + kDots);
    }
    return cut == text ? text : cut + kDots;
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
        throw RunTimeError(kInvalidProcedureCall, QStringLiteral("colour \"%1\": %2").arg(colour).arg(value));
    }
    return std::min(value, 255);
}

QRgb Colour(const QString& text) {
    const QStringList elements = text.split(u',');
    return qRgb(ColourElement(elements, 0, text), ColourElement(elements, 1, text),
                ColourElement(elements, 2, text));
}

} // namespace

void DrawText(Form_Main& form, Surface& Pic, const QString& Texte, const TextBox& box, const TextStyle& style,
              const QString& TypoAlign, const QString& TypoVAlign) {
    EndsProgram("DrawText", [&] {
        LogDrawing(form, Texte, box, style, TypoAlign, TypoVAlign);
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
