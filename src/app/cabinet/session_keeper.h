// The file that keeps credits and queue, written whenever they change.
#pragma once

#include "app/cabinet/kept_session.h"

#include <QString>

#include <functional>
#include <optional>
#include <vector>

struct Files;

// Keeps "session.json" in the application folder in step with the form, and remembers in "session.crash" that
// the program crashed. Both are gone after an orderly end.
class SessionKeeper {
public:
    // `report` receives a line for the log.
    SessionKeeper(Files& files, const QString& appFolder, std::function<void(const QString&)> report);

    // Takes over what the run before has left: reads the file, blames the first entry for a crash, and takes
    // out what has stopped the program twice. Returns nothing when there is nothing to restore.
    std::optional<KeptSession> TakeOver();

    // Writes the file when there is something else to keep than before.
    void Follow(const Form_Main& form);
    // Blames an entry of the session for a stop, if `detail` of the error names its path.
    void BlameFor(const QString& detail);
    // Removes the file: the next start begins without credits and queue.
    void Forget();

private:
    void Save();

    Files& files_;
    const QString path_;
    const QString crashPath_;
    const std::function<void(const QString&)> report_;
    KeptSession session_;
    bool failed_ = false;
};

// Notes in the file when a signal that follows a fault (SIGSEGV, SIGABRT, SIGBUS, SIGFPE, SIGILL) ends the
// process. Call it once. Does nothing when the file cannot be created.
void NoteCrashesIn(const QString& path);
