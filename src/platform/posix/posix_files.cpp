// File operations with system calls (POSIX.1-2017).
#include "platform/posix/posix_files.h"

#include "core/errand.h"
#include "core/path_text.h"

#include <dirent.h>
#include <fcntl.h>
#include <mntent.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <string_view>
#include <system_error>
#include <utility>

namespace {

constexpr std::int64_t kNanosecondsASecond = 1'000'000'000;
// The longest chain of links that the system follows.
constexpr int kLongestLinkChain = 40;

// An open file or folder; the destructor closes it.
class Descriptor {
public:
    Descriptor(const QByteArray& path, int flags) : number_(OpenAgain(path, flags)) {}
    ~Descriptor() { Close(); }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;

    explicit operator bool() const { return number_ >= 0; }
    int number() const { return number_; }
    // Returns false when bytes that the system had accepted could not be written.
    bool Close() {
        const int number = std::exchange(number_, -1);
        return number < 0 || ::close(number) == 0;
    }

private:
    // Opens a FIFO or a device without waiting for its other end.
    static int OpenAgain(const QByteArray& path, int flags) {
        int number = -1;
        do {
            number = ::open(path.constData(), flags | O_CLOEXEC | O_NONBLOCK | O_NOCTTY, 0666);
        } while (number < 0 && errno == EINTR);
        return number;
    }

    int number_;
};

// The bytes of a path for the system. A path with a NUL becomes the empty path, which names nothing.
QByteArray SystemPath(const QString& path) {
    QByteArray bytes = BytesOfPath(path);
    return bytes.contains('\0') ? QByteArray() : bytes;
}

std::optional<struct stat> StatusOf(const QString& path) {
    struct stat status {};
    if (::stat(SystemPath(path).constData(), &status) != 0) {
        return std::nullopt;
    }
    return status;
}

std::int64_t Nanoseconds(const timespec& time) {
    return std::int64_t{time.tv_sec} * kNanosecondsASecond + time.tv_nsec;
}

// Reads to the end of a file that should have `expected` bytes. Returns nothing when it turns out to have
// more than `limit`.
std::optional<QByteArray> ReadAll(int file, std::int64_t expected, std::int64_t limit) {
    QByteArray bytes(expected + 1, Qt::Uninitialized);
    qsizetype used = 0;
    while (true) {
        const ssize_t count =
            ::read(file, bytes.data() + used, static_cast<std::size_t>(bytes.size() - used));
        if (count < 0 && errno == EINTR) {
            continue;
        }
        used += std::max<ssize_t>(count, 0);
        if (count < 0 || used > limit) {
            return std::nullopt;
        }
        if (count == 0) {
            bytes.truncate(used);
            return bytes;
        }
        if (used == bytes.size()) {
            bytes.resize(2 * used);
        }
    }
}

// A file that is read from its start.
class ReadFile : public OpenFile {
public:
    explicit ReadFile(const QByteArray& path) : file_(path, O_RDONLY) {
        struct stat status {};
        if (file_ && ::fstat(file_.number(), &status) == 0 && S_ISREG(status.st_mode)) {
            size_ = status.st_size;
        }
    }
    // True for a regular file that could be opened.
    bool IsOpen() const { return size_ >= 0; }

