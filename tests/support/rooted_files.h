// A file system whose root is a folder of the test.
#pragma once

#include "platform/files.h"

#include <QString>

#include <memory>
#include <optional>
#include <vector>

// Forwards every operation with the path below `root`, so that a test can use "/" and everything in it.
class RootedFiles : public Files {
public:
    // `real` outlives this object; `root` has no separator at its end.
    RootedFiles(Files& real, QString root) : real_(real), root_(std::move(root)) {}

    std::optional<QByteArray> ReadWhole(const QString& path, std::int64_t limit) override {
        return real_.ReadWhole(root_ + path, limit);
    }
    std::unique_ptr<OpenFile> Open(const QString& path) override { return real_.Open(root_ + path); }
    std::optional<FileIdentity> Identity(const QString& path) override {
        return real_.Identity(root_ + path);
    }
    bool IsFolder(const QString& path) override { return real_.IsFolder(root_ + path); }
    std::optional<std::vector<FolderEntry>> ListFolder(const QString& path) override {
        return real_.ListFolder(root_ + path);
    }
    bool Write(const QString& path, const QByteArray& bytes, bool synced) override {
        return real_.Write(root_ + path, bytes, synced);
    }
    bool Append(const QString& path, const QByteArray& bytes) override {
        return real_.Append(root_ + path, bytes);
    }
    void CopyRights(const QString& model, const QString& target) override {
        real_.CopyRights(root_ + model, root_ + target);
    }
    bool Rename(const QString& from, const QString& to) override {
        return real_.Rename(root_ + from, root_ + to);
    }
    bool Remove(const QString& path) override { return real_.Remove(root_ + path); }
    bool RemoveTree(const QString& path) override { return real_.RemoveTree(root_ + path); }
    bool SyncFile(const QString& path) override { return real_.SyncFile(root_ + path); }
    bool SyncFolder(const QString& path) override { return real_.SyncFolder(root_ + path); }
    bool MakeFolder(const QString& path) override { return real_.MakeFolder(root_ + path); }
    // The root holds no links.
    QString RealPath(const QString& path) override { return path; }

private:
    Files& real_;
    QString root_;
};
