// The file system of the cabinet: keeps the log from filling the disk.
#pragma once

#include "platform/posix/posix_files.h"

#include <cstdint>

// How the log is treated; every other file is treated as PosixFiles does.
struct LogLimits {
    // The size in bytes at which the log is renamed; 0 for no limit.
    std::int64_t largest = 0;
    // Lines that cannot be written are lost without an error. Otherwise such a line ends the handler, and the
    // cabinet starts again.
    bool mayLoseLines = false;
};

class LogFiles : public PosixFiles {
public:
    LogFiles(QString log, LogLimits limits);

    bool Write(const QString& path, const QByteArray& bytes, bool synced) override;
    // A log that would become larger than the limit is renamed to ".1" first, replacing an older one.
    bool Append(const QString& path, const QByteArray& bytes) override;

    // Renames the log, so that the next start does not empty it.
    void KeepLog();

private:
    std::int64_t SizeOfLog();

    const QString log_;
    const LogLimits limits_;
    // The size as far as this process has made it; negative before the first line.
    std::int64_t size_ = -1;
};