    std::int64_t Size() const override { return size_; }
    bool Read(std::span<std::uint8_t> to) override {
        while (!to.empty()) {
            const ssize_t count = ::read(file_.number(), to.data(), to.size());
            if (count == 0 || (count < 0 && errno != EINTR)) {
                return false;
            }
            to = to.subspan(static_cast<std::size_t>(std::max<ssize_t>(count, 0)));
        }
        return true;
    }

private:
    Descriptor file_;
    std::int64_t size_ = -1;
};

bool WriteAll(int file, const QByteArray& bytes) {
    qsizetype written = 0;
    while (written < bytes.size()) {
        const ssize_t count =
            ::write(file, bytes.constData() + written, static_cast<std::size_t>(bytes.size() - written));
        if (count < 0 && errno != EINTR) {
            return false;
        }
        written += std::max<ssize_t>(count, 0);
    }
    return true;
}

QString NameOf(const char* bytes) {
    const std::string_view name(bytes);
    const bool ascii =
        std::all_of(name.begin(), name.end(), [](char c) { return static_cast<uchar>(c) < 0x80; });
    const auto size = static_cast<qsizetype>(name.size());
    return ascii ? QString::fromLatin1(bytes, size) : TextOfPath(QByteArray::fromRawData(bytes, size));
}

// Whether an entry is a folder; nothing when it is neither folder nor file. Only links, and file systems that
// do not report types, cost a system call for the entry.
std::optional<bool> KindOf(int folder, const dirent& entry) {
    if (entry.d_type == DT_DIR || entry.d_type == DT_REG) {
        return entry.d_type == DT_DIR;
    }
    struct stat status {};
    const bool mayBe = entry.d_type == DT_LNK || entry.d_type == DT_UNKNOWN;
    if (!mayBe || ::fstatat(folder, entry.d_name, &status, 0) != 0) {
        return std::nullopt;
    }
    if (S_ISDIR(status.st_mode) || S_ISREG(status.st_mode)) {
        return S_ISDIR(status.st_mode);
    }
    return std::nullopt;
}

// The path with its links resolved; empty when it names nothing.
QByteArray Resolved(const QByteArray& path) {
    const std::unique_ptr<char, void (*)(void*)> real(::realpath(path.constData(), nullptr), std::free);
    return real ? QByteArray(real.get()) : QByteArray();
}

// The target of a link; empty when the path is not a link.
QByteArray LinkTarget(const QByteArray& path) {
    QByteArray target(PATH_MAX, '\0');
    const ssize_t length =
        ::readlink(path.constData(), target.data(), static_cast<std::size_t>(target.size()));
    target.truncate(std::max<ssize_t>(length, 0));
    return target;
}

// Reads a folder; may be called on any thread.
std::optional<std::vector<FolderEntry>> ReadFolder(const QString& path) {
    const std::unique_ptr<DIR, int (*)(DIR*)> folder(::opendir(SystemPath(path).constData()), ::closedir);
    if (!folder) {
        return std::nullopt;
    }
    std::vector<FolderEntry> entries;
    errno = 0;
    while (const dirent* const entry = ::readdir(folder.get())) {
        const std::string_view name(entry->d_name);
        const auto isFolder = KindOf(::dirfd(folder.get()), *entry);
        if (isFolder && name != "." && name != "..") {
            entries.push_back({NameOf(entry->d_name), *isFolder});
        }
        errno = 0;
    }
    return errno == 0 ? std::optional(std::move(entries)) : std::nullopt;
}

} // namespace

std::optional<QByteArray> PosixFiles::ReadWhole(const QString& path, std::int64_t limit) {
    const Descriptor file(SystemPath(path), O_RDONLY);
    struct stat status {};
    if (!file || ::fstat(file.number(), &status) != 0 || !S_ISREG(status.st_mode) || status.st_size > limit) {
        return std::nullopt;
    }
    return ReadAll(file.number(), status.st_size, limit);
}

std::unique_ptr<OpenFile> PosixFiles::Open(const QString& path) {
    auto file = std::make_unique<ReadFile>(SystemPath(path));
    return file->IsOpen() ? std::move(file) : nullptr;
}

std::optional<FileIdentity> PosixFiles::Identity(const QString& path) {
    const auto status = StatusOf(path);
    if (!status || !S_ISREG(status->st_mode)) {
        return std::nullopt;
    }
    return FileIdentity{status->st_dev, status->st_ino, status->st_size, Nanoseconds(status->st_mtim),
                        Nanoseconds(status->st_ctim)};
}

bool PosixFiles::IsFolder(const QString& path) {
    const auto status = StatusOf(path);
    return status && S_ISDIR(status->st_mode);
}

std::optional<std::vector<FolderEntry>> PosixFiles::ListFolder(const QString& path) {
    return ReadFolder(path);
}

std::optional<std::vector<FolderEntry>> PosixFiles::ListSlowFolder(const QString& path,
                                                                   const std::function<bool()>& wait) {
    using Entries = std::optional<std::vector<FolderEntry>>;
    const auto result = std::make_shared<Entries>();
    const std::optional<Errand> errand = Errand::Begin([result, path] { *result = ReadFolder(path); });
    if (!errand) {
        return ReadFolder(path);
    }
    // A folder on a medium that answers is there before a person would notice.
    constexpr std::chrono::milliseconds kFirstLook(20);
    if (!errand->WaitFor(kFirstLook)) {
        while (!errand->IsDone()) {
            if (!wait()) {
                return std::nullopt;
            }
        }
    }
    return std::move(*result);
}

