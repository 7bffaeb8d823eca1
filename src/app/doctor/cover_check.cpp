// Checking the pictures next to the music by the jukebox's own search for them.
#include "app/doctor/cover_check.h"

#include "app/doctor/checked_folder.h"
#include "app/doctor/conversion.h"
#include "app/doctor/library_walk.h"
#include "app/doctor/tag_check.h"
#include "app/findings/finding_report.h"
#include "core/path_text.h"
#include "imaging/picture/c32bppdib.h"
#include "library/covers.h"
#include "library/file_pattern.h"
#include "library/folder_names.h"
#include "platform/files.h"
#include "rendering/tag_covers.h"
#include "state/form_main.h"

#include <array>

namespace {

void Report(const CheckedFolder& checked, Level level, const QString& path, const QString& text,
            const QString& advice, const QString& kind = {}) {
    checked.report.Add({level, Subject::kMusic, path, text, advice, kind});
}

bool IsPictureName(const QString& name) {
    static const FilePattern pattern(QStringLiteral(
        "*.jpg;*.jpeg;*.jpe;*.jfif;*.png;*.gif;*.bmp;*.ico;*.webp;*.tif;*.tiff;*.avif;*.heic"));
    return pattern.Matches(name);
}

// Whether the first bytes are those of a format that the picture object reads.
bool BeginsLikePicture(const QByteArray& start) {
    for (const char* const magic : {"\xFF\xD8", "\x89PNG", "GIF8", "BM"}) {
        if (start.startsWith(magic)) {
            return true;
        }
    }
    return start.startsWith(QByteArrayView("\0\0\1\0", 4)) || start.startsWith(QByteArrayView("\0\0\2\0", 4));
}

bool CanBeRead(const CheckedFolder& checked, const QString& path) {
    if (checked.isDeep) {
        c32bppDIB picture;
        return picture.LoadPicture_File(CoverPorts(checked.form), path) && picture.Width() > 0;
    }
    const auto file = checked.form.files.Open(path);
    std::array<std::uint8_t, 4> bytes{};
    return file && file->Read(bytes) &&
           BeginsLikePicture(QByteArray(reinterpret_cast<const char*>(bytes.data()), bytes.size()));
}

// Checks a picture that the jukebox would show.
void CheckUsed(const CheckedFolder& checked, const QString& path) {
    if (!CanBeRead(checked, path)) {
        Report(
            checked, Level::kWarning, path,
            QStringLiteral(
                "The cover stays empty, because this file is not a complete JPEG, PNG, GIF or BMP picture, "
                "or may not be read."),
            QStringLiteral("Save it again as a JPEG of at most 8192 x 8192 pixels."));
    }
}

// The listed file without the ending of a picture's name; empty when there is none.
QString TrackOf(const CheckedFolder& checked, const QString& picture) {
    const QString base = picture.left(picture.lastIndexOf(u'.') + 1);
    for (const QString& name : checked.form.library.File1.List) {
        if (name.startsWith(base, Qt::CaseInsensitive)) {
            return name;
        }
    }
    return QString();
}

void ReportUnused(const CheckedFolder& checked, const QString& name, const QString& folderPicture,
                  const FolderCoverSettings& folder) {
    const QString path = PathIn(checked.walked.path, name);
    const QString track = TrackOf(checked, name);
    if (!track.isEmpty()) {
        Report(checked, Level::kNote, path,
               QStringLiteral("This picture is never shown: the cover of \"%1\" must be named \"%2\".")
                   .arg(track, track.chopped(3) + QStringLiteral("jpg")),
               QStringLiteral("Rename it, or put the picture into the tag of the track."),
               QStringLiteral("unused track cover"));
    } else if (name.startsWith(QStringLiteral("folder."), Qt::CaseInsensitive) && !folderPicture.isEmpty()) {
        Report(checked, Level::kNote, path,
               QStringLiteral("This picture is never shown, because \"%1\" is shown in its place.")
                   .arg(NameOfPath(folderPicture)),
               QStringLiteral("Delete the one that is not wanted."));
    } else if (!folderPicture.isEmpty() || !folder.isEntry) {
        Report(
            checked, Level::kNote, path,
            QStringLiteral(
                "This picture is never shown. The picture of a folder is folder.jpg or folder.png, that of a "
                "track has the track's name."),
            QString());
    } else {
        Report(checked, Level::kWarning, path,
               QStringLiteral(
                   "The folder has no cover, although this picture is in it: only folder.jpg and folder.png "
                   "are shown."),
               QStringLiteral("mv -i %1 %2")
                   .arg(ShellQuoted(path),
                        ShellQuoted(PathIn(checked.walked.path, QStringLiteral("folder.jpg")))));
    }
}

// Checks the folder's own pictures, and returns them.
QSet<QString> CheckFolderPictures(const CheckedFolder& checked, const FolderCoverSettings& folder) {
    const QString picture = FolderPicture(checked.names, checked.walked.path);
    const QString big = BigPicture(checked.names, checked.walked.path);
    if (!picture.isEmpty() && folder.isEntry && folder.showsCovers) {
        CheckUsed(checked, picture);
    } else if (!picture.isEmpty()) {
        Report(
            checked, Level::kNote, picture,
            folder.isEntry
                ? QStringLiteral("This cover is not shown, because covers of folders are switched off where "
                                 "the folder is listed.")
                : QStringLiteral("This cover is not shown, because no list has the music folder itself."),
            folder.isEntry ? QStringLiteral("Set ShowCover and ShowFolderCover to true.") : QString());
    }
    if (!big.isEmpty() && folder.isEntry && folder.showsBigCovers) {
        CheckUsed(checked, big);
    } else if (!big.isEmpty()) {
        Report(checked, Level::kNote, big,
               QStringLiteral("This picture is not shown. A bigcover is used where the folder is listed with "
                              "ShowBigCover and ShowFolderCover on and without a cover of its own."),
               QString());
    }
    return {picture, big};
}

// Checks the pictures next to tracks, and returns them.
QSet<QString> CheckTrackPictures(const CheckedFolder& checked) {
    const SettingsState& settings = checked.form.settings;
    const bool isShown = (settings.ShowCover == u"true" && settings.ShowFileCover == u"true") ||
                         settings.ShowBigCover == u"true";
    QSet<QString> pictures;
    for (const ListLine& line : checked.form.library.List_List) {
        const QString picture = line.type == u"dir" ? QString() : PictureBeside(checked.names, line.path);
        if (picture.isEmpty() || pictures.contains(picture)) {
            continue;
        }
        pictures.insert(picture);
        if (isShown) {
            CheckUsed(checked, picture);
        } else {
            Report(checked, Level::kNote, picture,
                   QStringLiteral("This cover is not shown, because covers next to tracks are switched off."),
                   QStringLiteral("Set ShowCover and ShowFileCover to true."));
        }
    }
    return pictures;
}

void KeepSettings(const CheckedFolder& checked, CoverSettingsOf& settingsOf) {
    const SettingsState& settings = checked.form.settings;
    const bool showsFolders = settings.ShowFolderCover == u"true";
    FolderCoverSettings below;
    below.showsCovers = (showsFolders && settings.ShowCover == u"true") || settings.ShowBigCover == u"true";
    below.showsBigCovers = showsFolders && settings.ShowBigCover == u"true";
    below.isEntry = true;
    for (const QString& folder : checked.form.library.Dir1.List) {
        settingsOf.insert(folder, below);
    }
}

} // namespace

void CheckCovers(const CheckedFolder& checked, CoverSettingsOf& settingsOf) {
    const FolderCoverSettings folder = settingsOf.take(checked.walked.path);
    QSet<QString> used = CheckFolderPictures(checked, folder);
    const QString folderPicture = FolderPicture(checked.names, checked.walked.path);
    used += CheckTrackPictures(checked);
    for (const WalkEntry& entry : checked.walked.entries) {
        const bool isPicture =
            entry.kind == EntryKind::kFile && !entry.name.startsWith(u'.') && IsPictureName(entry.name);
        if (isPicture && !used.contains(PathIn(checked.walked.path, entry.name))) {
            ReportUnused(checked, entry.name, folderPicture, folder);
        }
    }
    CheckTags(checked);
    KeepSettings(checked, settingsOf);
}
