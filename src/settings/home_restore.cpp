// Exchanging the files of an application folder for restored ones. The name of one folder says how far the
// exchange has got, and every step can be repeated:
//   .restore.new     the restored files are being put together; they count for nothing
//   .restore.taking  the old files are being moved to "old" in it
//   .restore.putting the restored files in it are being moved into place
//   .restore.done    it is being removed
#include "settings/home_restore.h"

#include "core/path_text.h"
#include "platform/files.h"
#include "settings/copy_folder.h"

#include <algorithm>

namespace {

const QString kOld = QStringLiteral("old");
// Lists the names that are exchanged, one in each line.
const QString kNames = QStringLiteral("names");

QString Taking(const QString& home) {
    return PathIn(home, QStringLiteral(".restore.taking"));
}

QString Putting(const QString& home) {
    return PathIn(home, QStringLiteral(".restore.putting"));
}

QString Done(const QString& home) {
    return PathIn(home, QStringLiteral(".restore.done"));
}

bool Exists(Files& files, const QString& path) {
    return files.IsFolder(path) || files.Identity(path);
}

// Renames an entry of the application folder or of a folder in it, and makes that survive a power cut.
bool Step(Files& files, const QString& from, const QString& to) {
    return files.Rename(from, to) && files.SyncFolder(FolderOfPath(from)) &&
           files.SyncFolder(FolderOfPath(to));
}

bool TakeOld(Files& files, const QString& home) {
    constexpr std::int64_t kLongestList = 4096;
    const QString folder = Taking(home);
    const std::optional<QByteArray> names = files.ReadWhole(PathIn(folder, kNames), kLongestList);
    const QStringList list = TextOfPath(names.value_or(QByteArray())).split(u'\n', Qt::SkipEmptyParts);
    return names && std::all_of(list.begin(), list.end(), [&](const QString& name) {
               const QString old = PathIn(home, name);
               return !Exists(files, old) || Step(files, old, PathIn(PathIn(folder, kOld), name));
           });
}

// Moves back what TakeOld has moved.
bool PutBack(Files& files, const QString& home) {
    files.RemoveTree(Done(home));
    const QString old = PathIn(Taking(home), kOld);
    const std::vector<FolderEntry> entries = files.ListFolder(old).value_or(std::vector<FolderEntry>());
    return std::all_of(entries.begin(), entries.end(),
                       [&](const FolderEntry& entry) {
                           return Step(files, PathIn(old, entry.name), PathIn(home, entry.name));
                       }) &&
           Step(files, Taking(home), Done(home));
}

// The old files have been moved. What still has the name of a restored file is a link that leads nowhere, or
// a file that another program has made since.
bool PutNew(Files& files, const QString& home) {
    const QString folder = Putting(home);
    const std::optional<std::vector<FolderEntry>> entries = files.ListFolder(folder);
    return entries && std::all_of(entries->begin(), entries->end(), [&](const FolderEntry& entry) {
               if (entry.name == kOld || entry.name == kNames) {
                   return true;
               }
               const QString place = PathIn(home, entry.name);
               files.Remove(place);
               return Step(files, PathIn(folder, entry.name), place);
           });
}

// Takes every step that is left.
Exchanged Advance(Files& files, const QString& home) {
    if (files.IsFolder(Taking(home)) &&
        (!TakeOld(files, home) || !Step(files, Taking(home), Putting(home)))) {
        return PutBack(files, home) ? Exchanged::kOld : Exchanged::kMixed;
    }
    files.RemoveTree(Done(home));
    if (files.IsFolder(Putting(home)) && (!PutNew(files, home) || !Step(files, Putting(home), Done(home)))) {
        return Exchanged::kMixed;
    }
    return Exchanged::kNew;
}

} // namespace

QString RestoreInPreparation(const QString& home) {
    return PathIn(home, QStringLiteral(".restore.new"));
}

bool HoldsRestore(Files& files, const QString& home) {
    return files.IsFolder(RestoreInPreparation(home)) || files.IsFolder(Taking(home)) ||
           files.IsFolder(Putting(home));
}

Exchanged ExchangeRestored(Files& files, const QString& home, const QStringList& names) {
    const QString prepared = RestoreInPreparation(home);
    const bool isPrepared = files.Write(PathIn(prepared, kNames), BytesOfPath(names.join(u'\n')), true) &&
                            files.MakeFolder(PathIn(prepared, kOld)) && files.SyncFolder(prepared) &&
                            files.Rename(prepared, Taking(home));
    files.SyncFolder(home);
    const Exchanged result = isPrepared ? Advance(files, home) : Exchanged::kOld;
    TidyHome(files, home);
    return result;
}

bool TidyHome(Files& files, const QString& home) {
    if (Advance(files, home) == Exchanged::kMixed) {
        return false;
    }
    for (const QString& rest : {Done(home), RestoreInPreparation(home), CopyInProgress(home)}) {
        files.RemoveTree(rest);
    }
    return true;
}
