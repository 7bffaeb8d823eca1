// Exchanging the files of an application folder for restored ones, in one step as seen by a jukebox.
#pragma once

#include <QString>
#include <QStringList>

struct Files;

// Where the restored files are put together, in the application folder itself: it may be the only folder
// there that may be written to, or a file system of its own.
QString RestoreInPreparation(const QString& home);

// What an application folder holds after an exchange.
enum class Exchanged {
    kNew,
    // Something could not be moved away, for instance a mount point; what had been moved is back.
    kOld,
    // Both, because of a failing disk. TidyHome tries again.
    kMixed,
};

// Puts everything in RestoreInPreparation in place. What the application folder has of `names` is removed,
// also if there is no restored file or folder for it. If the exchange is interrupted, TidyHome completes it.
Exchanged ExchangeRestored(Files& files, const QString& home, const QStringList& names);

// Completes an exchange that was interrupted, and removes what an interrupted preparation or copy has left.
// Requires the lock of the application folder. Returns false when the folder holds old and new files, because
// the exchange still cannot be completed; it must not be used then.
bool TidyHome(Files& files, const QString& home);

// Whether a restore is in progress or was interrupted.
bool HoldsRestore(Files& files, const QString& home);
