// What a backup of an application folder contains, and how it is checked.
#include "app/home/home_contents.h"

#include "app/home/tar_format.h"
#include "core/path_text.h"

#include <QCryptographicHash>

#include <algorithm>

namespace {

constexpr qsizetype kLongestPath = 2048;
constexpr qsizetype kLongestPart = 255;
constexpr int kDeepest = 12;

const QByteArray kFormatLine = QByteArrayLiteral("vantorix-backup 1");
const QByteArray kProgramKey = QByteArrayLiteral("program ");

QString Quoted(const QByteArray& name) {
    return u'"' + TextOfPath(name) + u'"';
}

// Whether a path stays below the folder that it starts from, and can be made on a file system.
bool IsPlainPath(const QByteArray& name) {
    const QList<QByteArray> parts = name.split('/');
    return name.size() <= kLongestPath && parts.size() <= kDeepest && !name.contains('\0') &&
           std::all_of(parts.begin(), parts.end(), [](const QByteArray& part) {
               return !part.isEmpty() && part != "." && part != ".." && part.size() <= kLongestPart;
           });
}

bool BelongsIntoBackup(const TarEntry& entry) {
    const QString name = TextOfPath(entry.name);
    const QString top = name.section(u'/', 0, 0);
    const bool isBelow = name != top;
    return (!isBelow && !entry.isFolder && BackedUpFiles().contains(name)) ||
           (BackedUpFolders().contains(top) && (isBelow || entry.isFolder));
}

// Names may hold line feeds.
QByteArray Written(const QByteArray& name) {
    return name.toPercentEncoding("/ ()[]',;!&+=");
}

QByteArray LineOf(const TarEntry& entry) {
    if (entry.isFolder) {
        return "folder " + Written(entry.name);
    }
    return "file " + QByteArray::number(entry.bytes.size()) + ' ' +
           QCryptographicHash::hash(entry.bytes, QCryptographicHash::Sha256).toHex() + ' ' +
           Written(entry.name);
}

} // namespace

QStringList BackedUpFiles() {
    return {QStringLiteral("config.ini"), QStringLiteral("pathconfig.ini"), QStringLiteral("stats.ini")};
}

QStringList BackedUpFolders() {
    return {QStringLiteral("playlists"), QStringLiteral("themes")};
}

void Contents::Add(const TarEntry& entry) {
    if (!IsPlainPath(entry.name)) {
        throw ArchiveFault(QStringLiteral("the name %1 is not allowed in a backup").arg(Quoted(entry.name)));
    }
    if (!BelongsIntoBackup(entry)) {
        throw ArchiveFault(QStringLiteral("%1 does not belong into a backup").arg(Quoted(entry.name)));
    }
    if (names_.contains(entry.name)) {
        throw ArchiveFault(QStringLiteral("%1 is there twice").arg(Quoted(entry.name)));
    }
    bytes_ += entry.bytes.size();
    if (names_.size() == kMostEntries || bytes_ > kMostBytes) {
        throw ArchiveFault(QStringLiteral("%1: more than %2 entries, or more than %3 bytes")
                               .arg(Quoted(entry.name))
                               .arg(kMostEntries)
                               .arg(kMostBytes));
    }
    names_.insert(entry.name);
    lines_.append(LineOf(entry));
}

QList<QByteArray> Contents::Lines() const {
    QList<QByteArray> lines = lines_;
    std::sort(lines.begin(), lines.end());
    return lines;
}

QByteArray Contents::Manifest() const {
    const QByteArray program = QStringLiteral("%1.%2.%3")
                                   .arg(VANTORIX_VERSION_MAJOR)
                                   .arg(VANTORIX_VERSION_MINOR)
                                   .arg(VANTORIX_VERSION_PATCH)
                                   .toLatin1();
    return kFormatLine + '\n' + kProgramKey + program + '\n' + Lines().join('\n') + '\n';
}

void Contents::Check(const QByteArray& manifest) const {
    QList<QByteArray> lines = manifest.split('\n');
    if (lines.takeFirst() != kFormatLine) {
        throw ArchiveFault(
            QStringLiteral(
                "the backup was not made by this version of the jukebox: %1 does not begin with \"%2\"")
                .arg(QString::fromLatin1(kManifestName), QString::fromLatin1(kFormatLine)));
    }
    if (!lines.isEmpty() && lines.first().startsWith(kProgramKey)) {
        lines.removeFirst();
    }
    lines.removeAll(QByteArray());
    std::sort(lines.begin(), lines.end());
    const QList<QByteArray> found = Lines();
    const auto [listed, read] = std::mismatch(lines.begin(), lines.end(), found.begin(), found.end());
    if (listed != lines.end() || read != found.end()) {
        const QByteArray& line = listed != lines.end() ? *listed : *read;
        throw ArchiveFault(QStringLiteral("the content is damaged: it differs from %1 in \"%2\"")
                               .arg(QString::fromLatin1(kManifestName), TextOfPath(line)));
    }
    if (!names_.contains("config.ini")) {
        throw ArchiveFault(QStringLiteral("the backup has no config.ini"));
    }
}
