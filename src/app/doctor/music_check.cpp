// Checking what a folder lists and what it does not list.
#include "app/doctor/music_check.h"

#include "app/doctor/checked_folder.h"
#include "app/doctor/conversion.h"
#include "app/doctor/library_walk.h"
#include "app/findings/finding_report.h"
#include "core/media_kind.h"
#include "core/path_text.h"
#include "library/file_pattern.h"
#include "library/folder_names.h"
#include "state/form_main.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <initializer_list>

namespace {

constexpr int kDeepest = 100;
constexpr int kMostPages = 95;

void Report(const CheckedFolder& checked, Level level, const QString& path, const QString& text,
            const QString& advice, const QString& kind = {}) {
    checked.report.Add({level, Subject::kMusic, path, text, advice, kind});
}

QString PathOf(const CheckedFolder& checked, const WalkEntry& entry) {
    return PathIn(checked.walked.path, entry.name);
}

QString RightsCommand(const QString& path, bool isFolder) {
    return QStringLiteral("chmod %1 %2, as its owner.")
        .arg(isFolder ? QStringLiteral("a+rx") : QStringLiteral("a+r"), ShellQuoted(path));
}

bool IsMusicName(const QString& name) {
    static const FilePattern pattern(kMusicPattern.toString());
    return pattern.Matches(name);
}

bool IsJunkFile(const QString& name) {
    static const FilePattern pattern(
        QStringLiteral("Thumbs.db;ehthumbs.db;desktop.ini;Folder.htt;Icon\r;*.crdownload;*.part;*.tmp"));
    return pattern.Matches(name);
}

// Returns the first file that exists with the name's stem and one of the endings; empty when there is none.
QString TwinOf(const CheckedFolder& checked, const QString& name,
               std::initializer_list<QStringView> endings) {
    const QString stem = PathIn(checked.walked.path, name.left(name.lastIndexOf(u'.') + 1));
    for (const QStringView ending : endings) {
        QString found = checked.names.FindFile(stem + ending.toString());
        if (!found.isEmpty()) {
            return found;
        }
    }
    return QString();
}

void CheckUnlisted(const CheckedFolder& checked, const WalkEntry& entry) {
    const auto kind = UnlistedKindOf(entry.name);
    if (!kind) {
        if (IsJunkFile(entry.name)) {
            Report(checked, Level::kNote, PathOf(checked, entry),
                   QStringLiteral("It belongs to another program and is not listed."),
                   QStringLiteral("Delete it, or leave it."));
        }
        return;
    }
    const QString ending = entry.name.mid(entry.name.lastIndexOf(u'.')).toLower();
    if (*kind == UnlistedKind::kPlaylist) {
        Report(checked, Level::kNote, PathOf(checked, entry),
               QStringLiteral("Playlists of other programs (%1) are not listed.").arg(ending),
               QStringLiteral("Pick the tracks in the jukebox and save the queue."));
        return;
    }
    const QString twin = TwinOf(checked, entry.name, {u"mp3", u"flac", u"wma", u"wav", u"avi", u"mpg"});
    if (!twin.isEmpty() && ending != u".mp4") {
        Report(checked, Level::kNote, PathOf(checked, entry),
               QStringLiteral("It is not listed, because %1 files never are; \"%2\" is listed.")
                   .arg(ending, NameOfPath(twin)),
               QString(), QStringLiteral("unlisted with a twin") + ending);
        return;
    }
    Report(checked, Level::kWarning, PathOf(checked, entry),
           QStringLiteral("It is not listed and patrons do not find it, because the jukebox does not list "
                          "%1 files.")
               .arg(ending),
           QStringLiteral("Convert it: ") + CommandToConvert(*kind, PathOf(checked, entry)));
}

void CheckHiddenByVideo(const CheckedFolder& checked, const QString& name) {
    const QString video = TwinOf(checked, name, {u"avi", u"mpg", u"mp4"});
    const QString path = PathIn(checked.walked.path, name);
    if (LastThree(video) != u"mp4") {
        Report(
            checked, Level::kNote, path,
            QStringLiteral("It is not listed, because it counts as the sound of the video \"%1\", which is "
                           "listed.")
                .arg(NameOfPath(video)),
            QStringLiteral("If it is another piece of music, give it another name."),
            QStringLiteral("mp3 beside a listed video"));
        return;
    }
    Report(checked, Level::kWarning, path,
           QStringLiteral(
               "Neither it nor \"%1\" is listed: an mp3 counts as the sound of the video of its name, "
               "and .mp4 files are not listed.")
               .arg(NameOfPath(video)),
           QStringLiteral("Rename one of the two, or move the video to another folder."),
           QStringLiteral("mp3 beside an mp4"));
}

void CheckListedFile(const CheckedFolder& checked, const WalkEntry& entry) {
    const QString path = PathOf(checked, entry);
    if (entry.name.endsWith(QStringLiteral(".vtxpl"), Qt::CaseInsensitive)) {
        const bool isPlaylist = entry.name.endsWith(QStringLiteral(".vtxpl"));
        Report(checked, isPlaylist ? Level::kError : Level::kWarning, path,
               isPlaylist
                   ? QStringLiteral("The jukebox locks up when this playlist is picked, because only the "
                                    "playlists folder may hold playlists.")
                   : QStringLiteral("It is listed as a track and does not play, because a playlist must "
                                    "end in exactly \".vtxpl\"."),
               QStringLiteral("Move it to the folder \"playlists\" of the application folder%1.")
                   .arg(isPlaylist ? QString() : QStringLiteral(" and rename it")));
    } else if (!entry.isReadable) {
        Report(
            checked, IsVideo(entry.name) ? Level::kError : Level::kWarning, path,
            IsVideo(entry.name)
                ? QStringLiteral(
                      "The jukebox has no right to read this video and locks up when its turn comes.")
                : QStringLiteral("The jukebox has no right to read it; patrons pay for it and hear nothing."),
            RightsCommand(path, false));
    } else if (entry.size == 0) {
        Report(
            checked, IsVideo(entry.name) ? Level::kError : Level::kWarning, path,
            IsVideo(entry.name)
                ? QStringLiteral("This video is empty (0 bytes); the jukebox locks up when its turn comes.")
                : QStringLiteral("It is empty (0 bytes); patrons pay for it and hear nothing."),
            QStringLiteral("Copy it again or delete it."));
    }
}

void CheckHidden(const CheckedFolder& checked, const WalkEntry& entry) {
    const bool isMedia = IsMusicName(entry.name) || UnlistedKindOf(entry.name).has_value();
    if (entry.kind == EntryKind::kFile && isMedia) {
        const bool isMacCopy = entry.name.startsWith(QStringLiteral("._"));
        Report(checked, isMacCopy ? Level::kNote : Level::kWarning, PathOf(checked, entry),
               isMacCopy
                   ? QStringLiteral("A macOS computer has left it. It holds no music and is not listed.")
                   : QStringLiteral("It is not listed, because its name begins with a dot."),
               isMacCopy ? QStringLiteral("Delete it, or leave it.")
                         : QStringLiteral("Rename it so that its name begins with another character."));
    } else if (entry.kind == EntryKind::kFolder) {
        Report(checked, Level::kNote, PathOf(checked, entry),
               QStringLiteral("This folder is not listed, because its name begins with a dot."),
               QStringLiteral("Rename it if it holds music."));
    }
}

void CheckSpecial(const CheckedFolder& checked, const WalkEntry& entry) {
    const bool isLink = entry.kind == EntryKind::kBrokenLink;
    if (isLink || IsMusicName(entry.name)) {
        Report(checked, isLink ? Level::kWarning : Level::kNote, PathOf(checked, entry),
               isLink ? QStringLiteral("It is not listed: it is a link to something that does not exist.")
                      : QStringLiteral("It is not listed: it is a pipe, a socket or a device and no file."),
               isLink ? QStringLiteral(
                            "Mount the disk that it leads to before the jukebox starts, or delete it.")
                      : QStringLiteral("Delete it."));
    }
}

void CheckFolderEntry(const CheckedFolder& checked, const WalkEntry& entry) {
    if (IsJunkFolder(entry.name)) {
        Report(checked, Level::kWarning, PathOf(checked, entry),
               QStringLiteral(
                   "Patrons see this folder, which belongs to a system or another program and holds no "
                   "music."),
               QStringLiteral("Delete it, or make another folder of the disk the music folder."));
    }
}

void CheckEntry(const CheckedFolder& checked, const WalkEntry& entry, const QSet<QString>& matching) {
    if (entry.name.startsWith(u'.')) {
        CheckHidden(checked, entry);
    } else if (entry.kind == EntryKind::kFolder) {
        CheckFolderEntry(checked, entry);
    } else if (entry.kind != EntryKind::kFile) {
        CheckSpecial(checked, entry);
    } else if (matching.contains(entry.name)) {
        CheckListedFile(checked, entry);
    } else {
        CheckUnlisted(checked, entry);
    }
}

void CheckSize(const CheckedFolder& checked) {
    const auto entries = static_cast<std::int64_t>(checked.form.library.List_List.size());
    const std::int64_t rows = checked.form.theme.ZoneListNbTracksParColonne.value();
    // The left column of the next page still has a letter.
    if (rows < 1 || entries <= 2 * rows * kMostPages) {
        return;
    }
    const bool stops = entries > 2 * rows * kMostPages + rows;
    Report(
        checked, stops ? Level::kError : Level::kWarning, checked.walked.path,
        QStringLiteral("The folder has %L1 entries, which are more than %2 pages of this theme. %3")
            .arg(entries)
            .arg(kMostPages)
            .arg(stops ? QStringLiteral("The program stops when its last pages are shown.")
                       : QStringLiteral("The program stops when a few more are added.")),
        QStringLiteral("Spread the entries over several folders of at most %L1.").arg(2 * rows * kMostPages),
        QStringLiteral("too many pages"));
}

void CheckWhole(const CheckedFolder& checked) {
    const WalkedFolder& folder = checked.walked;
    if (folder.depth > kDeepest) {
        Report(checked, Level::kError, folder.path,
               QStringLiteral(
                   "The jukebox locks up when this folder is opened, because it is more than %1 folders "
                   "below the music folder.")
                   .arg(kDeepest),
               QStringLiteral("Move the music to a folder further up."));
    }
    const QString order = checked.form.library.Order.toLower();
    if (checked.isListed && order != u"alpha" && order != u"playcount") {
        Report(checked, Level::kWarning, folder.path,
               QStringLiteral("The folder shows nothing, because its order \"%1\" is neither \"alpha\" nor "
                              "\"playcount\".")
                   .arg(checked.form.library.Order),
               QStringLiteral("Correct Order in pathconfig.ini, or DefaultOrder in config.ini."),
               QStringLiteral("unknown order"));
    } else if (checked.isListed && checked.form.library.List_List.empty()) {
        Report(checked, Level::kWarning, folder.path,
               QStringLiteral("The folder shows an empty page, because it has nothing that is listed."),
               QStringLiteral("Delete it, or give it a name that begins with a dot."));
    }
    CheckSize(checked);
}

void CheckTwins(const CheckedFolder& checked) {
    const LibraryState& library = checked.form.library;
    if (library.List_List.empty()) {
        return;
    }
    QSet<QString> shown;
    for (const ListLine& line : library.List_List) {
        if (line.type != u"dir") {
            shown.insert(line.title);
        }
    }
    for (const QString& name : library.File1.List) {
        if (!shown.contains(name)) {
            CheckHiddenByVideo(checked, name);
        }
    }
}

} // namespace

