// Drawing the covers of tracks and folders, and finding the big cover.
#include "rendering/covers.h"

#include "core/path_text.h"
#include "library/covers.h"
#include "library/folder_names.h"
#include "rendering/tag_covers.h"
#include "state/form_main.h"

namespace {

// Draws a picture file into a rectangle of both caches.
void DrawFile(Form_Main& form, const QString& path, const Box& to) {
    form.frame.ImgCover.LoadPicture_File(CoverPorts(form), path);
    form.frame.ImgCover.Render(form.frame.Picture_Cache, to.x, to.y, to.width, to.height);
    form.frame.ImgCover.Render(form.frame.Picture_CacheHilight, to.x, to.y, to.width, to.height);
}

bool DrawFolderCover(Form_Main& form, const SlotPlace& place, const QString& path) {
    if (form.settings.ShowFolderCover != u"true") {
        return false;
    }
    const FolderNames names(form.files, path);
    const QString cover = form.settings.ShowCover == u"true" ? FolderPicture(names, path) : QString();
    if (!cover.isEmpty()) {
        Box box = CoverBox(form, place);
        box.x += form.theme.ZoneList.X.value();
        box.y += form.theme.ZoneList.Y.value();
        DrawFile(form, cover, box);
        return true;
    }
    // Deliberate D-92: a "bigcover" is shown even when ShowCover is off. One would expect it to be switched
    // off with the other covers; it has a switch of its own.
    const QString big = form.settings.ShowBigCover == u"true" ? BigPicture(names, path) : QString();
    if (!big.isEmpty()) {
        DrawFile(form, big, SlotInCache(form, place));
        return true;
    }
    return false;
}

bool DrawTrackCover(Form_Main& form, const SlotPlace& place, const QString& path, const FolderNames& names) {
    if (form.settings.ShowCover != u"true") {
        return false;
    }
    const QString beside = form.settings.ShowFileCover == u"true" ? PictureBeside(names, path) : QString();
    if (!beside.isEmpty()) {
        // Deliberate D-93: the zone's corner is not added to the cover of a track, unlike that of a folder.
        // One would expect both in the same place; themes begin their zone at the corner of the screen, where
        // it makes no difference.
        DrawFile(form, beside, CoverBox(form, place));
        return true;
    }
    return form.settings.ShowMp3CoverTag == u"true" && DrawTagCover(form, CoverBox(form, place), path);
}

} // namespace

bool DrawSlotCover(Form_Main& form, const SlotPlace& place, Integer16 slot, const FolderNames& names) {
    // The entry can change while a picture loads, because pending events run.
    const QString path = form.library.InfoPath(slot);
    return form.library.InfoType(slot) == u"dir" ? DrawFolderCover(form, place, path)
                                                 : DrawTrackCover(form, place, path, names);
}

// Deliberate D-94: only one switch applies to the big cover, ShowBigCover, which the frame tests. One would
// expect those for folders, files and tags to apply as well; the big cover shows whatever is found.
void LoadBigCover(Form_Main& form, Integer16 slot) {
    const QString path = form.library.InfoPath(slot);
    const bool isFolder = form.library.InfoType(slot) == u"dir";
    const FolderNames names(form.files, isFolder ? path : FolderOfPath(path));
    QString picture;
    if (isFolder) {
        picture = FolderPicture(names, path);
    } else if (!path.isEmpty()) {
        picture = PictureBeside(names, path);
    }
    if (!picture.isEmpty()) {
        form.frame.CoverKind = 1;
        form.frame.ImgCover.LoadPicture_File(CoverPorts(form), picture);
    } else {
        form.frame.CoverKind = !isFolder && FindTagCover(form, path) ? 2 : 0;
    }
}
