// Decoding run-length coded bitmaps into palette indices.
#include "platform/pictures/run_lengths.h"

#include "core/byte_reader.h"
#include "platform/picture_limits.h"

#include <algorithm>
#include <cstdlib>

namespace {

using Bytes = std::span<const std::uint8_t>;

constexpr std::size_t kFileHeader = 14;
constexpr std::size_t kUsedColoursAt = kFileHeader + 32;
constexpr std::uint32_t kRuns8 = 1;
constexpr std::uint32_t kRuns4 = 2;
constexpr std::uint32_t kMostColours = 256;
constexpr std::size_t kColourBytes = 4;
// Two bytes make a run of at most 255 pixels.
constexpr std::int64_t kMostPixelsOfAByte = 128;
// One byte for the index, and four in the image object.
constexpr std::int64_t kPixelBytes = 5;

// Second bytes after a zero; larger ones are a number of plain pixels.
constexpr unsigned kEndOfLine = 0;
constexpr unsigned kEndOfPicture = 1;
constexpr unsigned kJump = 2;

// The indices, and the position of the next pixel. Rows are counted in the order of the file.
struct Canvas {
    const BitmapHeader& header;
    std::uint8_t* indices;
    std::int64_t x = 0;
    std::int64_t row = 0;

    bool IsFull() const { return row >= header.height; }
    // The rest of the row.
    std::span<std::uint8_t> Rest() const {
        const std::int64_t y = header.isTopDown ? row : header.height - 1 - row;
        return {indices + y * header.width + x, static_cast<std::size_t>(header.width - x)};
    }
    void Advance(std::size_t count) { x = std::min(header.width, x + static_cast<std::int64_t>(count)); }
};

// Sample `i` of a row of samples.
std::uint8_t SampleAt(Bytes bytes, std::size_t i, bool isHalf) {
    if (!isHalf) {
        return bytes[i];
    }
    return i % 2 == 0 ? static_cast<std::uint8_t>(bytes[i / 2] >> 4)
                      : static_cast<std::uint8_t>(bytes[i / 2] & 15U);
}

// A run of 4-bit samples alternates between two of them.
void DrawRun(Canvas& canvas, std::size_t count, std::uint8_t value) {
    const bool isHalf = canvas.header.bitCount == 4;
    const std::array<std::uint8_t, 2> samples = {
        isHalf ? static_cast<std::uint8_t>(value >> 4) : value,
        isHalf ? static_cast<std::uint8_t>(value & 15U) : value,
    };
    const auto to = canvas.Rest();
    for (std::size_t i = 0; i < std::min(count, to.size()); ++i) {
        to[i] = samples[i % 2];
    }
    canvas.Advance(count);
}

// Copies plain pixels. An odd number of bytes is followed by a padding byte, which may be missing.
bool DrawPlain(Canvas& canvas, std::size_t count, ByteReader& reader) {
    const bool isHalf = canvas.header.bitCount == 4;
    const std::size_t size = isHalf ? (count + 1) / 2 : count;
    const auto bytes = reader.Read(size);
    if (!bytes) {
        return false;
    }
    reader.Skip(std::min<std::size_t>(size % 2, reader.remaining()));
    const auto to = canvas.Rest();
    for (std::size_t i = 0; i < std::min(count, to.size()); ++i) {
        to[i] = SampleAt(*bytes, i, isHalf);
    }
    canvas.Advance(count);
    return true;
}

bool Jump(Canvas& canvas, ByteReader& reader) {
    const auto across = reader.ReadByte();
    const auto along = reader.ReadByte();
    if (!along) {
        return false;
    }
    canvas.x = std::min(canvas.header.width - 1, canvas.x + *across);
    canvas.row = std::min(canvas.header.height - 1, canvas.row + *along);
    return true;
}

bool Draw(Canvas& canvas, ByteReader& reader) {
    while (!canvas.IsFull() && reader.remaining() > 0) {
        const std::size_t count = *reader.ReadByte();
        const auto second = reader.ReadByte();
        if (!second) {
            return false;
        }
        if (count > 0) {
            DrawRun(canvas, count, *second);
        } else if (*second == kEndOfPicture) {
            return true;
        } else if (*second == kEndOfLine) {
            canvas.x = 0;
            ++canvas.row;
        } else if (!(*second == kJump ? Jump(canvas, reader) : DrawPlain(canvas, *second, reader))) {
            return false;
        }
    }
    return true;
}

// Red, green and blue of 256 colours: those of the file, and the last one for every index after it. The
// reader is at the file's palette.
std::vector<std::uint8_t> ReadPalette(ByteReader& reader, std::size_t count) {
    const auto colours = reader.Read(count * kColourBytes);
    std::vector<std::uint8_t> palette;
    for (std::size_t i = 0; colours && i < kMostColours; ++i) {
        const std::size_t at = std::min(i, count - 1) * kColourBytes;
        palette.insert(palette.end(), {(*colours)[at + 2], (*colours)[at + 1], (*colours)[at]});
    }
    return palette;
}

} // namespace

bool HasRunLengths(const BitmapHeader& header) {
    return (header.compression == kRuns8 && header.bitCount == 8) ||
           (header.compression == kRuns4 && header.bitCount == 4);
}

std::unique_ptr<SystemPicture> LoadRunLengths(std::span<const std::uint8_t> file,
                                              const BitmapHeader& header) {
    ByteReader reader(file);
    reader.Skip(kUsedColoursAt);
    const std::uint32_t used = reader.ReadLittleEndian32().value_or(0);
    const std::uint32_t count = used == 0 ? 1U << header.bitCount : used;
    ByteReader body(file);
    if (count > kMostColours || !body.Skip(kFileHeader + header.bytes)) {
        return nullptr;
    }
    auto picture = std::make_unique<SystemPicture>();
    picture->palette = ReadPalette(body, count);
    const auto gap = header.rows - static_cast<std::int64_t>(body.position());
    if (picture->palette.empty() || !body.Skip(static_cast<std::size_t>(std::max<std::int64_t>(0, gap)))) {
        return nullptr;
    }
    const std::int64_t pixels = header.width * header.height;
    if (body.remaining() == 0 || pixels > kMostDecodingBytes / kPixelBytes ||
        !CanFill(pixels, static_cast<std::int64_t>(body.remaining()), pixels / kMostPixelsOfAByte)) {
        return nullptr;
    }
    const std::shared_ptr<std::uint8_t> indices(
        static_cast<std::uint8_t*>(std::calloc(static_cast<std::size_t>(pixels), 1)), std::free);
    Canvas canvas{header, indices.get()};
    if (!indices || !Draw(canvas, body)) {
        return nullptr;
    }
    picture->width = static_cast<int>(header.width);
    picture->height = static_cast<int>(header.height);
    picture->bitCount = 8;
    picture->pixels = indices.get();
    picture->stride = static_cast<std::size_t>(header.width);
    picture->owner = indices;
    return picture;
}
