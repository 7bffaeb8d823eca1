// Building the sorted list of a folder on disk.
#include "library/create_list.h"

#include "core/conversions.h"
#include "core/media_kind.h"
#include "core/path_text.h"
#include "core/run_time_error.h"
#include "library/file_pattern.h"
#include "library/list_order.h"
#include "platform/files.h"
#include "settings/config.h"
#include "settings/ini_files.h"
#include "settings/profile.h"
#include "state/form_main.h"
#include "state/log.h"
#include "state/paths.h"

#include <QSet>

#include <optional>
#include <utility>

namespace {

// The wildcards of kMusicPattern (D-03) in the order that a listing uses.
constexpr QStringView kListPattern = u"*.mp3;*.wma;*.wav;*.vtxpl;*.avi;*.mpg;*.mp44;*.flac";

constexpr double kKeyOfNoPlays = 1'000'000;
constexpr int kKeyDigits = 7;

// The result of reading a folder once.
struct FolderContent {
    // Full paths of the sub-folders and bare names of the matching files, both in name order.
    QStringList folders;
    QStringList files;
    // The case-folded names of all videos, matching or not.
    QSet<QString> videos;
};

bool IsHidden(const QString& name) {
    return name.startsWith(u'.');
}

std::vector<FolderEntry> EntriesOf(Form_Main& form, const QString& folder) {
    // A folder that cannot be read counts as empty.
    return form.files.ListFolder(folder).value_or(std::vector<FolderEntry>());
}

// Returns the sub-folders as full paths. Sorting the bare names first gives the same order faster.
QStringList FolderPaths(const QString& folder, QStringList names) {
    SortNames(names);
    for (QString& name : names) {
        name = PathIn(folder, name);
    }
    return names;
}

QStringList ReadFiles(Form_Main& form, const FileList& list) {
    const FilePattern pattern(list.Pattern);
    QStringList names;
    for (const FolderEntry& entry : EntriesOf(form, list.Path)) {
        if (!entry.isFolder && !IsHidden(entry.name) && pattern.Matches(entry.name)) {
            names += entry.name;
        }
    }
    SortNames(names);
    return names;
}

FolderContent ReadContent(Form_Main& form, const QString& folder) {
    const FilePattern pattern(kListPattern.toString());
    FolderContent content;
    for (const FolderEntry& entry : EntriesOf(form, folder)) {
        if (!entry.isFolder && IsVideo(entry.name)) {
            content.videos.insert(entry.name.toCaseFolded());
        }
        if (IsHidden(entry.name)) {
            continue;
        }
        if (entry.isFolder) {
            content.folders += entry.name;
        } else if (pattern.Matches(entry.name)) {
            content.files += entry.name;
        }
    }
    content.folders = FolderPaths(folder, std::move(content.folders));
    SortNames(content.files);
    return content;
}

// Returns the folder as a list keeps it: absolute, without a separator at its end. A relative path is
// resolved in the application folder if the result exists, otherwise in the working directory. Raises 76 when
// there is no such folder.
QString FolderOf(Form_Main& form, const QString& path) {
    QString folder = WithoutSeparatorAtEnd(path);
    if (folder.startsWith(u'/')) {
        if (form.files.IsFolder(folder)) {
            return folder;
        }
    } else if (!folder.isEmpty()) {
        for (const QString& start : {form.shell.AppFolder, form.files.RealPath(QStringLiteral("."))}) {
            QString absolute = PathIn(start, folder);
            if (form.files.IsFolder(absolute)) {
                return absolute;
            }
        }
    }
    // Deliberate D-126: entering, or going back to, a folder that has vanished ends the handler with
    // InputBusy set. One would expect the list to stay as it is; no error restores anything, see D-25.
    throw RunTimeError(kPathNotFound, path.isEmpty() ? QStringLiteral("no folder is named")
                                                     : path + QStringLiteral(": there is no such folder"));
}

QString FolderOrder(Form_Main& form) {
    const QString order = Trim(GetPrivateProfileString(form, FolderSettingsPath(form), form.library.Dir1.Path,
                                                       QStringLiteral("Order")));
    return order.isEmpty() ? form.settings.DefaultOrder : order;
}

// Returns how often a track, or any track of a folder, has been bought. Raises 13 if that is not a number.
double PlayCount(const IniFile& stats, const QString& name) {
    const QString text = Trim(stats.Value(u"PayingCount", name));
    if (text.isEmpty()) {
        return 0;
    }
    if (!IsNumeric(text)) {
        throw RunTimeError(kTypeMismatch, QStringLiteral("\"%1\" is not a number").arg(text));
    }
    return CDouble(text);
}

// Computes the keys of the list's lines for the order of the folder.
class LineKeys {
public:
    explicit LineKeys(Form_Main& form) : path_(StatsPath(form)) {
        const QString order = form.library.Order.toLower();
        if (order == QStringLiteral("playcount")) {
            stats_ = &IniFilesOf(form).Open(form.files, path_);
        }
        alpha_ = order == QStringLiteral("alpha");
    }

    // Returns the key of the entry of that name.
    // Deliberate D-47: an unknown order gives no keys, and the folder appears empty. One would expect
    // "alpha"; the empty page shows the operator that the word is misspelled.
    std::optional<QString> Key(const QString& name) const {
        if (stats_ != nullptr) {
            const auto where = [&] {
                return QStringLiteral("%1, [PayingCount] %2 (expected a number)").arg(path_, name);
            };
            return PlayCountKey(TellingWhere(where, [&] { return PlayCount(*stats_, name); }));
        }
        return alpha_ ? std::optional(name) : std::nullopt;
    }

private:
    static QString PlayCountKey(double count) {
        // Fast path: most entries of a large library have never been bought.
        static const QString noPlays = FormatZeros(kKeyOfNoPlays, kKeyDigits);
        return count == 0 ? noPlays : FormatZeros(kKeyOfNoPlays - count, kKeyDigits);
    }

