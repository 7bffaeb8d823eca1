// Locking a folder with flock(2), and finding the process that has locked it.
#include "platform/posix/folder_lock.h"

#include "core/path_text.h"

#include <QFile>
#include <QStringList>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <unistd.h>

#include <cerrno>

namespace {

QString TextOfFile(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? TextOfPath(file.readAll()) : QString();
}

// The process that has locked a file or folder with flock, from /proc/locks (proc(5)): number, "FLOCK",
// "ADVISORY", "WRITE", process, "major:minor:inode". Empty when none is listed.
QString HolderOf(const struct stat& status) {
    const QString place = QString::asprintf("%02x:%02x:%llu", major(status.st_dev), minor(status.st_dev),
                                            static_cast<unsigned long long>(status.st_ino));
    const QStringList lines = TextOfFile(QStringLiteral("/proc/locks")).split(u'\n');
    for (const QString& line : lines) {
        const QStringList words = line.simplified().split(u' ');
        if (words.size() > 5 && words[1] == u"FLOCK" && words[3] == u"WRITE" && words[5] == place) {
            return words[4];
        }
    }
    return QString();
}

// The program's name and its process; empty when nothing has locked the file or folder.
QString NameOfHolder(const struct stat& status) {
    const QString process = HolderOf(status);
    const QString name =
        process.isEmpty() ? QString() : TextOfFile(QStringLiteral("/proc/%1/comm").arg(process)).trimmed();
    return name.isEmpty() ? QString() : QStringLiteral("%1, process %2").arg(name, process);
}

} // namespace

FolderLock::FolderLock(const QString& folder)
    : descriptor_(::open(BytesOfPath(folder).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)) {
    if (descriptor_ >= 0) {
        taken_ = ::flock(descriptor_, LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK;
    }
}

FolderLock::~FolderLock() {
    if (descriptor_ >= 0) {
        ::close(descriptor_);
    }
}

QString FolderLock::Holder() const {
    struct stat status {};
    return taken_ && ::fstat(descriptor_, &status) == 0 ? NameOfHolder(status) : QString();
}

QString HolderOfFolder(const QString& folder) {
    struct stat status {};
    return ::stat(BytesOfPath(folder).constData(), &status) == 0 ? NameOfHolder(status) : QString();
}
