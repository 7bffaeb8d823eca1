// Covers in their order: files beside the music, then the pictures inside its tags.
#include "library/covers.h"

#include "core/path_text.h"
#include "library/folder_names.h"
#include "library/tag_covers.h"
#include "shell/form_main.h"

#include <algorithm>
#include <array>

namespace {

// Folder pictures, the one that is preferred first.
constexpr std::array<QStringView, 2> kFolderPictures = {u"folder.jpg", u"folder.png"};
constexpr std::array<QStringView, 2> kBigPictures = {u"bigcover.jpg", u"bigcover.png"};

// The first of these files that a folder has; empty when it has none.
QString FindFirst(const FolderNames& names, const QString& folder,
                  const std::array<QStringView, 2>& pictures) {
    for (const QStringView picture : pictures) {
        QString found = names.FindFile(PathIn(folder, picture.toString()));
        if (!found.isEmpty()) {
            return found;
        }
    }
    return QString();
}

// The picture beside a track.
// Deliberate D-91: three characters are cut whatever the length of the ending, so that x.flac is looked for
// as x.fjpg. One expects x.jpg; folders hold pictures for their mp3 files by that rule.
QString PictureBeside(const FolderNames& names, const QString& path) {
    return names.FindFile(path.left(std::max<qsizetype>(0, path.size() - 3)) + QStringLiteral("jpg"));
}

// Draws a picture file into a rectangle of both caches.
void DrawFile(Form_Main& form, const QString& path, const Box& to) {
    form.ImgCover.LoadPicture_File(CoverPorts(form), path);
    form.ImgCover.Render(form.Picture_Cache, to.x, to.y, to.width, to.height);
    form.ImgCover.Render(form.Picture_CacheHilight, to.x, to.y, to.width, to.height);
}

bool DrawFolderCover(Form_Main& form, const SlotPlace& place, const QString& path) {
    if (form.ShowFolderCover != u"true") {
        return false;
    }
    const FolderNames names(form.files, path);
    const QString cover = form.ShowCover == u"true" ? FindFirst(names, path, kFolderPictures) : QString();
    if (!cover.isEmpty()) {
        Box box = CoverBox(form, place);
        box.x += form.ZoneListX.value();
        box.y += form.ZoneListY.value();
        DrawFile(form, cover, box);
        return true;
    }
    // Deliberate D-92: a "bigcover" is shown whatever ShowCover says. One expects it to be switched off with
    // the other covers; it has a switch of its own.
    const QString big = form.ShowBigCover == u"true" ? FindFirst(names, path, kBigPictures) : QString();
    if (!big.isEmpty()) {
        DrawFile(form, big, SlotInCache(form, place));
        return true;
    }
    return false;
}

bool DrawTrackCover(Form_Main& form, const SlotPlace& place, const QString& path, const FolderNames& names) {
    if (form.ShowCover != u"true") {
        return false;
    }
    const QString beside = form.ShowFileCover == u"true" ? PictureBeside(names, path) : QString();
    if (!beside.isEmpty()) {
        // Deliberate D-93: the zone's corner is not added to the cover of a track, as it is to that of a
        // folder. One expects both at the same place; themes begin their zone at the corner, where it makes
        // no difference.
        DrawFile(form, beside, CoverBox(form, place));
        return true;
    }
    return form.ShowMp3CoverTag == u"true" && DrawTagCover(form, CoverBox(form, place), path);
}

} // namespace

bool DrawSlotCover(Form_Main& form, const SlotPlace& place, Integer16 slot, const FolderNames& names) {
    // The entry may change while a picture lets events through.
    const QString path = form.InfoPath(slot);
    return form.InfoType(slot) == u"dir" ? DrawFolderCover(form, place, path)
                                         : DrawTrackCover(form, place, path, names);
}

// Deliberate D-94: of the switches only ShowBigCover, in the frame, counts for the big cover. One expects
// those for folders, files and tags to count as well; the big cover shows what there is.
void LoadBigCover(Form_Main& form, Integer16 slot) {
    const QString path = form.InfoPath(slot);
    const bool isFolder = form.InfoType(slot) == u"dir";
    const FolderNames names(form.files, isFolder ? path : FolderOfPath(path));
    QString picture;
    if (isFolder) {
        picture = FindFirst(names, path, kFolderPictures);
    } else if (!path.isEmpty()) {
        picture = PictureBeside(names, path);
    }
    if (!picture.isEmpty()) {
        form.CoverKind = 1;
        form.ImgCover.LoadPicture_File(CoverPorts(form), picture);
    } else {
        form.CoverKind = !isFolder && FindTagCover(form, path) ? 2 : 0;
    }
}
