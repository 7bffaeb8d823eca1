// Counting file operations, and failing those that were asked to fail.
#include "platform/simulated/failing_files.h"

void FailingFiles::Fail(const std::string& operation, int call, int times) {
    plans_[operation] = {Calls(operation) + call, times};
}

int FailingFiles::Calls(const std::string& operation) const {
    const auto found = calls_.find(operation);
    return found == calls_.end() ? 0 : found->second;
}

bool FailingFiles::Fails(const std::string& operation) {
    const int call = ++calls_[operation];
    const auto plan = plans_.find(operation);
    return plan != plans_.end() && call >= plan->second.first &&
           call - plan->second.first < plan->second.times;
}

std::optional<QByteArray> FailingFiles::ReadWhole(const QString& path, std::int64_t limit) {
    return Fails("ReadWhole") ? std::nullopt : inner_.ReadWhole(path, limit);
}

std::unique_ptr<OpenFile> FailingFiles::Open(const QString& path) {
    return Fails("Open") ? nullptr : inner_.Open(path);
}

std::optional<FileIdentity> FailingFiles::Identity(const QString& path) {
    return Fails("Identity") ? std::nullopt : inner_.Identity(path);
}

bool FailingFiles::IsFolder(const QString& path) {
    return !Fails("IsFolder") && inner_.IsFolder(path);
}

std::optional<std::vector<FolderEntry>> FailingFiles::ListFolder(const QString& path) {
    return Fails("ListFolder") ? std::nullopt : inner_.ListFolder(path);
}

bool FailingFiles::Write(const QString& path, const QByteArray& bytes, bool synced) {
    return !Fails("Write") && inner_.Write(path, bytes, synced);
}

bool FailingFiles::Append(const QString& path, const QByteArray& bytes) {
    return !Fails("Append") && inner_.Append(path, bytes);
}

void FailingFiles::CopyRights(const QString& model, const QString& target) {
    inner_.CopyRights(model, target);
}

bool FailingFiles::Rename(const QString& from, const QString& to) {
    return !Fails("Rename") && inner_.Rename(from, to);
}

bool FailingFiles::Remove(const QString& path) {
    return !Fails("Remove") && inner_.Remove(path);
}

bool FailingFiles::SyncFolder(const QString& path) {
    return !Fails("SyncFolder") && inner_.SyncFolder(path);
}

bool FailingFiles::MakeFolder(const QString& path) {
    return !Fails("MakeFolder") && inner_.MakeFolder(path);
}

QString FailingFiles::RealPath(const QString& path) {
    return inner_.RealPath(path);
}
