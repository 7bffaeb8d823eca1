// Finding and filling the application folder.
#include "app/home/app_folder.h"

#include "core/path_text.h"
#include "platform/posix/posix_files.h"
#include "settings/home_folder.h"
#include "settings/home_restore.h"
#include "settings/safe_write.h"

#include <algorithm>

namespace {

constexpr std::int64_t kLargestDelivered = std::int64_t{256} * 1024 * 1024;
constexpr int kDeepestDelivered = 8;

const QString kConfigFile = QStringLiteral("config.ini");

bool HasFile(Files& files, const QString& path) {
    return files.Identity(path).has_value();
}

// Creates the folder and its missing parents.
bool MakeFolders(Files& files, const QString& folder) {
    if (files.IsFolder(folder)) {
        return true;
    }
    const QString above = FolderOfPath(folder);
    return !above.isEmpty() && MakeFolders(files, above) && files.MakeFolder(folder);
}

bool CopyFile(Files& files, const QString& from, const QString& to) {
    if (HasFile(files, to)) {
        return true;
    }
    const std::optional<QByteArray> bytes = files.ReadWhole(from, kLargestDelivered);
    return bytes && WriteFileSafely(files, to, *bytes);
}

bool CopyTree(Files& files, const QString& from, const QString& to, int depth = 0) {
    const std::optional<std::vector<FolderEntry>> entries = files.ListFolder(from);
    if (!entries || depth > kDeepestDelivered || !MakeFolders(files, to)) {
        return false;
    }
    return std::all_of(entries->begin(), entries->end(), [&](const FolderEntry& entry) {
        const QString source = PathIn(from, entry.name);
        const QString target = PathIn(to, entry.name);
        return entry.isFolder ? CopyTree(files, source, target, depth + 1) : CopyFile(files, source, target);
    });
}

bool CompleteThemes(Files& files, const QString& delivered, const QString& target) {
    const std::vector<FolderEntry> themes = files.ListFolder(delivered).value_or(std::vector<FolderEntry>());
    return std::all_of(themes.begin(), themes.end(), [&](const FolderEntry& theme) {
        const QString own = PathIn(target, theme.name);
        return !files.IsFolder(own) || CopyTree(files, PathIn(delivered, theme.name), own);
    });
}

// The folder of the delivered files; empty when nothing is installed.
QString ShareFolder(Files& files, const AppFolderSources& sources) {
    for (const QString& share :
         {sources.shareFolder, PathIn(sources.programFolder, QStringLiteral("../share/vantorix"))}) {
        if (HoldsJukebox(files, share)) {
            return files.RealPath(share);
        }
    }
    return QString();
}

AppFolderResult GivenFolder(Files& files, const AppFolderSources& sources) {
    const QString folder = files.RealPath(*sources.home);
    const QString fault = FaultOfHome(files, folder, *sources.home);
    return fault.isEmpty() ? AppFolderResult{folder, ShareFolder(files, sources), {}}
                           : AppFolderResult{{}, {}, fault};
}

// $XDG_DATA_HOME/vantorix; empty when the variables do not say where that is.
QString OwnPlace(const AppFolderSources& sources) {
    // A relative XDG_DATA_HOME counts as unset, as the XDG Base Directory rules require.
    const bool hasDataHome = sources.dataHome.startsWith(u'/');
    if (!hasDataHome && sources.userHome.isEmpty()) {
        return QString();
    }
    return PathIn(hasDataHome ? sources.dataHome : PathIn(sources.userHome, QStringLiteral(".local/share")),
                  QStringLiteral("vantorix"));
}

AppFolderResult OwnFolder(Files& files, const AppFolderSources& sources) {
    const QString folder = OwnPlace(sources);
    if (folder.isEmpty()) {
        return {
            {},
            {},
            QStringLiteral("neither XDG_DATA_HOME nor HOME is set; give the application folder with --home")};
    }
    const QString share = ShareFolder(files, sources);
    if (HasFile(files, PathIn(folder, kConfigFile)) || HoldsRestore(files, folder)) {
        return {files.RealPath(folder), share, {}};
    }
    if (share.isEmpty()) {
        return {{},
                {},
                QStringLiteral("no application folder: nothing is installed in \"%1\"; give it with --home")
                    .arg(sources.shareFolder)};
    }
    if (!FillAppFolder(files, share, folder)) {
        return {{},
                {},
                QStringLiteral("the application folder \"%1\" could not be filled from \"%2\"")
                    .arg(folder, share)};
    }
    return {files.RealPath(folder), share, {}};
}

} // namespace

bool FillAppFolder(Files& files, const QString& delivered, const QString& target) {
    const QString themes = QStringLiteral("themes");
    const QString playlists = QStringLiteral("playlists");
    return MakeFolders(files, target) &&
           CompleteThemes(files, PathIn(delivered, themes), PathIn(target, themes)) &&
           (!files.IsFolder(PathIn(delivered, playlists)) ||
            CopyTree(files, PathIn(delivered, playlists), PathIn(target, playlists))) &&
           CopyFile(files, PathIn(delivered, kConfigFile), PathIn(target, kConfigFile));
}

QString PlaceOfAppFolder(Files& files, const AppFolderSources& sources) {
    if (sources.home) {
        return files.RealPath(*sources.home);
    }
    return HoldsJukebox(files, sources.programFolder) ? sources.programFolder : OwnPlace(sources);
}

QString PlaceOfDelivered(Files& files, const AppFolderSources& sources) {
    const bool isOwn = !sources.home && HoldsJukebox(files, sources.programFolder);
    return isOwn ? QString() : ShareFolder(files, sources);
}

AppFolderSources SourcesOfAppFolder(const std::optional<QString>& home) {
    PosixFiles files;
    return {.home = home,
            .programFolder = FolderOfPath(files.RealPath(QStringLiteral("/proc/self/exe"))),
            .dataHome = TextOfPath(qgetenv("XDG_DATA_HOME")),
            .userHome = TextOfPath(qgetenv("HOME")),
            .shareFolder = QStringLiteral(VANTORIX_SHARE_FOLDER)};
}

AppFolderResult FindAppFolder(Files& files, const AppFolderSources& sources) {
    if (sources.home) {
        return GivenFolder(files, sources);
    }
    if (HoldsJukebox(files, sources.programFolder)) {
        return {sources.programFolder, {}, {}};
    }
    return OwnFolder(files, sources);
}
