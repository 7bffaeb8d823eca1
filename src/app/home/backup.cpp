// Writing and restoring backups of an application folder.
#include "app/home/backup.h"

#include "app/home/home_contents.h"
#include "app/home/tar_format.h"
#include "core/path_text.h"
#include "platform/files.h"
#include "platform/posix/termination_signals.h"
#include "settings/home_restore.h"

#include <QDateTime>

#include <algorithm>

namespace {

const QByteArray kManifest = kManifestName;

QString CannotRead(const QString& path) {
    return QStringLiteral("\"%1\" cannot be read, or is larger than %2 bytes")
        .arg(path)
        .arg(kLargestTarEntry);
}

QString CannotWrite(const QString& path) {
    return QStringLiteral("\"%1\" cannot be written; the disk may be full or read-only").arg(path);
}

// Throws ArchiveFault after a signal. Between two entries nothing is in use yet, so everything can be
// removed.
void EndIfInterrupted() {
    if (TerminationSignal() != 0) {
        throw ArchiveFault(QStringLiteral("interrupted; nothing has been changed"));
    }
}

// Writes the archive entry by entry. Throws ArchiveFault.
class BackupWriter {
public:
    BackupWriter(Files& files, QString home, QString path)
        : files_(files), home_(std::move(home)), path_(std::move(path)) {
        Check(files_.Write(path_, QByteArray(), false));
    }

    void AddFile(const QString& name) {
        const QString path = PathIn(home_, name);
        const std::optional<QByteArray> bytes = files_.ReadWhole(path, kLargestTarEntry);
        if (!bytes) {
            throw ArchiveFault(CannotRead(path));
        }
        Add({BytesOfPath(name), false, *bytes});
    }
    void AddFolder(const QString& name) {
        std::optional<std::vector<FolderEntry>> entries = files_.ListFolder(PathIn(home_, name));
        if (!entries) {
            throw ArchiveFault(CannotRead(PathIn(home_, name)));
        }
        std::sort(entries->begin(), entries->end(),
                  [](const FolderEntry& a, const FolderEntry& b) { return a.name < b.name; });
        Add({BytesOfPath(name), true, {}});
        for (const FolderEntry& entry : *entries) {
            AddEntry(PathIn(name, entry.name), entry);
        }
    }
    void Finish() {
        const QByteArray manifest = TarRecords({kManifest, false, contents_.Manifest()}, Now());
        Check(files_.Append(path_, manifest + TarEnd()) && files_.SyncFile(path_));
    }

private:
    static std::int64_t Now() { return QDateTime::currentSecsSinceEpoch(); }
    void AddEntry(const QString& name, const FolderEntry& entry) {
        // A running jukebox is writing a file.
        if (entry.name.startsWith(u'.') && entry.name.endsWith(QStringLiteral(".new"))) {
            return;
        }
        if (entry.isFolder) {
            AddFolder(name);
        } else {
            AddFile(name);
        }
    }
    void Add(const TarEntry& entry) {
        EndIfInterrupted();
        contents_.Add(entry);
        Check(files_.Append(path_, TarRecords(entry, Now())));
    }
    void Check(bool isWritten) const {
        if (!isWritten) {
            throw ArchiveFault(CannotWrite(path_));
        }
    }

    Files& files_;
    QString home_;
    QString path_;
    Contents contents_;
};

void AddAll(Files& files, const QString& home, BackupWriter& writer) {
    for (const QString& name : BackedUpFiles()) {
        if (files.Identity(PathIn(home, name))) {
            writer.AddFile(name);
        }
    }
    for (const QString& name : BackedUpFolders()) {
        if (files.IsFolder(PathIn(home, name))) {
            writer.AddFolder(name);
        }
    }
    writer.Finish();
}

// Writes the archive under its own name, with nothing in place of it until it is complete.
void WriteArchive(Files& files, const QString& home, const QString& path) {
    const QString config = PathIn(home, QStringLiteral("config.ini"));
    if (!files.Identity(config)) {
        throw ArchiveFault(
            QStringLiteral("there is nothing to back up: \"%1\" does not exist; start the jukebox once")
                .arg(config));
    }
    BackupWriter writer(files, home, path);
    AddAll(files, home, writer);
}

// Calls `take` with each entry but the manifest, and checks all of them. Throws ArchiveFault.
template <typename Take>
void ReadBackup(OpenFile& archive, const Take& take) {
    TarReader reader(archive);
    Contents contents;
    while (const std::optional<TarEntry> entry = reader.Next()) {
        EndIfInterrupted();
        if (entry->name == kManifest) {
            contents.Check(entry->bytes);
            if (reader.Next()) {
                throw ArchiveFault(
                    QStringLiteral("there is an entry after %1").arg(QString::fromLatin1(kManifest)));
            }
            return;
        }
        contents.Add(*entry);
        take(*entry);
    }
    throw ArchiveFault(QStringLiteral("it is no backup of a jukebox, or not all of one: it has no %1")
                           .arg(QString::fromLatin1(kManifest)));
}

// Makes the restored files in the folder of the preparation.
class Preparation {
public:
    Preparation(Files& files, const QString& home)
        : files_(files), home_(home), folder_(RestoreInPreparation(home)) {
        files_.RemoveTree(folder_);
        MakeFolder(folder_);
        // The jukebox cannot save a playlist without its folder, which an old application folder may lack.
        MakeFolder(PathIn(folder_, QStringLiteral("playlists")));
    }

