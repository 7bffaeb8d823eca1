// Copying a folder so that a power cut leaves no half of it.
#include "settings/copy_folder.h"

#include "core/path_text.h"
#include "platform/files.h"

#include <algorithm>

namespace {

constexpr std::int64_t kLargestFile = std::int64_t{256} * 1024 * 1024;
constexpr int kDeepest = 8;

bool CopyFile(Files& files, const QString& from, const QString& to) {
    const std::optional<QByteArray> bytes = files.ReadWhole(from, kLargestFile);
    return bytes && files.Write(to, *bytes, true);
}

bool CopyTree(Files& files, const QString& from, const QString& to, int depth) {
    const std::optional<std::vector<FolderEntry>> entries = files.ListFolder(from);
    if (!entries || depth > kDeepest || !files.MakeFolder(to)) {
        return false;
    }
    const bool isCopied = std::all_of(entries->begin(), entries->end(), [&](const FolderEntry& entry) {
        const QString source = PathIn(from, entry.name);
        const QString target = PathIn(to, entry.name);
        return entry.isFolder ? CopyTree(files, source, target, depth + 1) : CopyFile(files, source, target);
    });
    return isCopied && files.SyncFolder(to);
}

} // namespace

QString CopyInProgress(const QString& appFolder) {
    return PathIn(appFolder, QStringLiteral(".copy.new"));
}

bool CopyFolderSafely(Files& files, const QString& from, const QString& to, const QString& temporary) {
    files.RemoveTree(temporary);
    const QString above = FolderOfPath(to);
    if (!CopyTree(files, from, temporary, 0) || !files.MakeFolder(above) || !files.Rename(temporary, to)) {
        files.RemoveTree(temporary);
        return false;
    }
    files.SyncFolder(above);
    files.SyncFolder(FolderOfPath(above));
    return true;
}
