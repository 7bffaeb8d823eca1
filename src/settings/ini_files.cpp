// Caching parsed INI files, and writing them back completely.
#include "settings/ini_files.h"

#include "platform/files.h"
#include "settings/safe_write.h"

#include <algorithm>
#include <cstdint>
#include <utility>

namespace {

// A larger file reads as an empty one; real files have a few kilobytes.
constexpr std::int64_t kLongestFile = std::int64_t{16} * 1024 * 1024;

} // namespace

struct IniFiles::Copy {
    QString path;
    IniFile file;
    // The file that the copy was made from; empty when there was none.
    std::optional<FileIdentity> identity;
    // The file exists but could not be read. It must not be overwritten with the empty copy.
    bool unreadable = false;
};

IniFiles::IniFiles() = default;
IniFiles::~IniFiles() = default;

IniFiles::Copy& IniFiles::Fresh(Files& files, const QString& path) {
    auto found =
        std::find_if(copies_.begin(), copies_.end(), [&](const auto& copy) { return copy->path == path; });
    if (found == copies_.end()) {
        copies_.push_back(std::make_unique<Copy>());
        copies_.back()->path = path;
        found = copies_.end() - 1;
    }
    Copy& copy = **found;
    const std::optional<FileIdentity> identity = files.Identity(path);
    if (identity != copy.identity || copy.unreadable) {
        std::optional<QByteArray> bytes;
        if (identity) {
            bytes = files.ReadWhole(path, kLongestFile);
        }
        copy.unreadable = identity && !bytes;
        copy.identity = identity;
        copy.file = IniFile(bytes.value_or(QByteArray()));
    }
    return copy;
}

const IniFile& IniFiles::Open(Files& files, const QString& path) {
    return Fresh(files, path).file;
}

bool IniFiles::Write(Files& files, const QString& path, const QString& section, const QString& key,
                     const QString& value) {
    return Change(files, path, [&](IniFile& file) { file.SetValue(section, key, value); });
}

bool IniFiles::Change(Files& files, const QString& path, const std::function<void(IniFile&)>& change) {
    Copy& copy = Fresh(files, path);
    const QByteArray before = copy.file.Bytes();
    try {
        change(copy.file);
    } catch (...) {
        WriteBack(files, copy, before);
        throw;
    }
    return WriteBack(files, copy, before);
}

// Writes a changed copy. If that fails, the copy gets its old content back.
bool IniFiles::WriteBack(Files& files, Copy& copy, const QByteArray& before) {
    if (copy.file.Bytes() == before) {
        return true;
    }
    // A file that can be read although its identity cannot be determined must not be treated as missing.
    const bool lost = copy.unreadable || (!copy.identity && files.ReadWhole(copy.path, kLongestFile));
    if (lost || !WriteFileSafely(files, copy.path, copy.file.Bytes())) {
        copy.file = IniFile(before);
        return false;
    }
    copy.identity = files.Identity(copy.path);
    return true;
}
