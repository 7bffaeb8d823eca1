// The tasks that need no display: setting the music folder, writing and restoring a backup.
#include "app/home/home_task.h"

#include "app/home/backup.h"
#include "app/home/folder_owner.h"
#include "app/home/setup.h"
#include "app/start/standard_error.h"
#include "core/path_text.h"
#include "platform/posix/folder_lock.h"
#include "platform/posix/posix_files.h"
#include "platform/posix/termination_signals.h"
#include "settings/home_folder.h"
#include "settings/home_restore.h"

#include <cstdio>

namespace {

constexpr int kDone = 0;
constexpr int kFailed = 1;
constexpr int kWrongCommandLine = 2;
constexpr std::chrono::seconds kPatience{4};

int Fail(const QString& words) {
    TellStandardError(words);
    return TerminationSignal() != 0 ? TerminationExitCode() : kFailed;
}

void Say(const QString& words) {
    std::printf("%s\n", BytesOfPath(words).constData());
}

// The path from the root, with the links in its folder resolved: a name of a file that need not exist.
QString AbsoluteFile(Files& files, const QString& path) {
    const QString absolute = path.startsWith(u'/') ? path : PathIn(files.RealPath(QStringLiteral(".")), path);
    return PathIn(files.RealPath(FolderOfPath(absolute)), NameOfPath(absolute));
}

bool IsIn(const QString& path, const QString& folder) {
    return (path + u'/').startsWith(folder.endsWith(u'/') ? folder : folder + u'/');
}

// The words that the operator types again to use the same application folder.
QString HomeOption(const CommandLine& line) {
    return line.home ? QStringLiteral(" --home \"%1\"").arg(*line.home) : QString();
}

int Setup(Files& files, const CommandLine& line, const AppFolderResult& found) {
    const SetupResult result = SetMusicFolder(files, found.folder, found.share, *line.setupFolder, kPatience);
    if (!result.error.isEmpty()) {
        return Fail(result.error);
    }
    Say(QStringLiteral("The music folder of \"%1\" is \"%2\": %3%4 music files and videos.")
            .arg(found.folder, result.folder, result.isMore ? QStringLiteral("more than ") : QString())
            .arg(result.tracks));
    for (const QString& theme : ThemesThatHideDelivered(files, found.folder, found.share)) {
        Say(QStringLiteral(
                "The theme \"%1\" is the copy in \"%2\"; without that folder the delivered one is used.")
                .arg(theme, PathIn(PathIn(found.folder, QStringLiteral("themes")), theme)));
    }
    return kDone;
}

int Backup(Files& files, const CommandLine& line, const AppFolderResult& found) {
    const QString path = AbsoluteFile(files, *line.backupFile);
    if (IsIn(path, found.folder)) {
        return Fail(QStringLiteral("\"%1\" is in the application folder; choose another place for the backup")
                        .arg(path));
    }
    const QString error = WriteBackup(files, found.folder, path);
    // Restoring does not wait for a backup that began while a jukebox was running.
    if (!error.isEmpty() || HoldsRestore(files, found.folder)) {
        return Fail(error.isEmpty()
                        ? QStringLiteral("the application folder was restored during the backup; try again")
                        : error);
    }
    Say(QStringLiteral("\"%1\" is backed up to \"%2\".").arg(found.folder, path));
    return kDone;
}

int Restore(Files& files, const CommandLine& line, const AppFolderResult& found, OpenFile& archive) {
    const QString error = RestoreBackup(files, found.folder, archive);
    if (!error.isEmpty()) {
        return Fail(QStringLiteral("\"%1\": %2").arg(*line.restoreFile, error));
    }
    Say(QStringLiteral("\"%1\" is restored to \"%2\". To undo this: vantorix --restore \"%3\"%4")
            .arg(*line.restoreFile, found.folder, BackupBeforeRestore(found.folder), HomeOption(line)));
    return kDone;
}

// Opens the backup before the rights of another user are taken, and checks all of it.
QString OpenBackup(Files& files, const QString& path, std::unique_ptr<OpenFile>& archive) {
    const std::unique_ptr<OpenFile> checked = files.Open(path);
    archive = files.Open(path);
    if (!checked || !archive) {
        return QStringLiteral("\"%1\" cannot be read").arg(path);
    }
    const QString fault = FaultOfBackup(*checked);
    return fault.isEmpty() ? fault : QStringLiteral("\"%1\": %2").arg(path, fault);
}

int RunOn(Files& files, const CommandLine& line, const AppFolderResult& found, OpenFile* archive) {
    const FolderLock lock(found.folder);
    if (lock.IsTaken() && !line.backupFile) {
        return Fail(HomeInUse(found.folder, lock.Holder()));
    }
    if (!lock.IsTaken() && !TidyHome(files, found.folder)) {
        return Fail(
            QStringLiteral("a restore of \"%1\" was interrupted and cannot be completed").arg(found.folder));
    }
    if (line.setupFolder) {
        return Setup(files, line, found);
    }
    return line.backupFile ? Backup(files, line, found) : Restore(files, line, found, *archive);
}

} // namespace

std::optional<int> RunHomeTask(const CommandLine& line, const AppFolderSources& sources) {
    if (!line.setupFolder && !line.backupFile && !line.restoreFile) {
        return std::nullopt;
    }
    WatchTerminationSignals();
    PosixFiles files;
    std::unique_ptr<OpenFile> archive;
    if (line.restoreFile) {
        const QString fault = OpenBackup(files, *line.restoreFile, archive);
        if (!fault.isEmpty()) {
            return Fail(fault);
        }
    }
    const QString place = PlaceOfAppFolder(files, sources);
    if (!line.backupFile && !BecomeOwnerOf(place)) {
        return Fail(QStringLiteral("the rights of the owner of \"%1\" cannot be taken").arg(place));
    }
    const AppFolderResult found = FindAppFolder(files, sources);
    if (!found.error.isEmpty()) {
        Fail(found.error);
        return line.home ? kWrongCommandLine : kFailed;
    }
    return RunOn(files, line, found, archive.get());
}
