// Finding the picture of a track or a folder.
#include "library/covers.h"

#include "core/path_text.h"
#include "library/folder_names.h"
#include "state/form_main.h"

#include <algorithm>
#include <array>

namespace {

// Folder pictures, the preferred one first.
constexpr std::array<QStringView, 2> kFolderPictures = {u"folder.jpg", u"folder.png"};
constexpr std::array<QStringView, 2> kBigPictures = {u"bigcover.jpg", u"bigcover.png"};

// Returns the first of these files that the folder has; empty when it has none.
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

// Kinds of pictures by the text of their format. The first row whose text occurs in it applies.
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

} // namespace

QString FolderPicture(const FolderNames& names, const QString& folder) {
    return FindFirst(names, folder, kFolderPictures);
}

QString BigPicture(const FolderNames& names, const QString& folder) {
    return FindFirst(names, folder, kBigPictures);
}

// Deliberate D-91: three characters are cut off whatever the length of the extension, so x.flac leads to
// x.fjpg. One would expect x.jpg; folders hold pictures for their mp3 files by this rule.
QString PictureBeside(const FolderNames& names, const QString& path) {
    return names.FindFile(path.left(std::max<qsizetype>(0, path.size() - 3)) + QStringLiteral("jpg"));
}

std::optional<TagCover> SearchTag(Form_Main& form, const QString& path) {
    cTaggedImages& tag = form.library.TaggedImages;
    const int count = tag.LoadTagged_Images(form.files, path);
    for (int i = 1; i <= count; ++i) {
        const bool isDecoded = KindOf(tag.ImageType(i)) < kFirstUndecoded;
        const int category = tag.ImageCategory(i);
        if (category == kOther || category == kFrontCover) {
            const auto bytes = tag.ExtractImageData(i);
            return bytes ? std::optional(TagCover{*bytes, isDecoded}) : std::nullopt;
        }
    }
    return std::nullopt;
}
