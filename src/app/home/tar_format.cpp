// Writing and reading tar archives.
#include "app/home/tar_format.h"

#include "core/path_text.h"
#include "platform/files.h"

#include <algorithm>
#include <utility>

namespace {

constexpr qsizetype kBlock = 512;
constexpr qsizetype kLongestName = 4096;

// A field of the header: its offset and its size in bytes.
struct Field {
    qsizetype offset = 0;
    qsizetype size = 0;
};

constexpr Field kName{0, 100};
constexpr Field kMode{100, 8};
constexpr Field kUser{108, 8};
constexpr Field kGroup{116, 8};
constexpr Field kSize{124, 12};
constexpr Field kTime{136, 12};
constexpr Field kChecksum{148, 8};
constexpr Field kType{156, 1};
constexpr Field kMagic{257, 6};
constexpr Field kPrefix{345, 155};

constexpr char kFileType = '0';
constexpr char kOldFileType = '\0';
constexpr char kFolderType = '5';
constexpr char kLongNameType = 'L';
// GNU tar's magic is followed by a version; only the POSIX format has a prefix for names.
const QByteArray kGnuMagic = QByteArrayLiteral("ustar ");
const QByteArray kPosixMagic = QByteArrayLiteral("ustar\0");

void Put(QByteArray& header, const Field& field, const QByteArray& value) {
    header.replace(field.offset, value.size(), value);
}

// Octal digits with a NUL at the end.
void PutNumber(QByteArray& header, const Field& field, std::int64_t number) {
    Put(header, field,
        QByteArray::number(static_cast<qlonglong>(number), 8).rightJustified(field.size - 1, '0'));
}

QByteArray Get(const QByteArray& header, const Field& field) {
    return header.mid(field.offset, field.size);
}

// The sum of all bytes, with the field of the checksum as blanks.
std::int64_t ChecksumOf(QByteArray header) {
    Put(header, kChecksum, QByteArray(kChecksum.size, ' '));
    std::int64_t sum = 0;
    for (const char byte : std::as_const(header)) {
        sum += static_cast<unsigned char>(byte);
    }
    return sum;
}

// Octal digits between blanks or NULs; nothing for anything else.
std::optional<std::int64_t> NumberIn(const QByteArray& header, const Field& field) {
    QByteArray text = Get(header, field);
    text.replace('\0', ' ');
    bool isNumber = false;
    const QByteArray digits = text.trimmed();
    const qlonglong number = digits.toLongLong(&isNumber, 8);
    const bool onlyDigits =
        std::all_of(digits.begin(), digits.end(), [](char c) { return c >= '0' && c <= '7'; });
    return isNumber && onlyDigits ? std::optional<std::int64_t>(number) : std::nullopt;
}

QByteArray UpToNul(const QByteArray& bytes) {
    return {bytes.constData(),
            static_cast<qsizetype>(qstrnlen(bytes.constData(), static_cast<uint>(bytes.size())))};
}

QByteArray Padded(const QByteArray& bytes) {
    const qsizetype over = bytes.size() % kBlock;
    return over == 0 ? bytes : bytes + QByteArray(kBlock - over, '\0');
}

QByteArray Header(const QByteArray& name, char type, qsizetype size, std::int64_t time) {
    QByteArray header(kBlock, '\0');
    Put(header, kName, name.left(kName.size));
    PutNumber(header, kMode, type == kFolderType ? 0755 : 0644);
    PutNumber(header, kUser, 0);
    PutNumber(header, kGroup, 0);
    PutNumber(header, kSize, size);
    PutNumber(header, kTime, time);
    header[kType.offset] = type;
    Put(header, kMagic, kGnuMagic);
    Put(header, {kMagic.offset + kMagic.size, 1}, " ");
    // Six digits, a NUL, a blank.
    const QByteArray sum = QByteArray::number(static_cast<qlonglong>(ChecksumOf(header)), 8);
    Put(header, kChecksum, sum.rightJustified(6, '0') + QByteArray("\0 ", 2));
    return header;
}

QString Quoted(const QByteArray& name) {
    return u'"' + TextOfPath(name) + u'"';
}

} // namespace

QByteArray TarRecords(const TarEntry& entry, std::int64_t time) {
    QByteArray records;
    const QByteArray name = entry.isFolder ? entry.name + '/' : entry.name;
    if (name.size() > kName.size) {
        const QByteArray longName = name + '\0';
        records += Header("././@LongLink", kLongNameType, longName.size(), 0) + Padded(longName);
    }
    const qsizetype size = entry.isFolder ? 0 : entry.bytes.size();
    records += Header(name, entry.isFolder ? kFolderType : kFileType, size, time);
    return entry.isFolder ? records : records + Padded(entry.bytes);
}

