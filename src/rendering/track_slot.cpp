// One slot of the track zone: cover, marks, number, label, title.
#include "rendering/track_slot.h"

#include "core/conversions.h"
#include "core/media_kind.h"
#include "core/path_text.h"
#include "core/run_time_error.h"
#include "core/text_file.h"
#include "library/create_list.h"
#include "library/folder_names.h"
#include "rendering/covers.h"
#include "rendering/slot_title.h"
#include "rendering/text.h"
#include "rendering/titles.h"
#include "state/form_main.h"

namespace {

// Takes a file's track number from the artist's place; empty when there is none.
QString TakeTrackNumber(const QString& type, TitleParts& parts) {
    if (type != u"file" || !IsNumeric(parts.Interprete)) {
        return QString();
    }
    QString number = NumberText(CDouble(parts.Interprete));
    parts.Interprete.clear();
    return number;
}

bool HoldsVideo(const QString& path, const FolderNames& names) {
    const QString ending = LastThree(path);
    const QString base = path.left(path.size() - 3);
    // Deliberate D-17: the ending of three letters never equals "mp44". One would expect "mp4"; such files
    // are not listed in the first place.
    return ending == u"avi" || names.HasFile(base + QStringLiteral("avi")) || ending == u"mpg" ||
           names.HasFile(base + QStringLiteral("mpg")) || ending == u"mp44" ||
           names.HasFile(base + QStringLiteral("mp4"));
}

// Deliberate D-18: the zone's corner is not added to the video mark. One would expect it to be added as for
// the other marks; themes begin their zone at the corner of the screen, where it makes no difference.
void DrawVideoMark(Form_Main& form, const SlotPlace& place) {
    const auto [column, row] = place;
    const int x = form.slots.ZoneListPisteHilight(column, row).X.value();
    const int y = form.slots.ZoneListPisteHilight(column, row).Y.value();
    const int width = form.slots.ZoneListPisteHilight(column, row).W.value();
    const int height = form.slots.ZoneListPisteHilight(column, row).H.value();
    form.assets.ImgZoneListVideo.Render(form.frame.Picture_Cache, x, y, width, height, x, y, width, height);
    form.assets.ImgZoneListVideo.Render(form.frame.Picture_CacheHilight, x, y, width, height, x, y, width,
                                        height);
}

void DrawNumberGround(const Form_Main& form, const LatePicture& image, Surface& target,
                      const SlotPlace& place) {
    const Box slot = SlotInCache(form, place);
    image.Render(target, slot.x, slot.y, slot.width, slot.height, slot.x - form.theme.ZoneList.X.value(),
                 slot.y - form.theme.ZoneList.Y.value(), slot.width, slot.height);
}

// Returns the box of a slot's text in the caches.
Box16 TextInZone(const Form_Main& form, const Box16& box) {
    return {box.X + form.theme.ZoneList.X, box.Y + form.theme.ZoneList.Y, box.W, box.H};
}

void DrawTrackNumber(Form_Main& form, const SlotPlace& place, const QString& number) {
    const auto [column, row] = place;
    DrawNumberGround(form, form.assets.ImgZoneListWithNumTrack, form.frame.Picture_Cache, place);
    DrawNumberGround(form, form.assets.ImgZoneListWithNumTrackHilight, form.frame.Picture_CacheHilight,
                     place);
    const Box16 box = TextInZone(form, form.slots.ZoneListPisteNumPiste(column, row));
    DrawCentred(form, form.frame.Picture_Cache, number, box, form.theme.ZoneListPisteNumPisteFont);
    DrawCentred(form, form.frame.Picture_CacheHilight, number, box,
                form.theme.ZoneListPisteNumPisteFontHilight);
}

// Returns the page letter of a column: A and B on the first pair of pages, then C and D, and so on through
// Windows-1252.
// Deliberate D-33: a letter beyond code 255 raises 5, which ends the program on the 96th page. One would
// expect labels without a letter there; the letter is computed before the label is read.
QString PageLetter(const Form_Main& form, int column) {
    const Integer16 code = form.library.CurrentPage * 2 + (64 + column);
    if (code < 0 || code > 255) {
        throw RunTimeError(
            kInvalidProcedureCall,
            QStringLiteral("page %1 of the folder needs the letter of code %2 (expected up to 255)")
                .arg(form.library.CurrentPage.value() + 1)
                .arg(code.value()));
    }
    return DecodeWindows1252(QByteArray(1, static_cast<char>(code.value())));
}

void DrawLabel(Form_Main& form, const SlotPlace& place) {
    const auto [column, row] = place;
    const QString letter = PageLetter(form, column);
    QString& kept = form.slots.ZoneListPisteNumSaisieLibele(column, row);
    if (kept.isEmpty()) {
        kept = (column == 1 ? u'A' : u'B') + QString::number(row - 1);
    }
    QString label = kept;
    label.replace(QStringLiteral("[AP]"), letter);
    const Box16 box = TextInZone(form, form.slots.ZoneListPisteNumSaisie(column, row));
    DrawCentred(form, form.frame.Picture_Cache, label, box, form.theme.ZoneListPisteNumSaisieFont);
    DrawCentred(form, form.frame.Picture_CacheHilight, label, box,
                form.theme.ZoneListPisteNumSaisieFontHilight);
}

// Returns the name of a folder's only sub-folder for the second line, without the folder's own title in it.
QString OnlyAlbum(const QString& path, const QString& title) {
    QString name = NameOfPath(path).toUpper();
    if (name == title + QStringLiteral(" - ") + title) {
        name = title;
    }
    if (name != title) {
        name = title.isEmpty() ? Trim(name) : Trim(name.remove(title));
    }
    return Trim(name.startsWith(u'-') ? name.mid(1) : name);
}

} // namespace

SlotWords WordsOfSlot(const QString& type, const QString& title) {
    TitleParts parts{CleanTitle(title, TitleEndings()), QString()};
    SplitAtDash(parts);
    const QString number = TakeTrackNumber(type, parts);
    SplitAtDash(parts);
    return {{parts.Titre.toUpper(), parts.Interprete.toUpper()}, number};
}

QString FolderSummary(Form_Main& form, const QString& path, const QString& title) {
    PointDir2(form, path);
    const QStringList& albums = form.library.Dir2.List;
    if (albums.isEmpty()) {
        return QString();
    }
    return albums.size() == 1 ? OnlyAlbum(albums.front(), title)
                              : QStringLiteral("%1 Albums").arg(albums.size()).toUpper();
}

void DrawSlot(Form_Main& form, const SlotPlace& place, Integer16 slot, const FolderNames& names) {
    const QString type = form.library.InfoType(slot);
    const QString path = form.library.InfoPath(slot);
    auto [parts, number] = WordsOfSlot(type, form.library.InfoTitre(slot));
    bool slotDrawn = DrawSlotCover(form, place, slot, names);
    if (type != u"dir" && HoldsVideo(path, names)) {
        DrawVideoMark(form, place);
    }
    if (Val(number) > 0 && !slotDrawn && form.settings.ShowTrackNum == u"true") {
        slotDrawn = true;
        DrawTrackNumber(form, place, number);
    }
    DrawLabel(form, place);
    if (parts.Interprete.isEmpty() && type == u"dir") {
        parts.Interprete = FolderSummary(form, path, parts.Titre);
    }
    DrawSlotTitle(form, place, parts, slotDrawn);
}
