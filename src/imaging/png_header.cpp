// IHDR, the pass tables of Adam7 and the sizes that follow from them.
#include "imaging/png_header.h"

#include "core/byte_reader.h"
#include "platform/picture_limits.h"

#include <algorithm>
#include <array>
#include <limits>

namespace {

// clang-format off
constexpr std::array<int, 8> kFirstRow    = {0, 0, 4, 0, 2, 0, 1, 0};
constexpr std::array<int, 8> kFirstColumn = {0, 4, 0, 2, 0, 1, 0, 0};
constexpr std::array<int, 8> kRowStep     = {8, 8, 8, 4, 4, 2, 2, 1};
constexpr std::array<int, 8> kColumnStep  = {8, 8, 4, 4, 2, 2, 1, 1};
// clang-format on

constexpr std::int64_t kLargest = std::numeric_limits<std::int32_t>::max();

template <std::size_t Count>
bool IsOneOf(int value, const std::array<int, Count>& allowed) {
    return std::find(allowed.begin(), allowed.end(), value) != allowed.end();
}

} // namespace

PngPass PngPassAt(int pass) {
    const auto i = static_cast<std::size_t>(pass);
    return {kFirstRow[i], kFirstColumn[i], kRowStep[i], kColumnStep[i]};
}

int PngPassExtent(int size, int first, int step) {
    return size / step + (size % step > first ? 1 : 0);
}

int PngBitsPerPixel(const PngHeader& header) {
    switch (header.colourType) {
    case kPngColourAlpha:
        return header.bitDepth * 4;
    case kPngGreyAlpha:
        return header.bitDepth * 2;
    case kPngColour:
        return header.bitDepth * 3;
    default:
        return header.bitDepth;
    }
}

std::size_t PngRowBytes(const PngHeader& header, int pixels) {
    return (static_cast<std::size_t>(pixels) * static_cast<std::size_t>(PngBitsPerPixel(header)) + 7) / 8;
}

std::optional<std::size_t> PngInflatedSize(const PngHeader& header) {
    const bool isPlain = header.interlace == 0;
    std::int64_t sum = 0;
    for (int i = isPlain ? kPngPlainPass : kPngFirstAdam7Pass; i < kPngPlainPass + (isPlain ? 1 : 0); ++i) {
        const PngPass pass = PngPassAt(i);
        const std::int64_t columns = PngPassExtent(header.width, pass.firstColumn, pass.columnStep);
        const std::int64_t rows = PngPassExtent(header.height, pass.firstRow, pass.rowStep);
        const std::int64_t bits = columns * PngBitsPerPixel(header) + 7;
        if (bits > kLargest || (bits / 8 + 1) * rows > kLargest - sum) {
            return std::nullopt;
        }
        sum += (bits / 8 + 1) * rows;
    }
    return static_cast<std::size_t>(sum);
}

bool IsPngAffordable(const PngHeader& header, std::size_t size, std::size_t compressed) {
    // Deflate makes 1,032 bytes of one at the most.
    constexpr std::int64_t kMostOfAByte = 1032;
    constexpr std::int64_t kPixelBytes = 4;
    if (!IsPictureSize(header.width, header.height)) {
        return false;
    }
    const std::int64_t pixels = std::int64_t{header.width} * header.height;
    const auto row = static_cast<std::int64_t>(PngRowBytes(header, header.width)) + 1;
    // Two rows as they are filtered, and the pixels of one that is spread over the picture.
    const std::int64_t work = 2 * row + (header.interlace == 0 ? 0 : header.width * kPixelBytes);
    return pixels * kPixelBytes + work <= kMostDecodingBytes &&
           CanFill(pixels, static_cast<std::int64_t>(compressed),
                   static_cast<std::int64_t>(size) / kMostOfAByte);
}

std::optional<PngHeader> ReadPngHeader(std::span<const std::uint8_t> data) {
    ByteReader reader(data);
    PngHeader header;

    const auto width = reader.ReadBigEndian32();
    const auto height = reader.ReadBigEndian32();
    if (!width || !height || *width < 1 || *width > kLargest || *height < 1 || *height > kLargest) {
        return std::nullopt;
    }
    header.width = static_cast<int>(*width);
    header.height = static_cast<int>(*height);

    // Deliberate D-37: depth and colour type are tested each for itself, so pairs that no PNG has are taken.
    // One would expect a refusal. Such a file counts as a picture without a single drawn pixel, and nothing
    // else is shown in its place.
    header.bitDepth = reader.ReadByte().value_or(0);
    if (!IsOneOf(header.bitDepth, std::array{1, 2, 4, 8, 16})) {
        return std::nullopt;
    }
    header.colourType = reader.ReadByte().value_or(1);
    if (!IsOneOf(header.colourType,
                 std::array<int, 5>{kPngGrey, kPngColour, kPngPalette, kPngGreyAlpha, kPngColourAlpha})) {
        return std::nullopt;
    }

    const auto compression = reader.ReadByte();
    const auto filter = reader.ReadByte();
    if (compression != 0 || filter != 0) {
        return std::nullopt;
    }

    header.interlace = reader.ReadByte().value_or(2);
    return header.interlace <= 1 ? std::optional(header) : std::nullopt;
}
