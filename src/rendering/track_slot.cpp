// One slot of the track zone: cover, marks, number, label, title.
#include "rendering/track_slot.h"

#include "core/conversions.h"
#include "core/media_kind.h"
#include "core/path_text.h"
#include "core/run_time_error.h"
#include "core/text_file.h"
#include "library/covers.h"
#include "library/create_list.h"
#include "library/folder_names.h"
#include "rendering/slot_title.h"
#include "rendering/titles.h"
#include "shell/form_main.h"

namespace {

// A file's own track number in front of its artist; empty when there is none.
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
    // Deliberate D-17: the ending of three letters is compared with "mp44" in vain. One expects "mp4"; such
    // files are not listed in the first place.
    return ending == u"avi" || names.HasFile(base + QStringLiteral("avi")) || ending == u"mpg" ||
           names.HasFile(base + QStringLiteral("mpg")) || ending == u"mp44" ||
           names.HasFile(base + QStringLiteral("mp4"));
}

// Deliberate D-18: the zone's corner is not added to the video mark. One expects it as with the other marks;
// themes place their zone at the corner, where it makes no difference.
void DrawVideoMark(Form_Main& form, const SlotPlace& place) {
    const auto [column, row] = place;
    const int x = form.ZoneListPisteHilightX(column, row).value();
    const int y = form.ZoneListPisteHilightY(column, row).value();
    const int width = form.ZoneListPisteHilightW(column, row).value();
    const int height = form.ZoneListPisteHilightH(column, row).value();
    form.ImgZoneListVideo.Render(form.Picture_Cache, x, y, width, height, x, y, width, height);
    form.ImgZoneListVideo.Render(form.Picture_CacheHilight, x, y, width, height, x, y, width, height);
}

void DrawNumberGround(const Form_Main& form, const LatePicture& image, Surface& target,
                      const SlotPlace& place) {
    const Box slot = SlotInCache(form, place);
    image.Render(target, slot.x, slot.y, slot.width, slot.height, slot.x - form.ZoneListX.value(),
                 slot.y - form.ZoneListY.value(), slot.width, slot.height);
}

void DrawTrackNumber(Form_Main& form, const SlotPlace& place, const QString& number) {
    const auto [column, row] = place;
    DrawNumberGround(form, form.ImgZoneListWithNumTrack, form.Picture_Cache, place);
    DrawNumberGround(form, form.ImgZoneListWithNumTrackHilight, form.Picture_CacheHilight, place);
    const TextBox box{form.ZoneListPisteNumPisteX(column, row) + form.ZoneListX,
                      form.ZoneListPisteNumPisteY(column, row) + form.ZoneListY,
                      form.ZoneListPisteNumPisteW(column, row), form.ZoneListPisteNumPisteH(column, row)};
    DrawCentred(form, form.Picture_Cache, number, box,
                {form.ZoneListPisteNumPisteFont, form.ZoneListPisteNumPisteFontSize,
                 form.ZoneListPisteNumPisteFontColor});
    DrawCentred(form, form.Picture_CacheHilight, number, box,
                {form.ZoneListPisteNumPisteFontHilight, form.ZoneListPisteNumPisteFontSizeHilight,
                 form.ZoneListPisteNumPisteFontColorHilight});
}

// The letter of the page in a column: A and B on the first pair of pages, then C and D, and so on through the
// Windows-1252 set.
// Deliberate D-33: a letter beyond code 255 raises 5, which ends the program on the 96th page. One expects
// labels without a letter there; the letter is made before the label is looked at.
QString PageLetter(const Form_Main& form, int column) {
    const Integer16 code = form.CurrentPage * 2 + (64 + column);
    if (code < 0 || code > 255) {
        throw RunTimeError(
            kInvalidProcedureCall,
            QStringLiteral("page %1 of the folder needs the letter of code %2 (expected up to 255)")
                .arg(form.CurrentPage.value() + 1)
                .arg(code.value()));
    }
    return DecodeWindows1252(QByteArray(1, static_cast<char>(code.value())));
}

void DrawLabel(Form_Main& form, const SlotPlace& place) {
    const auto [column, row] = place;
    const QString letter = PageLetter(form, column);
    QString& kept = form.ZoneListPisteNumSaisieLibele(column, row);
    if (kept.isEmpty()) {
        kept = (column == 1 ? u'A' : u'B') + QString::number(row - 1);
    }
    QString label = kept;
    label.replace(QStringLiteral("[AP]"), letter);
    const TextBox box{form.ZoneListPisteNumSaisieX(column, row) + form.ZoneListX,
                      form.ZoneListPisteNumSaisieY(column, row) + form.ZoneListY,
                      form.ZoneListPisteNumSaisieW(column, row), form.ZoneListPisteNumSaisieH(column, row)};
    DrawCentred(form, form.Picture_Cache, label, box,
                {form.ZoneListPisteNumSaisieFont, form.ZoneListPisteNumSaisieFontSize,
                 form.ZoneListPisteNumSaisieFontColor});
    DrawCentred(form, form.Picture_CacheHilight, label, box,
                {form.ZoneListPisteNumSaisieFontHilight, form.ZoneListPisteNumSaisieFontSizeHilight,
                 form.ZoneListPisteNumSaisieFontColorHilight});
}

// The name of a folder's only sub-folder as a second line, without what it repeats of the folder's own title.
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

// What a folder holds, as the second line of its slot.
QString FolderSummary(Form_Main& form, const QString& path, const QString& title) {
    PointDir2(form, path);
    const QStringList& albums = form.Dir2.List;
    if (albums.isEmpty()) {
        return QString();
    }
    return albums.size() == 1 ? OnlyAlbum(albums.front(), title)
                              : QStringLiteral("%1 Albums").arg(albums.size()).toUpper();
}

} // namespace

void DrawSlot(Form_Main& form, const SlotPlace& place, Integer16 slot, const FolderNames& names) {
    const QString type = form.InfoType(slot);
    const QString path = form.InfoPath(slot);
    TitleParts parts{CleanTitle(form.InfoTitre(slot), TitleEndings()), QString()};
    SplitAtDash(parts);
    const QString number = TakeTrackNumber(type, parts);
    SplitAtDash(parts);
    parts = {parts.Titre.toUpper(), parts.Interprete.toUpper()};
    bool slotDrawn = DrawSlotCover(form, place, slot, names);
    if (type != u"dir" && HoldsVideo(path, names)) {
        DrawVideoMark(form, place);
    }
    if (Val(number) > 0 && !slotDrawn && form.ShowTrackNum == u"true") {
        slotDrawn = true;
        DrawTrackNumber(form, place, number);
    }
    DrawLabel(form, place);
    if (parts.Interprete.isEmpty() && type == u"dir") {
        parts.Interprete = FolderSummary(form, path, parts.Titre);
    }
    DrawSlotTitle(form, place, parts, slotDrawn);
}
