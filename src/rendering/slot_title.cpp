// Title and artist of a slot on one, two or three lines.
#include "rendering/slot_title.h"

#include "core/conversions.h"
#include "core/run_time_error.h"
#include "rendering/text.h"
#include "shell/form_main.h"

namespace {

// The styles of one of the two looks, and where it is painted.
struct Look {
    Surface& target;
    TextStyle title;
    TextStyle artist;
};

// The lines' common box, in pixels of the track zone.
struct TitleBox {
    Integer16 x;
    Integer16 y;
    Integer16 width;
    Integer16 height;
};

TitleBox BoxOfTitle(const Form_Main& form, const SlotPlace& place, bool slotDrawn) {
    const auto [column, row] = place;
    const Integer16 titleX = form.ZoneListPisteTitreX(column, row);
    const Integer16 titleWidth = form.ZoneListPisteTitreW(column, row);
    const Integer16 coverX = form.ZoneListPisteCoverX(column, row);
    const Integer16 x = slotDrawn ? titleX : coverX;
    const Integer16 width = slotDrawn ? titleWidth : titleX - coverX + titleWidth;
    return {x, form.ZoneListPisteTitreY(column, row), width, form.ZoneListPisteTitreH(column, row)};
}

// Writes a line whose box begins at `y` of the zone.
void WriteLine(Form_Main& form, Surface& target, const TitleBox& box, Integer16 y, const QString& text,
               const TextStyle& style) {
    DrawCentred(form, target, text, {box.x + form.ZoneListX, y + form.ZoneListY, box.width, box.height},
                style);
}

bool Fits(Form_Main& form, const QString& title, Integer16 width) {
    form.Picture_Cache.FontName = form.ZoneListPisteTitreTitreFont;
    form.Picture_Cache.FontSize = form.ZoneListPisteTitreTitreFontSize;
    return TextWidth(form.Picture_Cache, title) <= width.value();
}

void WriteTwoLines(Form_Main& form, const Look& look, const TitleBox& box, const TitleParts& parts) {
    const Integer16 lineHeight = look.title.TypoSize + 5;
    const Integer16 y = CInt16(box.y.value() - lineHeight.value() / 2.0);
    WriteLine(form, look.target, box, y, parts.Titre, look.title);
    WriteLine(form, look.target, box, y + lineHeight, parts.Interprete, look.artist);
}

struct BrokenTitle {
    QString first;
    QString second;
};

// Breaks a title at the last blank of what fits.
// Deliberate D-32: one word that is wider than its box raises 5, which ends the program. One expects a break
// anywhere; the break is looked for at blanks alone.
BrokenTitle Break(Form_Main& form, const QString& title, Integer16 width) {
    QString fitting = title;
    while (!fitting.isEmpty() && !Fits(form, fitting, width)) {
        fitting.chop(1);
    }
    const qsizetype blank = fitting.lastIndexOf(u' ');
    if (blank < 0) {
        throw RunTimeError(
            kInvalidProcedureCall,
            QStringLiteral("the title \"%1\" is one word that is wider than its box").arg(title));
    }
    const QString first = Trim(fitting.left(blank + 1));
    return {first, Trim(title.mid(first.size()))};
}

void WriteThreeLines(Form_Main& form, const Look& look, const TitleBox& box, const BrokenTitle& title,
                     const QString& artist) {
    const Integer16 lineHeight = look.title.TypoSize + 2;
    WriteLine(form, look.target, box, box.y - lineHeight, title.first, look.title);
    WriteLine(form, look.target, box, box.y, title.second, look.title);
    WriteLine(form, look.target, box, box.y + lineHeight, artist, look.artist);
}

// A title alone, at double size when it is short and the folder asks for it.
void WriteOneLine(Form_Main& form, Look look, const TitleBox& box, const QString& title) {
    constexpr int kShortTitle = 8;
    if (title.size() < kShortTitle && form.ShowBigtitle.toLower() == u"true") {
        look.title.TypoSize = look.title.TypoSize * 2;
    }
    WriteLine(form, look.target, box, box.y, title, look.title);
}

Look PlainLook(Form_Main& form) {
    return {form.Picture_Cache,
            {form.ZoneListPisteTitreTitreFont, form.ZoneListPisteTitreTitreFontSize,
             form.ZoneListPisteTitreTitreFontColor},
            {form.ZoneListPisteTitreInterpreteFont, form.ZoneListPisteTitreInterpreteFontSize,
             form.ZoneListPisteTitreInterpreteFontColor}};
}

Look HilightLook(Form_Main& form) {
    return {form.Picture_CacheHilight,
            {form.ZoneListPisteTitreTitreFontHilight, form.ZoneListPisteTitreTitreFontSizeHilight,
             form.ZoneListPisteTitreTitreFontColorHilight},
            {form.ZoneListPisteTitreInterpreteFontHilight, form.ZoneListPisteTitreInterpreteFontSizeHilight,
             form.ZoneListPisteTitreInterpreteFontColorHilight}};
}

} // namespace

void DrawSlotTitle(Form_Main& form, const SlotPlace& place, const TitleParts& parts, bool slotDrawn) {
    const TitleBox box = BoxOfTitle(form, place, slotDrawn);
    const Look looks[] = {PlainLook(form), HilightLook(form)};
    const Integer16 fitWidth = form.ZoneListPisteTitreW(place.column, place.row);
    if (parts.Interprete.isEmpty()) {
        for (const Look& look : looks) {
            WriteOneLine(form, look, box, parts.Titre);
        }
    } else if (Fits(form, parts.Titre, fitWidth)) {
        for (const Look& look : looks) {
            WriteTwoLines(form, look, box, parts);
        }
    } else {
        const BrokenTitle title = Break(form, parts.Titre, fitWidth);
        for (const Look& look : looks) {
            WriteThreeLines(form, look, box, title, parts.Interprete);
        }
    }
}
