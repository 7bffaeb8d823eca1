// Title and artist of a slot on one, two or three lines.
#include "rendering/slot_title.h"

#include "core/conversions.h"
#include "core/run_time_error.h"
#include "rendering/text.h"
#include "state/form_main.h"

namespace {

// The text styles of one look, and the cache that it is painted on.
struct Look {
    Surface& target;
    TextLook title;
    TextLook artist;
};

// Returns the common box of the lines, in pixels of the track zone.
Box16 BoxOfTitle(const Form_Main& form, const SlotPlace& place, bool slotDrawn) {
    const Box16& title = form.slots.ZoneListPisteTitre(place.column, place.row);
    if (slotDrawn) {
        return title;
    }
    const Integer16 left = form.slots.ZoneListPisteCover(place.column, place.row).X;
    return {left, title.Y, title.X - left + title.W, title.H};
}

// Writes a line whose box begins at `y` of the zone.
void WriteLine(Form_Main& form, Surface& target, const Box16& box, Integer16 y, const QString& text,
               const TextLook& style) {
    DrawCentred(form, target, text, {box.X + form.theme.ZoneList.X, y + form.theme.ZoneList.Y, box.W, box.H},
                style);
}

bool Fits(Form_Main& form, const QString& title, Integer16 width) {
    form.frame.Picture_Cache.FontName = form.theme.ZoneListPisteTitreTitreFont.Font;
    form.frame.Picture_Cache.FontSize = form.theme.ZoneListPisteTitreTitreFont.Size;
    return TextWidth(form.frame.Picture_Cache, title) <= width.value();
}

void WriteTwoLines(Form_Main& form, const Look& look, const Box16& box, const TitleParts& parts) {
    const Integer16 lineHeight = look.title.Size + 5;
    const Integer16 y = CInt16(box.Y.value() - lineHeight.value() / 2.0);
    WriteLine(form, look.target, box, y, parts.Titre, look.title);
    WriteLine(form, look.target, box, y + lineHeight, parts.Interprete, look.artist);
}

struct BrokenTitle {
    QString first;
    QString second;
};

// Breaks a title at the last blank of the part that fits.
// Deliberate D-32: a first word that is wider than its box raises 5, which ends the program. One would expect
// a break anywhere; titles are broken only at blanks.
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

void WriteThreeLines(Form_Main& form, const Look& look, const Box16& box, const BrokenTitle& title,
                     const QString& artist) {
    const Integer16 lineHeight = look.title.Size + 2;
    WriteLine(form, look.target, box, box.Y - lineHeight, title.first, look.title);
    WriteLine(form, look.target, box, box.Y, title.second, look.title);
    WriteLine(form, look.target, box, box.Y + lineHeight, artist, look.artist);
}

// Writes a title without an artist, at double size when it is short and ShowBigtitle is on.
void WriteOneLine(Form_Main& form, Look look, const Box16& box, const QString& title) {
    constexpr int kShortTitle = 8;
    if (title.size() < kShortTitle && form.settings.ShowBigtitle.toLower() == u"true") {
        look.title.Size = look.title.Size * 2;
    }
    WriteLine(form, look.target, box, box.Y, title, look.title);
}

Look PlainLook(Form_Main& form) {
    return {form.frame.Picture_Cache, form.theme.ZoneListPisteTitreTitreFont,
            form.theme.ZoneListPisteTitreInterpreteFont};
}

Look HilightLook(Form_Main& form) {
    return {form.frame.Picture_CacheHilight, form.theme.ZoneListPisteTitreTitreFontHilight,
            form.theme.ZoneListPisteTitreInterpreteFontHilight};
}

} // namespace

void DrawSlotTitle(Form_Main& form, const SlotPlace& place, const TitleParts& parts, bool slotDrawn) {
    const Box16 box = BoxOfTitle(form, place, slotDrawn);
    const Look looks[] = {PlainLook(form), HilightLook(form)};
    const Integer16 fitWidth = form.slots.ZoneListPisteTitre(place.column, place.row).W;
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

// A title that fits as far as its first blank can be broken there or later, so only others are shortened
// letter by letter.
bool StopsAtTitle(Form_Main& form, const TitleParts& parts, Integer16 width) {
    if (parts.Interprete.isEmpty() || Fits(form, parts.Titre, width)) {
        return false;
    }
    const qsizetype blank = parts.Titre.indexOf(u' ');
    if (blank >= 0 && Fits(form, parts.Titre.left(blank + 1), width)) {
        return false;
    }
    try {
        Break(form, parts.Titre, width);
    } catch (const RunTimeError&) {
        return true;
    }
    return false;
}
