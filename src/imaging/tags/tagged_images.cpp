// Reads a tag from the start of a file and gives access to its pictures.
#include "imaging/tags/tagged_images.h"

#include "imaging/formats/bmp_parser.h"
#include "imaging/picture/c32bppdib.h"
#include "imaging/tags/asf_parser.h"
#include "imaging/tags/id3v2_parser.h"
#include "platform/files.h"
#include "platform/system_pictures.h"

#include <algorithm>
#include <new>
#include <utility>

namespace {

// The bytes that are read of every file, and the minimum size of a file with a tag.
constexpr int kStart = 30;
// The maximum size of an ID3v2 tag by its format; larger ASF headers are not read.
constexpr std::int64_t kLargestTag = std::int64_t{1} << 28;
// A larger buffer or a longer list is not kept for the next file.
constexpr qsizetype kMostRoom = qsizetype{16} << 20;
constexpr std::size_t kMostItems = 1024;
// The minimum size of an ASF header, and the value of its second reserved byte.
constexpr int kLeastAsfHeader = 61;
constexpr int kAsfReserved = 2;
constexpr int kNoRevision = 255;

std::span<std::uint8_t> BytesOf(QByteArray& bytes) {
    return {reinterpret_cast<std::uint8_t*>(bytes.data()), static_cast<std::size_t>(bytes.size())};
}

bool IsAsf(std::span<const std::uint8_t> start) {
    return std::ranges::equal(start.first(kAsfHeader.size()), kAsfHeader);
}

// Returns the size of the tag at the start of a file of `fileSize` bytes, given its first bytes. Returns
// nothing when there is no tag.
std::optional<Integer32> TagSize(QByteArray& start, std::int64_t fileSize) {
    const TagBuffer header(BytesOf(start));
    if (start.startsWith("ID3")) {
        const int version = header.Byte(3);
        const Integer32 size = header.ReadSyncSafe(6);
        const bool isKnown = version >= 2 && version <= 4 && header.Byte(4) < kNoRevision;
        return isKnown && size.value() <= fileSize ? std::optional(size) : std::nullopt;
    }
    if (!IsAsf(BytesOf(start)) || header.ReadInt32LE(20) != 0) {
        return std::nullopt;
    }
    const Integer32 size = header.ReadInt32LE(16);
    const bool isGood = size >= kLeastAsfHeader && size.value() < fileSize && size.value() <= kLargestTag &&
                        header.Byte(29) == kAsfReserved;
    return isGood ? std::optional(size) : std::nullopt;
}

} // namespace

int cTaggedImages::LoadTagged_Images(Files& files, const QString& FileName) {
    if (images_.capacity() > kMostItems) {
        images_ = {};
    }
    images_.clear();
    try {
        EndsProgram("LoadTagged_Images", [&] {
            TellingWhere([&] { return FileName; }, [&] { ReadTag(files, FileName); });
            if (!tag_.isEmpty()) {
                ParseTag(FileName);
            }
        });
    } catch (const std::bad_alloc&) {
        images_ = {};
        tag_ = QByteArray();
    }
    return ImageCount();
}

// Deliberate D-89: the size in an ID3v2 header excludes the header itself, whose ten bytes are not added.
// One would expect the whole tag to be read. The buffer ends ten bytes early, and the last picture of a tag
// without padding loses its last ten bytes; decoders show it nevertheless.
void cTaggedImages::ReadTag(Files& files, const QString& FileName) {
    if (tag_.capacity() > kMostRoom) {
        tag_ = QByteArray();
    }
    tag_.resize(0);
    const auto file = files.Open(FileName);
    if (!file || file->Size() < kStart) {
        return;
    }
    tag_.resize(kStart);
    if (!file->Read(BytesOf(tag_))) {
        tag_.resize(0);
        return;
    }
    const auto size = TagSize(tag_, file->Size());
    if (size && *size == 0) {
        throw RunTimeError(kSubscriptOutOfRange, QStringLiteral("a tag of 0 bytes"));
    }
    tag_.resize(size ? size->value() : 0);
    if (tag_.size() > kStart && !file->Read(BytesOf(tag_).subspan(kStart))) {
        tag_.resize(0);
    }
}

// Deliberate D-90: a broken tag of version 2.2 or 2.4 and a broken ASF header stop the program, while one of
// version 2.3 gives the pictures found so far.
// One would expect the latter for all. A cabinet that stops names the file. A tag of fewer than four bytes
// stops the program in every version, because its version byte is read before a parser is chosen.
void cTaggedImages::ParseTag(const QString& FileName) {
    TagBuffer tag(BytesOf(tag_));
    const auto where = [&] { return FileName; };
    switch (TellingWhere(where, [&] { return tag.Byte(3); })) {
    case 2:
        return EndsProgram("ID3v2.2", [&] { TellingWhere(where, [&] { ParseID3v22(tag, images_); }); });
    case 3:
        return ParseID3v23(tag, images_);
    case 4:
        return EndsProgram("ID3v2.4", [&] { TellingWhere(where, [&] { ParseID3v24(tag, images_); }); });
    default:
        return EndsProgram("ASF", [&] { TellingWhere(where, [&] { ParseASF(tag, images_); }); });
    }
}

const TagImage* cTaggedImages::Image(int Index) const {
    return Index >= 1 && Index <= ImageCount() ? &images_[static_cast<std::size_t>(Index - 1)] : nullptr;
}

QString cTaggedImages::ImageType(int Index) const {
    const TagImage* const image = Image(Index);
    if (image == nullptr) {
        return QString();
    }
    const QByteArrayView text(tag_.constData() + image->MimeOffset.value(), image->MimeLength.value());
    if (!image->MimeIsWide) {
        return QString::fromLatin1(text);
    }
    QString wide(text.size() / 2, Qt::Uninitialized);
    for (qsizetype i = 0; i < wide.size(); ++i) {
        const auto low = static_cast<uchar>(text[2 * i]);
        const auto high = static_cast<uchar>(text[2 * i + 1]);
        wide[i] = QChar(static_cast<char16_t>(low | high << 8));
    }
    return wide;
}

int cTaggedImages::ImageCategory(int Index) const {
    const TagImage* const image = Image(Index);
    return image == nullptr ? 0 : image->Category;
}

std::optional<std::span<const std::uint8_t>> cTaggedImages::ExtractImageData(int Index) const {
    const TagImage* const image = Image(Index);
    if (image == nullptr || image->Length < 1 || image->Offset.value() >= tag_.size()) {
        return std::nullopt;
    }
    const qsizetype offset = image->Offset.value();
    const qsizetype length = std::min<qsizetype>(image->Length.value(), tag_.size() - offset);
    return std::span(reinterpret_cast<const std::uint8_t*>(tag_.constData()) + offset,
                     static_cast<std::size_t>(length));
}

bool PictureFromStream(SystemPictures& pictures, std::span<const std::uint8_t> bytes, c32bppDIB& picture) {
    picture.DestroyDIB();
    try {
        const auto loaded = pictures.OleLoadPicture(bytes);
        PicturePixels pixels;
        if (!loaded || !cBMPparser().ConvertstdPicTo32bpp(*loaded, pixels, loaded->bitCount)) {
            return false;
        }
        picture.TakePixels(std::move(pixels));
        return true;
    } catch (const std::bad_alloc&) {
        return false;
    }
}
