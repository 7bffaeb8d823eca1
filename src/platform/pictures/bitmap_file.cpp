// Bitmap files: headers of every size, and pixels of 16 bits.
#include "platform/pictures/bitmap_file.h"

#include "core/byte_reader.h"
#include "platform/picture_limits.h"
#include "platform/pictures/colour_picture.h"

#include <array>
#include <bit>
#include <cstdlib>

namespace {

constexpr std::uint32_t kFileHeader = 14;
constexpr std::uint32_t kOffsetAt = 10;
constexpr std::uint32_t kCoreHeader = 12;
constexpr std::uint32_t kInfoHeader = 40;
constexpr std::uint32_t kInfoHeaderWithMasks = 52;
constexpr std::uint32_t kInfoHeaderWithAlphaMask = 56;
constexpr std::uint32_t kUncompressed = 0;
constexpr std::uint32_t kBitFields = 3;

// One colour of a pixel: the position and the number of its bits.
struct Field {
    int shift = 0;
    int bits = 0;
};
// Blue, green, red.
using Fields = std::array<Field, 3>;
constexpr Fields kUsualFields = {{{0, 5}, {5, 5}, {10, 5}}};

std::optional<Field> FieldOf(std::uint32_t mask) {
    if (mask > 0xFFFF) {
        return std::nullopt;
    }
    const Field field{std::countr_zero(mask), std::popcount(mask)};
    const bool hasGaps = mask != 0 && mask >> field.shift != (std::uint32_t{1} << field.bits) - 1;
    return hasGaps ? std::nullopt : std::optional(field);
}

// The masks follow the first 40 bytes of the header, whether they belong to it or not: red, green, blue.
std::optional<Fields> ReadFields(std::span<const std::uint8_t> file, const BitmapHeader& header) {
    if (header.compression != kBitFields) {
        return kUsualFields;
    }
    ByteReader reader(file);
    reader.Skip(kFileHeader + kInfoHeader);
    Fields fields;
    for (std::size_t i = fields.size(); i > 0; --i) {
        const auto mask = reader.ReadLittleEndian32();
        const auto field = mask ? FieldOf(*mask) : std::nullopt;
        if (!field) {
            return std::nullopt;
        }
        fields[i - 1] = *field;
    }
    return fields;
}

// A sample as eight bits: its highest bits, repeated when there are fewer than eight.
std::uint8_t Widened(std::uint32_t pixel, const Field& field) {
    if (field.bits == 0) {
        return 0;
    }
    const std::uint32_t sample = pixel >> field.shift & ((std::uint32_t{1} << field.bits) - 1);
    if (field.bits >= 8) {
        return static_cast<std::uint8_t>(sample >> (field.bits - 8));
    }
    std::uint32_t value = sample << (8 - field.bits);
    for (int filled = field.bits; filled < 8; filled *= 2) {
        value |= value >> filled;
    }
    return static_cast<std::uint8_t>(value);
}

void PutLittleEndian32(QByteArray& bytes, qsizetype at, std::uint32_t value) {
    for (int i = 0; i < 4; ++i, value >>= 8) {
        bytes[at + i] = static_cast<char>(value & 0xFFU);
    }
}

} // namespace

std::optional<BitmapHeader> ReadBitmapHeader(std::span<const std::uint8_t> file) {
    BitmapHeader header;
    ByteReader reader(file);
    reader.Skip(kOffsetAt);
    header.rows = reader.ReadLittleEndian32().value_or(0);
    header.bytes = reader.ReadLittleEndian32().value_or(0);
    const bool isCore = header.bytes == kCoreHeader;
    if ((!isCore && header.bytes < kInfoHeader) || header.bytes > file.size() - reader.position()) {
        return std::nullopt;
    }
    std::int64_t height = 0;
    if (isCore) {
        header.width = reader.ReadLittleEndian16().value_or(0);
        height = reader.ReadLittleEndian16().value_or(0);
    } else {
        header.width = static_cast<std::int32_t>(reader.ReadLittleEndian32().value_or(0));
        height = static_cast<std::int32_t>(reader.ReadLittleEndian32().value_or(0));
    }
    header.height = std::abs(height);
    header.isTopDown = height < 0;
    if (!IsPictureSize(header.width, header.height)) {
        return std::nullopt;
    }
    reader.Skip(2);
    header.bitCount = reader.ReadLittleEndian16().value_or(0);
    header.compression = isCore ? kUncompressed : reader.ReadLittleEndian32().value_or(0);
    header.stride = (header.width * header.bitCount + 31) / 32 * 4;
    const bool hasRows = header.compression == kUncompressed || header.compression == kBitFields;
    const auto fileSize = static_cast<std::int64_t>(file.size());
    const bool isCut = hasRows && header.rows + header.stride * header.height > fileSize;
    return isCut ? std::nullopt : std::optional(header);
}

std::unique_ptr<SystemPicture> LoadSixteenBits(std::span<const std::uint8_t> file,
                                               const BitmapHeader& header) {
    const auto fields = ReadFields(file, header);
    const bool hasRows = header.compression == kUncompressed || header.compression == kBitFields;
    if (!fields || !hasRows || header.rows < kFileHeader + header.bytes) {
        return nullptr;
    }
    auto picture = NewColourPicture(header.width, header.height);
    if (!picture) {
        return nullptr;
    }
    std::uint8_t* to = picture->memory.get();
    for (std::int64_t y = 0; y < header.height; ++y) {
        const std::int64_t row = header.isTopDown ? y : header.height - 1 - y;
        const std::uint8_t* from = file.data() + header.rows + row * header.stride;
        for (std::int64_t x = 0; x < header.width; ++x, from += 2, to += 4) {
            const std::uint32_t pixel = from[0] | static_cast<std::uint32_t>(from[1]) << 8;
            for (std::size_t i = 0; i < fields->size(); ++i) {
                to[i] = Widened(pixel, (*fields)[i]);
            }
            to[3] = 255;
        }
    }
    return picture;
}

QByteArray WithKnownHeader(const QByteArray& file, const BitmapHeader& header) {
    if (header.bytes != kInfoHeaderWithMasks && header.bytes != kInfoHeaderWithAlphaMask) {
        return file;
    }
    QByteArray known = file;
    const std::uint32_t dropped = header.bytes - kInfoHeader;
    known.remove(qsizetype{kFileHeader} + kInfoHeader, dropped);
    PutLittleEndian32(known, kOffsetAt, static_cast<std::uint32_t>(header.rows) - dropped);
    PutLittleEndian32(known, kFileHeader, kInfoHeader);
    return known;
}
