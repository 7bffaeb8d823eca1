// Decoding covers from tags on demand, in the size that is needed.
#include "rendering/tag_covers.h"

#include "imaging/picture/c32bppdib.h"
#include "imaging/picture/reduced_jpeg.h"
#include "library/covers.h"
#include "rendering/geometry.h"
#include "state/form_main.h"

namespace {

// Decodes a cover for a rectangle of this size, or the whole picture for 0.
// Deliberate D-95: a PNG, a TIFF or an unknown format in a tag gives an empty picture, which still counts as
// the track's cover. One would expect a PNG to be shown or the search to continue; the box stays as the theme
// has it.
void Decode(Form_Main& form, const TagCover& cover, int width, int height, c32bppDIB& picture) {
    if (cover.isDecoded) {
        if (width == 0 || !LoadReducedJpeg(cover.bytes, width, height, picture)) {
            PictureFromStream(form.pictures, cover.bytes, picture);
        }
    }
}

ReadyKey KeyOf(const FileIdentity& identity, const QString& path, int width, int height) {
    return {path, identity, PictureSource::kTag, width, height};
}

// Returns the cover of a file in one size; isFound is false when the file is gone or has none.
ReadyPicture ReadyCover(Form_Main& form, const ReadyKey& key) {
    if (const ReadyPicture* const kept = form.frame.readyCovers.Find(key)) {
        return *kept;
    }
    ReadyPicture made;
    if (const auto cover = SearchTag(form, key.path)) {
        c32bppDIB picture;
        Decode(form, *cover, key.width, key.height, picture);
        made = {true, MakeReady(picture, key.width, key.height)};
    }
    form.frame.readyCovers.Put(key, made);
    return made;
}

void HoldLate(Form_Main& form, const QString& path, const FileIdentity& identity) {
    form.frame.tmpCoverSource = {path, identity, false};
}

} // namespace

PicturePorts CoverPorts(Form_Main& form) {
    return {form.files, form.zlib, form.pump, form.pictures};
}

Box CoverBox(const Form_Main& form, const SlotPlace& place) {
    return BoxOf(form.slots.ZoneListPisteCover(place.column, place.row));
}

bool FindTagCover(Form_Main& form, const QString& path) {
    const auto identity = form.files.Identity(path);
    if (!identity || !SearchTag(form, path)) {
        return false;
    }
    HoldLate(form, path, *identity);
    return true;
}

bool DrawTagCover(Form_Main& form, const Box& to, const QString& path) {
    const auto identity = form.files.Identity(path);
    // A rectangle of size 0 or too large to be kept is drawn from the whole picture. The result of the search
    // counts in any case.
    if (!identity || !MayBeReady(to.width, to.height)) {
        const bool isFound = FindTagCover(form, path);
        if (isFound) {
            DrawTmpCover(form, form.frame.Picture_Cache, to);
            DrawTmpCover(form, form.frame.Picture_CacheHilight, to);
        }
        return isFound;
    }
    const ReadyPicture cover = ReadyCover(form, KeyOf(*identity, path, to.width, to.height));
    if (!cover.isFound) {
        return false;
    }
    HoldLate(form, path, *identity);
    DrawReady(cover, form.frame.Picture_Cache, to.x, to.y);
    DrawReady(cover, form.frame.Picture_CacheHilight, to.x, to.y);
    return true;
}

void DrawTmpCover(Form_Main& form, Surface& target, const Box& to) {
    const LateTagPicture& source = form.frame.tmpCoverSource;
    const bool isSmooth = target.stretchMode == kStretchHalftone;
    if (!source.path.isEmpty() && isSmooth && MayBeReady(to.width, to.height)) {
        DrawReady(ReadyCover(form, KeyOf(source.identity, source.path, to.width, to.height)), target, to.x,
                  to.y);
        return;
    }
    SettleTmpCover(form);
    const Surface& cover = form.frame.Picture_TmpCover;
    StretchBlt(target, to, cover, {0, 0, cover.Width(), cover.Height()});
}

void SettleTmpCover(Form_Main& form) {
    if (form.frame.tmpCoverSource.path.isEmpty() || form.frame.tmpCoverSource.isSettled) {
        return;
    }
    form.frame.tmpCoverSource.isSettled = true;
    c32bppDIB picture;
    if (const auto cover = SearchTag(form, form.frame.tmpCoverSource.path)) {
        Decode(form, *cover, 0, 0, picture);
    }
    Resize(form.frame.Picture_TmpCover, picture.Width(), picture.Height());
    picture.Render(form.frame.Picture_TmpCover, 0, 0);
}
