// Reading folders with system calls (POSIX.1-2017) and recognising those that were visited.
#include "app/doctor/library_walk.h"

#include "core/path_text.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <map>
#include <memory>
#include <optional>
#include <string_view>
#include <utility>

namespace {

using FolderId = std::pair<dev_t, ino_t>;

struct PendingFolder {
    QString path;
    int depth = 0;
};

EntryKind KindOf(const struct stat& status) {
    if (S_ISDIR(status.st_mode)) {
        return EntryKind::kFolder;
    }
    return S_ISREG(status.st_mode) ? EntryKind::kFile : EntryKind::kOther;
}

// Nothing when the entry has vanished.
std::optional<WalkEntry> ReadEntry(int folder, const char* name) {
    struct stat status {};
    if (::fstatat(folder, name, &status, AT_SYMLINK_NOFOLLOW) != 0) {
        return std::nullopt;
    }
    WalkEntry entry{TextOfPath(name)};
    entry.isLink = S_ISLNK(status.st_mode);
    if (entry.isLink && ::fstatat(folder, name, &status, 0) != 0) {
        entry.kind = EntryKind::kBrokenLink;
        return entry;
    }
    entry.kind = KindOf(status);
    entry.size = status.st_size;
    const int rights = entry.kind == EntryKind::kFolder ? R_OK | X_OK : R_OK;
    entry.isReadable = ::faccessat(folder, name, rights, AT_EACCESS) == 0;
    return entry;
}

WalkedFolder ReadFolder(const PendingFolder& pending) {
    WalkedFolder folder{pending.path, pending.depth, 0, {}};
    const std::unique_ptr<DIR, int (*)(DIR*)> handle(::opendir(BytesOfPath(pending.path).constData()),
                                                     ::closedir);
    if (!handle) {
        folder.error = errno;
        return folder;
    }
    while (const dirent* const found = ::readdir(handle.get())) {
        const std::string_view name(found->d_name);
        if (name != "." && name != "..") {
            if (auto entry = ReadEntry(::dirfd(handle.get()), found->d_name)) {
                folder.entries.push_back(std::move(*entry));
            }
        }
    }
    std::sort(folder.entries.begin(), folder.entries.end(),
              [](const WalkEntry& a, const WalkEntry& b) { return a.name < b.name; });
    return folder;
}

std::optional<FolderId> IdOf(const QString& path) {
    struct stat status {};
    if (::stat(BytesOfPath(path).constData(), &status) != 0) {
        return std::nullopt;
    }
    return FolderId{status.st_dev, status.st_ino};
}

bool IsAbove(const QString& path, const QString& folder) {
    return path == folder || path.startsWith(folder.endsWith(u'/') ? folder : folder + u'/');
}

QString RealPath(const QString& path) {
    const std::unique_ptr<char, void (*)(void*)> real(::realpath(BytesOfPath(path).constData(), nullptr),
                                                      std::free);
    return real ? TextOfPath(real.get()) : path;
}

// The folders above a path count as visited: a link to one of them would lead out of the library and back.
std::map<FolderId, QString> FoldersAbove(const QString& path) {
    std::map<FolderId, QString> folders;
    for (QString folder = path; folder.size() > 1;) {
        folder = FolderOfPath(folder);
        if (const auto id = IdOf(folder)) {
            folders.try_emplace(*id, folder);
        }
    }
    return folders;
}

} // namespace

void WalkLibrary(const QString& root, const WalkVisitor& visitor) {
    const QString realRoot = RealPath(root);
    std::map<FolderId, QString> visited = FoldersAbove(realRoot);
    std::vector<PendingFolder> pending = {{root, 0}};
    while (!pending.empty()) {
        const PendingFolder next = std::move(pending.back());
        pending.pop_back();
        if (const auto id = IdOf(next.path)) {
            const auto [earlier, isNew] = visited.try_emplace(*id, next.path);
            if (!isNew) {
                const bool isLoop = IsAbove(next.path, earlier->second) || IsAbove(realRoot, earlier->second);
                isLoop ? visitor.atLoop(next.path, earlier->second) : visitor.atSecondPath(next.path);
                continue;
            }
        }
        const WalkedFolder folder = ReadFolder(next);
        visitor.visit(folder);
        std::vector<PendingFolder> below;
        for (const WalkEntry& entry : folder.entries) {
            if (entry.kind == EntryKind::kFolder && visitor.enters(next.path, entry.name)) {
                below.push_back({PathIn(next.path, entry.name), next.depth + 1});
            }
        }
        // The last one is visited first.
        pending.insert(pending.end(), below.rbegin(), below.rend());
    }
}