    QString path_;
    const IniFile* stats_ = nullptr;
    bool alpha_ = false;
};

void CountEntry(Form_Main& form) {
    const auto where = [&] {
        return form.library.Dir1.Path + QStringLiteral(" (expected at most 32767 folders and tracks)");
    };
    TellingWhere(where, [&] { form.library.NumTrack += 1; });
}

// Deliberate D-48: in the order "alpha" the folders form one block among the files, after names that begin
// with a sign. One would expect them first, or sorted in by name; their key is the whole path, and libraries
// are named accordingly.
void AddFolder(Form_Main& form, const LineKeys& keys, const QString& path) {
    if (const auto key = keys.Key(path)) {
        form.library.List_List.push_back({*key, QStringLiteral("dir"), path, NameOfPath(path)});
    }
    CountEntry(form);
}

void AddFile(Form_Main& form, const LineKeys& keys, const QString& name) {
    if (const auto key = keys.Key(name)) {
        // Deliberate D-49: MIX.VTXPL is listed as a track. One would expect a playlist, since the case of
        // music extensions is ignored; only the exact extension, which the jukebox itself writes, makes a
        // playlist.
        const bool isPlaylist = name.endsWith(QStringLiteral(".vtxpl"));
        const QString type = isPlaylist ? QStringLiteral("playlist") : QStringLiteral("file");
        form.library.List_List.push_back({*key, type, PathIn(form.library.File1.Path, name), name});
    }
    CountEntry(form);
}

// An mp3 next to a video of the same name is the video's sound and is not shown.
// Deliberate D-50: next to an .mp4 neither of the two is shown, since .mp4 files are not listed. One would
// expect the mp3; libraries in the field hide such pairs this way.
bool HasVideoTwin(const QString& name, const QSet<QString>& videos) {
    if (videos.isEmpty() || !name.endsWith(QStringLiteral("mp3"), Qt::CaseInsensitive)) {
        return false;
    }
    const QString base = name.chopped(3).toCaseFolded();
    return videos.contains(base + QStringLiteral("mp4")) || videos.contains(base + QStringLiteral("mpg")) ||
           videos.contains(base + QStringLiteral("avi"));
}

void FillList(Form_Main& form, const QSet<QString>& videos) {
    const LineKeys keys(form);
    form.library.List_List.reserve(
        static_cast<std::size_t>(form.library.Dir1.List.size() + form.library.File1.List.size()));
    LogBatch log(form);
    for (const QString& path : std::as_const(form.library.Dir1.List)) {
        log.Add(QStringLiteral(" : ") + path);
        AddFolder(form, keys, path);
    }
    for (const QString& name : std::as_const(form.library.File1.List)) {
        if (!HasVideoTwin(name, videos)) {
            log.Add(QStringLiteral(" : ") + name);
            AddFile(form, keys, name);
        }
    }
    log.Close();
    SortLines(form.library.List_List);
}

} // namespace

QStringList FolderPathsOf(const QString& folder, const std::vector<FolderEntry>& entries) {
    QStringList names;
    for (const FolderEntry& entry : entries) {
        if (entry.isFolder && !IsHidden(entry.name)) {
            names += entry.name;
        }
    }
    return FolderPaths(folder, std::move(names));
}

void PointFolderList(Form_Main& form, FolderList& list, const QString& path) {
    const QString folder = FolderOf(form, path);
    list = {folder, FolderPathsOf(folder, EntriesOf(form, folder))};
}

void PointDir1(Form_Main& form, const QString& path) {
    PointFolderList(form, form.library.Dir1, path);
}

void PointDir2(Form_Main& form, const QString& path) {
    PointFolderList(form, form.library.Dir2, path);
}

void PointFile1(Form_Main& form, const QString& path) {
    form.library.File1.Path = FolderOf(form, path);
    form.library.File1.List = ReadFiles(form, form.library.File1);
}

void SetFile1Pattern(Form_Main& form, const QString& pattern) {
    form.library.File1.Pattern = pattern;
    form.library.File1.List = ReadFiles(form, form.library.File1);
}

void PointAtStartFolder(Form_Main& form) {
    form.library.CurrentPath = form.settings.StartPath;
    WriteLog(form, QStringLiteral(" : deplacement dir1 vers ") + form.library.CurrentPath);
    const auto where = [&] {
        return ConfigPlace(form, u"Main", u"StartPath") + QStringLiteral(" (expected a folder)");
    };
    TellingWhere(where, [&] {
        PointDir1(form, form.library.CurrentPath);
        PointFile1(form, form.library.CurrentPath);
    });
    SetFile1Pattern(form, kMusicPattern.toString());
}

void CreateList(Form_Main& form) {
    EndsProgram("CreateList", [&] {
        WriteLog(form, QStringLiteral(" : Creation de la liste des fichiers (CreateList)"));
        form.library.List_List.clear();
        const FolderContent content = ReadContent(form, form.library.Dir1.Path);
        form.library.Dir1.List = content.folders;
        form.library.File1 = {form.library.Dir1.Path, kListPattern.toString(), content.files};
        form.library.Order = FolderOrder(form);
        form.library.NumTrack = 0;
        FillList(form, content.videos);
    });
}
