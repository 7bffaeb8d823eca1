// Handing file operations on, unless they are to fail.
#include "platform/simulated/simulated_files.h"

#include "platform/simulated/failures.h"

std::optional<QByteArray> SimulatedFiles::ReadWhole(const QString& path, std::int64_t limit) {
    return failures_.Has("ReadWhole") ? std::nullopt : real_.ReadWhole(path, limit);
}

std::unique_ptr<OpenFile> SimulatedFiles::Open(const QString& path) {
    return failures_.Has("Open") ? nullptr : real_.Open(path);
}

std::optional<FileIdentity> SimulatedFiles::Identity(const QString& path) {
    return failures_.Has("Identity") ? std::nullopt : real_.Identity(path);
}

bool SimulatedFiles::IsFolder(const QString& path) {
    return !failures_.Has("IsFolder") && real_.IsFolder(path);
}

std::optional<std::vector<FolderEntry>> SimulatedFiles::ListFolder(const QString& path) {
    return failures_.Has("ListFolder") ? std::nullopt : real_.ListFolder(path);
}

bool SimulatedFiles::Write(const QString& path, const QByteArray& bytes, bool synced) {
    return !failures_.Has("Write") && real_.Write(path, bytes, synced);
}

bool SimulatedFiles::Append(const QString& path, const QByteArray& bytes) {
    return !failures_.Has("Append") && real_.Append(path, bytes);
}

bool SimulatedFiles::Rename(const QString& from, const QString& to) {
    return !failures_.Has("Rename") && real_.Rename(from, to);
}

bool SimulatedFiles::Remove(const QString& path) {
    return !failures_.Has("Remove") && real_.Remove(path);
}

bool SimulatedFiles::SyncFolder(const QString& path) {
    return !failures_.Has("SyncFolder") && real_.SyncFolder(path);
}

bool SimulatedFiles::MakeFolder(const QString& path) {
    return !failures_.Has("MakeFolder") && real_.MakeFolder(path);
}
