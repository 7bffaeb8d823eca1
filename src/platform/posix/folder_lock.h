// A lock that reserves a folder for one process.
#pragma once

#include <QString>

// Locks the folder itself, so no file is left in it. The system releases the lock however the process ends.
// Programs that the process starts do not inherit it.
class FolderLock {
public:
    // Tries once, without waiting.
    explicit FolderLock(const QString& folder);
    ~FolderLock();
    FolderLock(const FolderLock&) = delete;
    FolderLock& operator=(const FolderLock&) = delete;

    // True when another process has locked the folder. Always false on a file system without locks and for a
    // folder that cannot be opened.
    bool IsTaken() const { return taken_; }
    // The process that has locked the folder, for instance "vantorix, process 1234"; empty when the system
    // does not say.
    QString Holder() const;

private:
    int descriptor_ = -1;
    bool taken_ = false;
};

// Returns the holder of a folder's lock like FolderLock::Holder, without locking the folder. Empty when
// nothing has locked it or the system does not say.
QString HolderOfFolder(const QString& folder);
