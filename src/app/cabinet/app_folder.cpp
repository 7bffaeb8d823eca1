// Finding and filling the application folder.
#include "app/cabinet/app_folder.h"

#include "core/path_text.h"
#include "platform/files.h"
#include "settings/home_folder.h"
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

bool CopyTree(Files& files, const QString& from, const QString& to, int depth) {
    std::optional<std::vector<FolderEntry>> entries = files.ListFolder(from);
    if (!entries || depth > kDeepestDelivered || !MakeFolders(files, to)) {
        return false;
    }
    std::stable_partition(entries->begin(), entries->end(),
                          [](const FolderEntry& entry) { return entry.name != kConfigFile; });
    return std::all_of(entries->begin(), entries->end(), [&](const FolderEntry& entry) {
        const QString source = PathIn(from, entry.name);
        const QString target = PathIn(to, entry.name);
        return entry.isFolder ? CopyTree(files, source, target, depth + 1) : CopyFile(files, source, target);
    });
}

AppFolderResult GivenFolder(Files& files, const QString& home) {
    const QString folder = files.RealPath(home);
    const QString fault = FaultOfHome(files, folder, home);
    return fault.isEmpty() ? AppFolderResult{folder, {}} : AppFolderResult{{}, fault};
}

AppFolderResult OwnFolder(Files& files, const AppFolderSources& sources) {
    if (!sources.dataHome.startsWith(u'/') && sources.userHome.isEmpty()) {
        return {
            {},
            QStringLiteral("neither XDG_DATA_HOME nor HOME is set; give the application folder with --home")};
    }
    // A relative XDG_DATA_HOME counts as unset, as the XDG Base Directory rules require.
    const QString data = sources.dataHome.startsWith(u'/')
                             ? sources.dataHome
                             : PathIn(sources.userHome, QStringLiteral(".local/share"));
    const QString folder = PathIn(data, QStringLiteral("vantorix"));
    if (HasFile(files, PathIn(folder, kConfigFile))) {
        return {files.RealPath(folder), {}};
    }
    for (const QString& share :
         {sources.shareFolder, PathIn(sources.programFolder, QStringLiteral("../share/vantorix"))}) {
        if (HoldsJukebox(files, share)) {
            return FillAppFolder(files, share, folder)
                       ? AppFolderResult{files.RealPath(folder), {}}
                       : AppFolderResult{
                             {},
                             QStringLiteral("the application folder \"%1\" could not be filled from \"%2\"")
                                 .arg(folder, share)};
        }
    }
    return {{},
            QStringLiteral("no application folder: nothing is installed in \"%1\"; give it with --home")
                .arg(sources.shareFolder)};
}

} // namespace

bool FillAppFolder(Files& files, const QString& delivered, const QString& target) {
    return CopyTree(files, delivered, target, 0);
}

AppFolderResult FindAppFolder(Files& files, const AppFolderSources& sources) {
    if (sources.home) {
        return GivenFolder(files, *sources.home);
    }
    if (HoldsJukebox(files, sources.programFolder)) {
        return {sources.programFolder, {}};
    }
    return OwnFolder(files, sources);
}
