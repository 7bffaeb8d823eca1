// Handing file operations on, unless they are to fail.
#include "platform/simulated/simulated_files.h"

std::optional<QByteArray> SimulatedFiles::ReadWhole(const QString& path, std::int64_t limit) {
    return fails_("ReadWhole") ? std::nullopt : real_.ReadWhole(path, limit);
}

std::unique_ptr<OpenFile> SimulatedFiles::Open(const QString& path) {
    return fails_("Open") ? nullptr : real_.Open(path);
}

std::optional<FileIdentity> SimulatedFiles::Identity(const QString& path) {
    return fails_("Identity") ? std::nullopt : real_.Identity(path);
}

bool SimulatedFiles::IsFolder(const QString& path) {
    return !fails_("IsFolder") && real_.IsFolder(path);
}

std::optional<std::vector<FolderEntry>> SimulatedFiles::ListFolder(const QString& path) {
    return fails_("ListFolder") ? std::nullopt : real_.ListFolder(path);
}

bool SimulatedFiles::Write(const QString& path, const QByteArray& bytes, bool synced) {
    return !fails_("Write") && real_.Write(path, bytes, synced);
}

bool SimulatedFiles::Append(const QString& path, const QByteArray& bytes) {
    return !fails_("Append") && real_.Append(path, bytes);
}

bool SimulatedFiles::Rename(const QString& from, const QString& to) {
    return !fails_("Rename") && real_.Rename(from, to);
}

bool SimulatedFiles::Remove(const QString& path) {
    return !fails_("Remove") && real_.Remove(path);
}

bool SimulatedFiles::SyncFolder(const QString& path) {
    return !fails_("SyncFolder") && real_.SyncFolder(path);
}

bool SimulatedFiles::MakeFolder(const QString& path) {
    return !fails_("MakeFolder") && real_.MakeFolder(path);
}
