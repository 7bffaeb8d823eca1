// The icon and cursor parser: selects one entry of the directory, which is a PNG or a bitmap with a mask.
#include "imaging/formats/ico_parser.h"

#include "core/byte_reader.h"
#include "imaging/picture_pixels.h"
#include "imaging/png/parser.h"
#include "platform/picture_limits.h"

#include <algorithm>
#include <cstdlib>
#include <optional>
#include <vector>

namespace {

using Bytes = std::span<const std::uint8_t>;

constexpr std::uint16_t kIcon = 1;
constexpr std::uint16_t kCursor = 2;
constexpr std::size_t kEntryBytes = 16;
constexpr int kDeepest = 32;
constexpr std::int64_t kTooDeep = -10000;
constexpr std::uint32_t kLeastHeader = 40;

// One picture of the file, as the directory describes it.
struct IconEntry {
    // 1 to 256.
    int width = 0;
    int height = 0;
    int bitDepth = 0;
    // The picture's bytes.
    Bytes data;
};

// The directory stores 256 as 0.
int Extent(std::uint8_t stored) {
    return stored == 0 ? 256 : stored;
}

std::optional<IconEntry> ReadEntry(ByteReader reader, Bytes file) {
    IconEntry entry;
    const auto width = reader.ReadByte();
    const auto height = reader.ReadByte();
    // Skips the number of colours, an unused byte and the number of planes: the picture itself has this
    // information.
    reader.Skip(4);
    const auto bitDepth = reader.ReadLittleEndian16();
    const auto size = reader.ReadLittleEndian32();
    const auto offset = reader.ReadLittleEndian32();
    if (!offset || *offset > file.size() || *size > file.size() - *offset) {
        return std::nullopt;
    }
    entry.width = Extent(*width);
    entry.height = Extent(*height);
    entry.bitDepth = *bitDepth;
    entry.data = file.subspan(*offset, *size);
    return entry;
}

// Deliberate D-63: without a desired size the smallest picture wins, a picture larger than desired is
// preferred to a smaller one, and the coordinate of a cursor's hot spot counts as its depth.
// One would expect the best picture. Icons with several pictures have always been shown this way.
std::int64_t Distance(int given, int desired) {
    const std::int64_t difference = std::int64_t{given} - desired;
    return desired > given ? difference * 2 : difference;
}

std::int64_t Score(const IconEntry& entry, int desiredWidth, int desiredHeight) {
    if (entry.bitDepth > kDeepest) {
        return kTooDeep;
    }
    return Distance(entry.width, desiredWidth) + Distance(entry.height, desiredHeight) +
           std::abs(kDeepest - entry.bitDepth);
}

// Returns nothing for other files, for a directory without entries, and when the directory or the bytes of an
// entry pass the end of the file.
std::optional<std::vector<IconEntry>> ReadDirectory(Bytes file) {
    ByteReader reader(file);
    const auto reserved = reader.ReadLittleEndian16();
    const auto type = reader.ReadLittleEndian16();
    const auto count = reader.ReadLittleEndian16();
    if (!count || *reserved != 0 || (*type != kIcon && *type != kCursor) || *count < 1 ||
        reader.remaining() < *count * kEntryBytes) {
        return std::nullopt;
    }
    std::vector<IconEntry> entries;
    for (unsigned i = 0; i < *count; ++i) {
        const auto bytes = reader.Read(kEntryBytes);
        const auto entry = bytes ? ReadEntry(ByteReader(*bytes), file) : std::nullopt;
        if (!entry) {
            return std::nullopt;
        }
        entries.push_back(*entry);
    }
    return entries;
}

// Returns the entry to show, or null when no entry is suitable.
const IconEntry* ChooseEntry(std::span<const IconEntry> entries, int desiredWidth, int desiredHeight) {
    if (entries.size() == 1) {
        return entries[0].data.empty() ? nullptr : &entries[0];
    }
    const IconEntry* chosen = nullptr;
    std::int64_t lowest = 0;
    for (const IconEntry& entry : entries) {
        const std::int64_t score = Score(entry, desiredWidth, desiredHeight);
        if (score == 0) {
            return &entry;
        }
        if (score > 0 && (chosen == nullptr || score < lowest)) {
            chosen = &entry;
            lowest = score;
        }
    }
    return chosen;
}

// A device-independent bitmap with the mask after it.
struct IconBitmap {
    int width = 0;
    int height = 0;
    int bitCount = 0;
    // 4 bytes per entry: blue, green, red, unused.
    Bytes palette;
    // Rows and mask, the bottom row first, each row padded to a multiple of 4 bytes.
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

// Reads the header and the palette. The stated height includes the rows of the mask.
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

// Widens five bits to eight by repeating the highest bits at the low end.
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

bool DrawMasked(const IconBitmap& bitmap, PicturePixels& cHost) {
    const std::uint8_t* row = bitmap.rows.data();
    const std::uint8_t* maskRow = bitmap.mask.data();
    std::uint8_t* line = cHost.BitsPointer();
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
        line += cHost.ScanWidth();
    }
    cHost.alpha = hasMasked;
    return true;
}

// Reads a bitmap of 1, 4, 8, 16, 24 or 32 bits. Below 32 bits, a set bit of the mask makes its pixel
// transparent. A bitmap of 32 bits has its own alpha; its mask is ignored and can be missing. Returns false
// when the header is invalid, when rows or mask pass the end of the bytes, or when a sample has no colour.
// The host can then be partly filled.
bool LoadBitmap(Bytes bytes, PicturePixels& cHost) {
    const auto bitmap = ReadBitmap(bytes);
    if (!bitmap || !cHost.InitializeDIB(bitmap->width, bitmap->height)) {
        return false;
    }
    if (bitmap->bitCount < 32) {
        return DrawMasked(*bitmap, cHost);
    }
    std::copy(bitmap->rows.begin(), bitmap->rows.end(), cHost.BitsPointer());
    cHost.alpha = SettleAlpha({cHost.BitsPointer(), bitmap->rows.size()});
    return true;
}

// A PNG has the letters "DR" of its first chunk in the place of a bitmap's bit count.
bool IsPng(Bytes data) {
    constexpr std::size_t kTestedAt = 14;
    constexpr std::uint16_t kLetters = 21060;
    ByteReader reader(data);
    return reader.Skip(kTestedAt) && reader.ReadLittleEndian16() == kLetters;
}

} // namespace

bool cICOparser::LoadStream(std::span<const std::uint8_t> inStream, int desiredWidth, int desiredHeight,
                            PicturePixels& cHost, std::size_t streamOffset, std::size_t streamLength,
                            ZlibLibrary& zlib) {
    cHost.DestroyDIB();
    if (streamOffset > inStream.size() || streamLength > inStream.size() - streamOffset) {
        return false;
    }
    const auto entries = ReadDirectory(inStream.subspan(streamOffset, streamLength));
    const IconEntry* const entry = entries ? ChooseEntry(*entries, desiredWidth, desiredHeight) : nullptr;
    if (entry == nullptr) {
        return false;
    }
    const bool isRead = IsPng(entry->data)
                            ? cPNGparser().LoadStream(entry->data, cHost, 0, entry->data.size(), zlib)
                            : LoadBitmap(entry->data, cHost);
    if (!isRead) {
        cHost.DestroyDIB();
        return false;
    }
    cHost.ImageType = kImageIcon;
    return true;
}
