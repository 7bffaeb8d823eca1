// The real file system.
#pragma once

#include "platform/files.h"

// Implements every operation with system calls. A path that holds a NUL character names nothing.
class PosixFiles : public Files {
public:
    std::optional<QByteArray> ReadWhole(const QString& path, std::int64_t limit) override;
    std::unique_ptr<OpenFile> Open(const QString& path) override;
    std::optional<FileIdentity> Identity(const QString& path) override;
    bool IsFolder(const QString& path) override;
    std::optional<std::vector<FolderEntry>> ListFolder(const QString& path) override;
    // Reads on a thread of its own. When `wait` gives up, the thread is left to itself.
    std::optional<std::vector<FolderEntry>> ListSlowFolder(const QString& path,
                                                           const std::function<bool()>& wait) override;
    // Mounted media are what is mounted below /media, /run/media and /mnt.
    QStringList Drives() override;
    bool Write(const QString& path, const QByteArray& bytes, bool synced) override;
    bool Append(const QString& path, const QByteArray& bytes) override;
    void CopyRights(const QString& model, const QString& target) override;
    bool Rename(const QString& from, const QString& to) override;
    bool Remove(const QString& path) override;
    bool RemoveTree(const QString& path) override;
    bool SyncFile(const QString& path) override;
    bool SyncFolder(const QString& path) override;
    // Also returns true when the folder exists already.
    bool MakeFolder(const QString& path) override;
    QString RealPath(const QString& path) override;
};