QStringList PosixFiles::Drives() {
    QStringList drives = {QStringLiteral("/")};
    if (const char* home = std::getenv("HOME"); home != nullptr && home[0] == '/' && home[1] != '\0') {
        drives += NameOf(home);
    }
    const std::unique_ptr<FILE, int (*)(FILE*)> mounts(::setmntent("/proc/self/mounts", "r"), ::endmntent);
    while (const mntent* const mount = mounts ? ::getmntent(mounts.get()) : nullptr) {
        const QString folder = NameOf(mount->mnt_dir);
        const bool isMedium = folder.startsWith(QStringLiteral("/media/")) ||
                              folder.startsWith(QStringLiteral("/run/media/")) ||
                              folder.startsWith(QStringLiteral("/mnt"));
        if (isMedium && !drives.contains(folder)) {
            drives += folder;
        }
    }
    return drives;
}

bool PosixFiles::Write(const QString& path, const QByteArray& bytes, bool synced) {
    Descriptor file(SystemPath(path), O_WRONLY | O_CREAT | O_TRUNC);
    return file && WriteAll(file.number(), bytes) && (!synced || ::fsync(file.number()) == 0) && file.Close();
}

bool PosixFiles::Append(const QString& path, const QByteArray& bytes) {
    Descriptor file(SystemPath(path), O_WRONLY | O_CREAT | O_APPEND);
    return file && WriteAll(file.number(), bytes) && file.Close();
}

void PosixFiles::CopyRights(const QString& model, const QString& target) {
    const auto status = StatusOf(model);
    const QByteArray path = SystemPath(target);
    // Set the owner first, because changing it may clear rights. Only the superuser can change the owner; if
    // that is refused, only the group is set.
    if (status && ::chown(path.constData(), status->st_uid, status->st_gid) != 0 &&
        ::chown(path.constData(), static_cast<uid_t>(-1), status->st_gid) != 0) {
        errno = 0;
    }
    if (status) {
        ::chmod(path.constData(), status->st_mode & 07777);
    }
}

bool PosixFiles::Rename(const QString& from, const QString& to) {
    const QByteArray place = SystemPath(to);
    struct stat status {};
    // Never replaces a device or pipe that a link leads to: it would disappear from the machine.
    if (::lstat(place.constData(), &status) == 0 && !S_ISREG(status.st_mode)) {
        return false;
    }
    return ::rename(SystemPath(from).constData(), place.constData()) == 0;
}

bool PosixFiles::Remove(const QString& path) {
    return ::unlink(SystemPath(path).constData()) == 0;
}

bool PosixFiles::RemoveTree(const QString& path) {
    const QByteArray bytes = SystemPath(path);
    std::error_code error;
    std::filesystem::remove_all(bytes.constData(), error);
    return !bytes.isEmpty() && !error;
}

bool PosixFiles::SyncFile(const QString& path) {
    const Descriptor file(SystemPath(path), O_RDONLY);
    return file && ::fsync(file.number()) == 0;
}

bool PosixFiles::SyncFolder(const QString& path) {
    const Descriptor folder(SystemPath(path), O_RDONLY | O_DIRECTORY);
    // Some file systems make their entries durable by themselves and refuse the call.
    return folder && (::fsync(folder.number()) == 0 || errno == EINVAL || errno == ENOTSUP);
}

bool PosixFiles::MakeFolder(const QString& path) {
    return ::mkdir(SystemPath(path).constData(), 0777) == 0 || (errno == EEXIST && IsFolder(path));
}

QString PosixFiles::RealPath(const QString& path) {
    QByteArray place = SystemPath(path);
    for (int links = 0; links < kLongestLinkChain; ++links) {
        const QByteArray real = Resolved(place);
        if (!real.isEmpty()) {
            return TextOfPath(real);
        }
        // A link to a missing file resolves to that file.
        const QByteArray target = LinkTarget(place);
        if (target.isEmpty()) {
            return links == 0 ? path : TextOfPath(place);
        }
        place = target.startsWith('/') ? target : place.left(place.lastIndexOf('/') + 1) + target;
    }
    return path;
}
