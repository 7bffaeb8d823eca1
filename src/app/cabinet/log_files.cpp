// Renaming a large log, and going on without one.
#include "app/cabinet/log_files.h"

#include <utility>

LogFiles::LogFiles(QString log, LogLimits limits) : log_(std::move(log)), limits_(limits) {}

std::int64_t LogFiles::SizeOfLog() {
    if (size_ < 0) {
        const std::optional<FileIdentity> identity = Identity(log_);
        size_ = identity ? identity->size : 0;
    }
    return size_;
}

bool LogFiles::Write(const QString& path, const QByteArray& bytes, bool synced) {
    const bool done = PosixFiles::Write(path, bytes, synced);
    if (path != log_) {
        return done;
    }
    size_ = done ? bytes.size() : 0;
    return done || limits_.mayLoseLines;
}

bool LogFiles::Append(const QString& path, const QByteArray& bytes) {
    if (path != log_) {
        return PosixFiles::Append(path, bytes);
    }
    if (limits_.largest > 0 && SizeOfLog() + bytes.size() > limits_.largest) {
        KeepLog();
    }
    const bool done = PosixFiles::Append(path, bytes);
    size_ = SizeOfLog() + (done ? bytes.size() : 0);
    return done || limits_.mayLoseLines;
}

void LogFiles::KeepLog() {
    // A log that cannot be renamed must not grow either.
    if (!Rename(log_, log_ + QStringLiteral(".1"))) {
        PosixFiles::Write(log_, QByteArray(), false);
    }
    size_ = 0;
}