QByteArray TarEnd() {
    return QByteArray(2 * kBlock, '\0');
}

struct TarReader::Header {
    // Where the header begins.
    std::int64_t position = 0;
    QByteArray name;
    char type = kFileType;
    std::int64_t size = 0;
};

TarReader::TarReader(OpenFile& archive) : archive_(archive), size_(archive.Size()) {}

QByteArray TarReader::ReadBlock() {
    QByteArray block(kBlock, '\0');
    if (size_ - position_ < kBlock ||
        !archive_.Read({reinterpret_cast<std::uint8_t*>(block.data()), static_cast<std::size_t>(kBlock)})) {
        throw ArchiveFault(QStringLiteral("the archive is cut off at byte %1").arg(size_));
    }
    position_ += kBlock;
    return block;
}

std::optional<TarReader::Header> TarReader::ReadHeader() {
    const std::int64_t position = position_;
    const QByteArray block = ReadBlock();
    if (block.count('\0') == kBlock) {
        return std::nullopt;
    }
    const QByteArray magic = Get(block, kMagic);
    if (magic != kGnuMagic && magic != kPosixMagic) {
        throw ArchiveFault(QStringLiteral("byte %1 is not the start of a tar entry").arg(position));
    }
    if (NumberIn(block, kChecksum) != ChecksumOf(block)) {
        throw ArchiveFault(
            QStringLiteral("the entry at byte %1 is damaged: its checksum is wrong").arg(position));
    }
    const std::optional<std::int64_t> size = NumberIn(block, kSize);
    if (!size || *size > kLargestTarEntry) {
        throw ArchiveFault(QStringLiteral("the entry at byte %1 has no size, or more than %2 bytes")
                               .arg(position)
                               .arg(kLargestTarEntry));
    }
    QByteArray name = UpToNul(Get(block, kName));
    const QByteArray prefix = magic == kPosixMagic ? UpToNul(Get(block, kPrefix)) : QByteArray();
    if (!prefix.isEmpty()) {
        name.prepend(prefix + '/');
    }
    return Header{position, name, block[kType.offset], *size};
}

QByteArray TarReader::ReadContent(const Header& header) {
    const std::int64_t padded = (header.size + kBlock - 1) / kBlock * kBlock;
    if (size_ - position_ < padded) {
        throw ArchiveFault(
            QStringLiteral("%1: the archive is cut off at byte %2, in the entry that begins at byte %3")
                .arg(Quoted(header.name))
                .arg(size_)
                .arg(header.position));
    }
    QByteArray bytes(padded, Qt::Uninitialized);
    if (!archive_.Read({reinterpret_cast<std::uint8_t*>(bytes.data()), static_cast<std::size_t>(padded)})) {
        throw ArchiveFault(
            QStringLiteral("%1: cannot be read from byte %2 on").arg(Quoted(header.name)).arg(position_));
    }
    position_ += padded;
    bytes.truncate(header.size);
    return bytes;
}

QByteArray TarReader::LongName(const Header& header) {
    if (header.size > kLongestName + 1) {
        throw ArchiveFault(QStringLiteral("the name at byte %1 has %2 bytes; at most %3 are allowed")
                               .arg(header.position)
                               .arg(header.size)
                               .arg(kLongestName));
    }
    return UpToNul(ReadContent(header));
}

std::optional<TarEntry> TarReader::Next() {
    std::optional<Header> header = ReadHeader();
    QByteArray longName;
    if (header && header->type == kLongNameType) {
        longName = LongName(*header);
        header = ReadHeader();
        if (!header) {
            throw ArchiveFault(
                QStringLiteral("there is no entry for the name before byte %1").arg(position_));
        }
        header->name = longName;
    }
    if (!header) {
        return std::nullopt;
    }
    const bool isFolder = header->type == kFolderType;
    if (!isFolder && header->type != kFileType && header->type != kOldFileType) {
        throw ArchiveFault(QStringLiteral("%1, at byte %2, is neither a file nor a folder (type %3)")
                               .arg(Quoted(header->name))
                               .arg(header->position)
                               .arg(static_cast<int>(static_cast<unsigned char>(header->type))));
    }
    TarEntry entry{header->name, isFolder, ReadContent(*header)};
    if (isFolder && entry.name.endsWith('/')) {
        entry.name.chop(1);
    }
    return entry;
}
