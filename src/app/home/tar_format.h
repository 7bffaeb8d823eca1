// Tar archives of files and folders, in the format of GNU tar (the POSIX header with long names before it).
#pragma once

#include <QByteArray>
#include <QString>

#include <cstdint>
#include <exception>
#include <optional>

struct OpenFile;

// What is wrong with an archive, for a person.
struct ArchiveFault : std::exception {
    explicit ArchiveFault(QString words) : text(std::move(words)) {}
    const char* what() const noexcept override { return "damaged archive"; }

    QString text;
};

struct TarEntry {
    // The bytes of the path, without a separator at its end.
    QByteArray name;
    bool isFolder = false;
    QByteArray bytes;
};

// Returns the records of an entry. `time` is in seconds since 1970.
QByteArray TarRecords(const TarEntry& entry, std::int64_t time);
// Returns what comes after the last entry.
QByteArray TarEnd();

// Reads the entries of an archive in their order. Memory use is limited to the largest entry, which has at
// most kLargestTarEntry bytes and is never larger than the archive.
class TarReader {
public:
    // The archive must outlive this object.
    explicit TarReader(OpenFile& archive);

    // Returns nothing at the end of the archive. Throws ArchiveFault, which names the entry and the byte, for
    // an archive that is damaged or cut off, and for links, devices and everything else that is neither file
    // nor folder. Names are returned as they are in the archive, except that folders lose their separator.
    std::optional<TarEntry> Next();

private:
    struct Header;
    std::optional<Header> ReadHeader();
    QByteArray ReadBlock();
    QByteArray ReadContent(const Header& header);
    QByteArray LongName(const Header& header);

    OpenFile& archive_;
    std::int64_t position_ = 0;
    std::int64_t size_ = 0;
};

inline constexpr std::int64_t kLargestTarEntry = std::int64_t{256} * 1024 * 1024;
