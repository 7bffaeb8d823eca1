// Searching a tag for its cover, and decoding it when and as large as it is needed.
#include "library/tag_covers.h"

#include "imaging/c32bppdib.h"
#include "imaging/reduced_jpeg.h"
#include "rendering/geometry.h"
#include "shell/form_main.h"

#include <array>
#include <optional>
#include <span>

namespace {

// Kinds of pictures by the text of their format; the first row that is found in it counts.
struct KindRow {
    const char16_t* text;
    int kind;
};
// clang-format off
constexpr std::array kKinds = {
    KindRow{u"JPG",      1},
    KindRow{u"JPEG",     1},
    KindRow{u"PNG",      4},
    KindRow{u"BMP",      0},
    KindRow{u"BITMAP",   0},
    KindRow{u"GIF",      2},
    KindRow{u"METAFILE", 3},
    KindRow{u"WMF",      3},
    KindRow{u"TIF",      5},
};
// clang-format on
constexpr int kUnknownKind = 6;
// Kinds below this one are decoded.
constexpr int kFirstUndecoded = 4;

// Picture types that are covers.
constexpr int kOther = 0;
constexpr int kFrontCover = 3;

int KindOf(const QString& format) {
    for (const KindRow& row : kKinds) {
        if (format.contains(QStringView(row.text), Qt::CaseInsensitive)) {
            return row.kind;
        }
    }
    return kUnknownKind;
}

// A cover in a tag, as long as the tag is held.
struct TagCover {
    std::span<const std::uint8_t> bytes;
    int kind = kUnknownKind;
};

// The first acceptable picture: its bytes, or nothing when they cannot be had.
std::optional<TagCover> Search(Form_Main& form, const QString& path) {
    cTaggedImages& tag = form.TaggedImages;
    const int count = tag.LoadTagged_Images(form.files, path);
    for (int i = 1; i <= count; ++i) {
        const int kind = KindOf(tag.ImageType(i));
        const int category = tag.ImageCategory(i);
        if (category == kOther || category == kFrontCover) {
            const auto bytes = tag.ExtractImageData(i);
            return bytes ? std::optional(TagCover{*bytes, kind}) : std::nullopt;
        }
    }
    return std::nullopt;
}

// Decodes a cover for a rectangle of these sizes; the whole picture for 0.
// Deliberate D-95: a PNG or TIFF in a tag, and one of an unknown format, stays empty, and still counts as the
// track's cover. One expects a PNG to be shown, or the search to go on. The box stays as the theme has it.
void Decode(Form_Main& form, const TagCover& cover, int width, int height, c32bppDIB& picture) {
    if (cover.kind < kFirstUndecoded) {
        if (width == 0 || !LoadReducedJpeg(cover.bytes, width, height, picture)) {
            PictureFromStream(form.pictures, cover.bytes, picture);
        }
    }
}

ReadyKey KeyOf(const FileIdentity& identity, const QString& path, int width, int height) {
    return {path, identity, PictureSource::kTag, width, height};
}

// The cover of a file in one size; without one when the file has gone.
ReadyPicture ReadyCover(Form_Main& form, const ReadyKey& key) {
    if (const ReadyPicture* const kept = form.readyCovers.Find(key)) {
        return *kept;
    }
    ReadyPicture made;
    if (const auto cover = Search(form, key.path)) {
        c32bppDIB picture;
        Decode(form, *cover, key.width, key.height, picture);
        made = {true, MakeReady(picture, key.width, key.height)};
    }
    form.readyCovers.Put(key, made);
    return made;
}

void HoldLate(Form_Main& form, const QString& path, const FileIdentity& identity) {
    form.tmpCoverSource = {path, identity, false};
}

} // namespace

PicturePorts CoverPorts(Form_Main& form) {
    return {form.files, form.zlib, form.pump, form.pictures};
}

Box CoverBox(const Form_Main& form, const SlotPlace& place) {
    const auto [column, row] = place;
    return {form.ZoneListPisteCoverX(column, row).value(), form.ZoneListPisteCoverY(column, row).value(),
            form.ZoneListPisteCoverW(column, row).value(), form.ZoneListPisteCoverH(column, row).value()};
}

bool FindTagCover(Form_Main& form, const QString& path) {
    const auto identity = form.files.Identity(path);
    if (!identity || !Search(form, path)) {
        return false;
    }
    HoldLate(form, path, *identity);
    return true;
}

bool DrawTagCover(Form_Main& form, const Box& to, const QString& path) {
    const auto identity = form.files.Identity(path);
    // A rectangle of no size shows nothing, but the search counts.
    if (!identity || !MayBeReady(to.width, to.height)) {
        const bool isFound = FindTagCover(form, path);
        if (isFound) {
            DrawTmpCover(form, form.Picture_Cache, to);
            DrawTmpCover(form, form.Picture_CacheHilight, to);
        }
        return isFound;
    }
    const ReadyPicture cover = ReadyCover(form, KeyOf(*identity, path, to.width, to.height));
    if (!cover.isFound) {
        return false;
    }
    HoldLate(form, path, *identity);
    DrawReady(cover, form.Picture_Cache, to.x, to.y);
    DrawReady(cover, form.Picture_CacheHilight, to.x, to.y);
    return true;
}

void DrawTmpCover(Form_Main& form, Surface& target, const Box& to) {
    const LateTagPicture& source = form.tmpCoverSource;
    const bool isSmooth = target.stretchMode == kStretchHalftone;
    if (!source.path.isEmpty() && isSmooth && MayBeReady(to.width, to.height)) {
        DrawReady(ReadyCover(form, KeyOf(source.identity, source.path, to.width, to.height)), target, to.x,
                  to.y);
        return;
    }
    SettleTmpCover(form);
    const Surface& cover = form.Picture_TmpCover;
    StretchBlt(target, to, cover, {0, 0, cover.Width(), cover.Height()});
}

void SettleTmpCover(Form_Main& form) {
    if (form.tmpCoverSource.path.isEmpty() || form.tmpCoverSource.isSettled) {
        return;
    }
    form.tmpCoverSource.isSettled = true;
    c32bppDIB picture;
    if (const auto cover = Search(form, form.tmpCoverSource.path)) {
        Decode(form, *cover, 0, 0, picture);
    }
    Resize(form.Picture_TmpCover, picture.Width(), picture.Height());
    picture.Render(form.Picture_TmpCover, 0, 0);
}
