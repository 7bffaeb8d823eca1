// The real file system, its operations able to fail on demand.
#pragma once

#include "platform/files.h"

#include <functional>
#include <utility>

// Hands every operation on. A failing one does nothing and answers as its port says of a failure.
class SimulatedFiles : public Files {
public:
    // `fails` is called at each operation that can fail, with its name. The real files outlive this object.
    SimulatedFiles(Files& real, std::function<bool(const char* operation)> fails)
        : real_(real), fails_(std::move(fails)) {}

    std::optional<QByteArray> ReadWhole(const QString& path, std::int64_t limit) override;
    std::unique_ptr<OpenFile> Open(const QString& path) override;
    std::optional<FileIdentity> Identity(const QString& path) override;
    bool IsFolder(const QString& path) override;
    std::optional<std::vector<FolderEntry>> ListFolder(const QString& path) override;
    bool Write(const QString& path, const QByteArray& bytes, bool synced) override;
    bool Append(const QString& path, const QByteArray& bytes) override;
    void CopyRights(const QString& model, const QString& target) override { real_.CopyRights(model, target); }
    bool Rename(const QString& from, const QString& to) override;
    bool Remove(const QString& path) override;
    bool SyncFolder(const QString& path) override;
    bool MakeFolder(const QString& path) override;
    QString RealPath(const QString& path) override { return real_.RealPath(path); }

private:
    Files& real_;
    std::function<bool(const char* operation)> fails_;
};
