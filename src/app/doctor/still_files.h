// The file system without a way to change it.
#pragma once

#include "platform/files.h"

// Forwards everything that reads. Operations that change something do nothing and report success, so that the
// jukebox's routines work as usual and the log stays as it is. Also keeps the last folder that was listed:
// the checks of a folder all see the same content.
class StillFiles : public Files {
public:
    // The real files outlive this object.
    explicit StillFiles(Files& real) : real_(real) {}

    std::optional<QByteArray> ReadWhole(const QString& path, std::int64_t limit) override {
        return real_.ReadWhole(path, limit);
    }
    std::unique_ptr<OpenFile> Open(const QString& path) override { return real_.Open(path); }
    std::optional<FileIdentity> Identity(const QString& path) override { return real_.Identity(path); }
    bool IsFolder(const QString& path) override { return real_.IsFolder(path); }
    std::optional<std::vector<FolderEntry>> ListFolder(const QString& path) override;
    QStringList Drives() override { return real_.Drives(); }
    QString RealPath(const QString& path) override { return real_.RealPath(path); }

    bool Write(const QString&, const QByteArray&, bool) override { return true; }
    bool Append(const QString&, const QByteArray&) override { return true; }
    void CopyRights(const QString&, const QString&) override {}
    bool Rename(const QString&, const QString&) override { return true; }
    bool Remove(const QString&) override { return true; }
    bool RemoveTree(const QString&) override { return true; }
    bool SyncFile(const QString&) override { return true; }
    bool SyncFolder(const QString&) override { return true; }
    bool MakeFolder(const QString&) override { return true; }

private:
    Files& real_;
    QString listedPath_;
    std::optional<std::vector<FolderEntry>> listed_;
};
