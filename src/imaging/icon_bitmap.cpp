// Bitmaps of icon files: colours of every depth, then the mask.
#include "imaging/icon_bitmap.h"

#include "core/byte_reader.h"
#include "imaging/alpha_class.h"
#include "imaging/c32bppdib.h"
#include "platform/picture_limits.h"

#include <algorithm>
#include <cstddef>
#include <optional>

namespace {

using Bytes = std::span<const std::uint8_t>;

constexpr std::uint32_t kLeastHeader = 40;
constexpr std::size_t kPixelBytes = 4;

struct IconBitmap {
    int width = 0;
    int height = 0;
    int bitCount = 0;
    // 4 bytes an entry: blue, green, red, one without meaning.
    Bytes palette;
    // Rows and mask, the lowest row first, each row padded to 4 bytes.
    Bytes rows;
    Bytes mask;
    std::size_t rowBytes = 0;
    std::size_t maskRowBytes = 0;
};

bool IsKnownDepth(int bitCount) {
    constexpr int kDepths[] = {1, 4, 8, 16, 24, 32};
    return std::find(std::begin(kDepths), std::end(kDepths), bitCount) != std::end(kDepths);
}

std::size_t PaddedBytes(int width, int bitCount) {
    return (static_cast<std::size_t>(width) * static_cast<std::size_t>(bitCount) + 31) / 32 * 4;
}

// The header's fields. The stated height counts the mask's rows as well.
std::optional<IconBitmap> ReadHeader(ByteReader& reader) {
    IconBitmap bitmap;
    const auto header = reader.ReadLittleEndian32();
    if (!header || *header < kLeastHeader) {
        return std::nullopt;
    }
    const auto width = reader.ReadLittleEndian32();
    const auto height = reader.ReadLittleEndian32();
    if (!width || !height) {
        return std::nullopt;
    }
    bitmap.width = static_cast<std::int32_t>(*width);
    bitmap.height = static_cast<std::int32_t>(*height) / 2;
    if (!IsPictureSize(bitmap.width, bitmap.height)) {
        return std::nullopt;
    }

    const auto planes = reader.ReadLittleEndian16();
    const auto bitCount = reader.ReadLittleEndian16();
    const auto compression = reader.ReadLittleEndian32();
    bitmap.bitCount = bitCount.value_or(0);
    if (!planes || !IsKnownDepth(bitmap.bitCount) || compression != 0U) {
        return std::nullopt;
    }

    reader.Skip(12);
    const auto usedColours = reader.ReadLittleEndian32();
    if (!usedColours || !reader.Skip(*header - kLeastHeader + 4)) {
        return std::nullopt;
    }
    std::size_t colours = *usedColours;
    if (colours == 0 && bitmap.bitCount <= 8) {
        colours = std::size_t{1} << bitmap.bitCount;
    }
    const auto palette = reader.Read(colours * kPixelBytes);
    bitmap.palette = palette.value_or(Bytes());
    return palette ? std::optional(bitmap) : std::nullopt;
}

std::optional<IconBitmap> ReadBitmap(Bytes bytes) {
    ByteReader reader(bytes);
    auto bitmap = ReadHeader(reader);
    if (!bitmap) {
        return std::nullopt;
    }
    const auto height = static_cast<std::size_t>(bitmap->height);
    bitmap->rowBytes = PaddedBytes(bitmap->width, bitmap->bitCount);
    bitmap->maskRowBytes = PaddedBytes(bitmap->width, 1);
    const auto rows = reader.Read(bitmap->rowBytes * height);
    const bool hasMask = bitmap->bitCount < 32;
    const auto mask = rows ? reader.Read(hasMask ? bitmap->maskRowBytes * height : 0) : std::nullopt;
    if (!mask) {
        return std::nullopt;
    }
    bitmap->rows = *rows;
    bitmap->mask = *mask;
    return bitmap;
}

// Five bits as eight, the highest ones repeated behind the lowest.
std::uint8_t Widened(unsigned sample) {
    sample &= 31U;
    return static_cast<std::uint8_t>(sample << 3 | sample >> 2);
}

bool WriteIndexed(const IconBitmap& bitmap, const std::uint8_t* row, std::size_t x, std::uint8_t* to) {
    const auto depth = static_cast<unsigned>(bitmap.bitCount);
    const std::size_t bit = x * depth;
    const unsigned shift = 8 - depth - static_cast<unsigned>(bit % 8);
    const std::size_t sample = static_cast<unsigned>(row[bit / 8]) >> shift & ((1U << depth) - 1);
    if ((sample + 1) * kPixelBytes > bitmap.palette.size()) {
        return false;
    }
    std::copy_n(bitmap.palette.data() + sample * kPixelBytes, 3, to);
    return true;
}

bool WriteColour(const IconBitmap& bitmap, const std::uint8_t* row, std::size_t x, std::uint8_t* to) {
    switch (bitmap.bitCount) {
    case 16: {
        const unsigned sample = row[x * 2] | static_cast<unsigned>(row[x * 2 + 1]) << 8;
        to[0] = Widened(sample);
        to[1] = Widened(sample >> 5);
        to[2] = Widened(sample >> 10);
        return true;
    }
    case 24:
        std::copy_n(row + x * 3, 3, to);
        return true;
    default:
        return WriteIndexed(bitmap, row, x, to);
    }
}

bool IsMasked(const std::uint8_t* maskRow, std::size_t x) {
    return (static_cast<unsigned>(maskRow[x / 8]) >> (7 - x % 8) & 1U) != 0;
}

bool DrawMasked(const IconBitmap& bitmap, c32bppDIB& host) {
    const std::uint8_t* row = bitmap.rows.data();
    const std::uint8_t* maskRow = bitmap.mask.data();
    std::uint8_t* line = host.BitsPointer();
    bool hasMasked = false;
    for (int y = 0; y < bitmap.height; ++y) {
        std::uint8_t* to = line;
        for (std::size_t x = 0; x < static_cast<std::size_t>(bitmap.width); ++x, to += kPixelBytes) {
            if (IsMasked(maskRow, x)) {
                hasMasked = true;
            } else if (WriteColour(bitmap, row, x, to)) {
                to[3] = 255;
            } else {
                return false;
            }
        }
        row += bitmap.rowBytes;
        maskRow += bitmap.maskRowBytes;
        line += host.ScanWidth();
    }
    host.alpha = hasMasked;
    return true;
}

} // namespace

bool ReadIconBitmap(std::span<const std::uint8_t> bytes, c32bppDIB& host) {
    const auto bitmap = ReadBitmap(bytes);
    if (!bitmap || !host.InitializeDIB(bitmap->width, bitmap->height)) {
        return false;
    }
    if (bitmap->bitCount < 32) {
        return DrawMasked(*bitmap, host);
    }
    std::copy(bitmap->rows.begin(), bitmap->rows.end(), host.BitsPointer());
    host.alpha = SettleAlpha({host.BitsPointer(), bitmap->rows.size()});
    return true;
}
