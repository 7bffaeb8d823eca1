// Replacing a file in one step.
#include "settings/safe_write.h"

#include "core/path_text.h"
#include "platform/files.h"

namespace {

// Writes the temporary file and makes sure that the file and its name are on the disk.
bool Prepare(Files& files, const QString& path, const QString& temporary, const QString& folder,
             const QByteArray& bytes) {
    if (!files.Write(temporary, bytes, true)) {
        return false;
    }
    if (files.Identity(path)) {
        files.CopyRights(path, temporary);
    }
    // A folder that cannot be synced must be detected while the old file is still in place.
    return files.SyncFolder(folder);
}

} // namespace

bool WriteFileSafely(Files& files, const QString& path, const QByteArray& bytes) {
    const QString place = files.RealPath(path);
    const QString above = FolderOfPath(place);
    const QString folder = above.isEmpty() ? QStringLiteral(".") : above;
    const QString temporary = PathIn(folder, u'.' + NameOfPath(place) + QStringLiteral(".new"));
    // A power cut can leave anything under this name, even a file that we cannot write to.
    files.Remove(temporary);
    if (!Prepare(files, place, temporary, folder, bytes) || !files.Rename(temporary, place)) {
        files.Remove(temporary);
        return false;
    }
    files.SyncFolder(folder);
    return true;
}