    void Take(const TarEntry& entry) {
        const QString name = TextOfPath(entry.name);
        const QString place = PathIn(folder_, name);
        if (entry.isFolder) {
            MakeFolder(place);
            return;
        }
        MakeFolder(FolderOfPath(place));
        // On a file system that ignores case, two names of the backup may be the same.
        Check(!files_.Identity(place) && files_.Write(place, entry.bytes, true), place);
        if (files_.Identity(PathIn(home_, name))) {
            files_.CopyRights(PathIn(home_, name), place);
        }
    }
    void Sync() {
        for (const QString& folder : std::as_const(folders_)) {
            Check(files_.SyncFolder(folder), folder);
        }
    }
    const QString& Folder() const { return folder_; }

private:
    void MakeFolder(const QString& folder) {
        if (!folders_.contains(folder)) {
            if (folder != folder_) {
                MakeFolder(FolderOfPath(folder));
            }
            Check(files_.MakeFolder(folder), folder);
            folders_.insert(folder);
        }
    }
    static void Check(bool isDone, const QString& path) {
        if (!isDone) {
            throw ArchiveFault(CannotWrite(path));
        }
    }

    Files& files_;
    QString home_;
    QString folder_;
    QSet<QString> folders_;
};

// Puts the restored files and the backup of the present ones together. Throws ArchiveFault.
void Prepare(Files& files, const QString& home, OpenFile& archive) {
    Preparation preparation(files, home);
    ReadBackup(archive, [&](const TarEntry& entry) { preparation.Take(entry); });
    if (files.Identity(PathIn(home, QStringLiteral("config.ini")))) {
        WriteArchive(files, home, PathIn(preparation.Folder(), NameOfPath(BackupBeforeRestore(home))));
    }
    preparation.Sync();
}

QString FaultOfExchange(Exchanged result, const QString& home) {
    switch (result) {
    case Exchanged::kNew:
        return QString();
    case Exchanged::kOld:
        return QStringLiteral("the files in \"%1\" could not be replaced; nothing has been changed")
            .arg(home);
    case Exchanged::kMixed:
        break;
    }
    return QStringLiteral(
               "the files in \"%1\" have been replaced only in part, because the disk fails; the next "
               "start of the jukebox tries again")
        .arg(home);
}

} // namespace

QString BackupBeforeRestore(const QString& home) {
    return PathIn(home, QStringLiteral("before-restore.tar"));
}

QString WriteBackup(Files& files, const QString& home, const QString& path) {
    const QString folder = FolderOfPath(path);
    const QString temporary = PathIn(folder, u'.' + NameOfPath(path) + QStringLiteral(".new"));
    try {
        files.Remove(temporary);
        WriteArchive(files, home, temporary);
        if (!files.SyncFolder(folder) || !files.Rename(temporary, path)) {
            throw ArchiveFault(CannotWrite(path));
        }
        files.SyncFolder(folder);
    } catch (const ArchiveFault& fault) {
        files.Remove(temporary);
        return fault.text;
    }
    return QString();
}

QString FaultOfBackup(OpenFile& archive) {
    try {
        ReadBackup(archive, [](const TarEntry&) {});
    } catch (const ArchiveFault& fault) {
        return fault.text;
    }
    return QString();
}

QString RestoreBackup(Files& files, const QString& home, OpenFile& archive) {
    try {
        Prepare(files, home, archive);
    } catch (const ArchiveFault& fault) {
        files.RemoveTree(RestoreInPreparation(home));
        return fault.text;
    }
    return FaultOfExchange(ExchangeRestored(files, home, BackedUpFiles() + BackedUpFolders()), home);
}
