// Calling the real files, fonts, pictures and compression unless the call is to fail.
#include "platform/simulated/simulated_resources.h"

#include "platform/simulated/calls.h"

namespace {

constexpr std::int64_t kLargestFont = 64 << 20;
// zlib's error number for damaged data.
constexpr int kDataError = -3;

} // namespace

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

int SimulatedFonts::AddFontResource(const QString& path) {
    record_.Add({QStringLiteral("AddFontResource"), path});
    if (failures_.Has("AddFontResource")) {
        return 0;
    }
    const std::optional<QByteArray> bytes = files_.ReadWhole(path, kLargestFont);
    return bytes ? registered_.Register(*bytes) : 0;
}

std::unique_ptr<SystemPicture> SimulatedPictures::OleLoadPicture(std::span<const std::uint8_t> bytes) {
    return failures_.Has("OleLoadPicture") ? nullptr : real_.OleLoadPicture(bytes);
}

bool SimulatedZlib::Has(const char* routine) {
    return !failures_.Has(routine) && real_.Has(routine);
}

int NoZlib::Uncompress(std::span<std::uint8_t> /*target*/, std::size_t& written,
                       std::span<const std::uint8_t> /*source*/) {
    written = 0;
    return kDataError;
}

std::uint32_t NoZlib::Crc32(std::uint32_t start, std::span<const std::uint8_t> /*bytes*/) {
    return start;
}
