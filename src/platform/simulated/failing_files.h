// A file system whose chosen operations fail, at once or from a certain call on.
#pragma once

#include "platform/files.h"

#include <QString>

#include <map>
#include <string>

// Hands every operation on to another file system, unless it is to fail: then it does nothing and answers as
// the port says of a failure. CopyRights and RealPath know no failure.
class FailingFiles : public Files {
public:
    static constexpr int kEndless = 1'000'000'000;

    // `inner` outlives this object.
    explicit FailingFiles(Files& inner) : inner_(inner) {}

    // Fails the operation of that name ("Write", "Rename", ...) `times` times, the first time at its
    // `call`-th call from now on, counted from 1.
    void Fail(const std::string& operation, int call = 1, int times = kEndless);
    void FailNothing() { plans_.clear(); }
    // How often an operation has been called, failures included.
    int Calls(const std::string& operation) const;

    std::optional<QByteArray> ReadWhole(const QString& path, std::int64_t limit) override;
    std::unique_ptr<OpenFile> Open(const QString& path) override;
    std::optional<FileIdentity> Identity(const QString& path) override;
    bool IsFolder(const QString& path) override;
    std::optional<std::vector<FolderEntry>> ListFolder(const QString& path) override;
    bool Write(const QString& path, const QByteArray& bytes, bool synced) override;
    bool Append(const QString& path, const QByteArray& bytes) override;
    void CopyRights(const QString& model, const QString& target) override;
    bool Rename(const QString& from, const QString& to) override;
    bool Remove(const QString& path) override;
    bool SyncFolder(const QString& path) override;
    bool MakeFolder(const QString& path) override;
    QString RealPath(const QString& path) override;

private:
    // Which calls of an operation fail, counted from its first call.
    struct Plan {
        int first = 0;
        int times = 0;
    };
    // Counts a call, and tells whether it is one that fails.
    bool Fails(const std::string& operation);

    Files& inner_;
    std::map<std::string, Plan> plans_;
    std::map<std::string, int> calls_;
};
