// What a backup of an application folder contains, and how it is checked.
#pragma once

#include <QByteArray>
#include <QList>
#include <QSet>
#include <QString>
#include <QStringList>

#include <cstdint>

struct TarEntry;

// The files and folders of an application folder that a backup contains. The log and the session that is
// kept over a power cut belong to the machine, not to its settings: a restored session would give credits
// back that have been used since.
QStringList BackedUpFiles();
QStringList BackedUpFolders();

// The last entry of a backup: its version, and the size and the checksum (SHA-256) of each entry before it.
inline constexpr char kManifestName[] = "vantorix-backup.txt";

// Limits of a backup, so that a hostile one cannot fill the disk.
inline constexpr int kMostEntries = 20'000;
inline constexpr std::int64_t kMostBytes = std::int64_t{4} * 1024 * 1024 * 1024;

// Collects the entries of a backup, in any order, and makes the manifest from them.
class Contents {
public:
    // Throws ArchiveFault for an entry that does not belong into a backup: a name outside of the files and
    // folders above, a name that leads out of them or occurs twice, an entry beyond the limits.
    void Add(const TarEntry& entry);
    // Returns the content of the manifest.
    QByteArray Manifest() const;
    // Throws ArchiveFault when the manifest of a backup does not fit these entries.
    void Check(const QByteArray& manifest) const;

private:
    QList<QByteArray> Lines() const;

    QList<QByteArray> lines_;
    QSet<QByteArray> names_;
    std::int64_t bytes_ = 0;
};
