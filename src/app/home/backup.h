// Backups of an application folder: one tar archive with its settings, counts, playlists and own themes.
#pragma once

#include <QString>

// A signal (see TerminationSignal) ends each of these between two entries of the archive, as a failure. An
// exchange of files that has begun is completed.

struct Files;
struct OpenFile;

// Writes a backup of the application folder to a file, in one step like WriteFileSafely. The jukebox may be
// running. Returns what went wrong, empty when the backup is complete and on the disk; nothing is left
// otherwise, and a file of that name is unchanged.
QString WriteBackup(Files& files, const QString& home, const QString& path);

// Reads a whole backup and checks it. Returns what is wrong with it, empty when it can be restored.
QString FaultOfBackup(OpenFile& archive);

// Returns the file in the application folder to which a restore saves the state before it.
QString BackupBeforeRestore(const QString& home);

// Replaces settings, counts, playlists and own themes by those of a backup, after saving the present ones to
// BackupBeforeRestore. Other files of the folder are not changed. Requires the lock of the application
// folder. `archive` is at its start. A restore that is interrupted leaves everything as it was, or is
// completed by TidyHome. Returns what went wrong, empty when the backup is restored.
QString RestoreBackup(Files& files, const QString& home, OpenFile& archive);