bool IsJunkFolder(const QString& name) {
    static const FilePattern pattern(QStringLiteral(
        "System Volume "
        "Information;$RECYCLE.BIN;RECYCLER;RECYCLED;__MACOSX;lost+found;@eaDir;#recycle;@Recycle;"
        "FOUND.000;Config.Msi;$Extend;WindowsApps"));
    return pattern.Matches(name);
}

void CheckMusic(const CheckedFolder& checked) {
    const WalkedFolder& folder = checked.walked;
    if (folder.error != 0) {
        const bool isTooLong = folder.error == ENAMETOOLONG;
        Report(checked, folder.depth == 0 ? Level::kError : Level::kWarning, folder.path,
               QStringLiteral("The folder shows an empty page, because it cannot be read: %1.")
                   .arg(QString::fromLocal8Bit(std::strerror(folder.error))),
               isTooLong ? QStringLiteral("Move it further up or shorten the names of the folders.")
                         : RightsCommand(folder.path, true),
               QStringLiteral("unreadable folder"));
        return;
    }
    const QSet<QString> matching(checked.form.library.File1.List.begin(),
                                 checked.form.library.File1.List.end());
    for (const WalkEntry& entry : folder.entries) {
        CheckEntry(checked, entry, matching);
    }
    CheckTwins(checked);
    CheckWhole(checked);
}

void ReportLoop(FindingReport& report, const QString& link, const QString& target) {
    report.Add(
        {Level::kWarning, Subject::kMusic, link,
         QStringLiteral(
             "It is a link to a folder that it is in: \"%1\". Patrons can open it again and again, and "
             "the jukebox locks up more than 100 folders below the music folder.")
             .arg(target),
         QStringLiteral("Delete the link: rm %1").arg(ShellQuoted(link)), QStringLiteral("link loop")});
}

void ReportSecondPath(FindingReport& report, const QString& path) {
    report.Add({Level::kNote, Subject::kMusic, path,
                QStringLiteral(
                    "The same folder has already been checked under another path. Its music is listed under "
                    "both, with counts of its own."),
                QString()});
}
