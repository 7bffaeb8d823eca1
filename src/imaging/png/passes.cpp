// The passes of a PNG, one after the other. Each row is unfiltered as soon as it is complete, and then turned
// into pixels.
#include "imaging/png/passes.h"

#include "imaging/picture_pixels.h"
#include "imaging/png/filter.h"
#include "platform/picture_limits.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <limits>
#include <utility>

namespace {

constexpr std::int64_t kLargest = std::numeric_limits<std::int32_t>::max();

// clang-format off
constexpr std::array<int, 8> kFirstRow    = {0, 0, 4, 0, 2, 0, 1, 0};
constexpr std::array<int, 8> kFirstColumn = {0, 4, 0, 2, 0, 1, 0, 0};
constexpr std::array<int, 8> kRowStep     = {8, 8, 8, 4, 4, 2, 2, 1};
constexpr std::array<int, 8> kColumnStep  = {8, 8, 4, 4, 2, 2, 1, 1};
// clang-format on

// The passes of a picture: Adam7 uses the first seven, a plain picture only the eighth.
constexpr int kFirstAdam7Pass = 0;
constexpr int kPlainPass = 7;

PngPass PassAt(int pass) {
    const auto i = static_cast<std::size_t>(pass);
    return {kFirstRow[i], kFirstColumn[i], kRowStep[i], kColumnStep[i]};
}

// Number of rows or columns of a pass: `first` and every `step` after it, below `size`.
int PassExtent(int size, int first, int step) {
    return size / step + (size % step > first ? 1 : 0);
}

// Also defined for combinations of depth and type that the format forbids.
int BitsPerPixel(const PngHeader& header) {
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

// Bytes of a row of `pixels` pixels, without the filter byte.
std::size_t RowBytes(const PngHeader& header, int pixels) {
    return (static_cast<std::size_t>(pixels) * static_cast<std::size_t>(BitsPerPixel(header)) + 7) / 8;
}

// Distance in bytes between neighbouring pixels; 1 when pixels share a byte.
std::size_t PixelDistance(const PngHeader& header) {
    return header.bitDepth < 8 ? 1 : static_cast<std::size_t>(BitsPerPixel(header) / 8);
}

void Spread(std::span<const std::uint8_t> pixels, const PngPass& pass, std::span<std::uint8_t> line) {
    const std::size_t step = static_cast<std::size_t>(pass.columnStep) * kPixelBytes;
    std::size_t to = static_cast<std::size_t>(pass.firstColumn) * kPixelBytes;
    for (std::size_t i = 0; i < pixels.size(); i += kPixelBytes, to += step) {
        std::copy_n(pixels.data() + i, kPixelBytes, line.data() + to);
    }
}

} // namespace

std::optional<std::size_t> PngInflatedSize(const PngHeader& header) {
    const bool isPlain = header.interlace == 0;
    std::int64_t sum = 0;
    for (int i = isPlain ? kPlainPass : kFirstAdam7Pass; i < kPlainPass + (isPlain ? 1 : 0); ++i) {
        const PngPass pass = PassAt(i);
        const std::int64_t columns = PassExtent(header.width, pass.firstColumn, pass.columnStep);
        const std::int64_t rows = PassExtent(header.height, pass.firstRow, pass.rowStep);
        const std::int64_t bits = columns * BitsPerPixel(header) + 7;
        if (bits > kLargest || (bits / 8 + 1) * rows > kLargest - sum) {
            return std::nullopt;
        }
        sum += (bits / 8 + 1) * rows;
    }
    return static_cast<std::size_t>(sum);
}

bool IsPngAffordable(const PngHeader& header, std::size_t size, std::size_t compressed) {
    // Deflate makes at most 1,032 bytes from one.
    constexpr std::int64_t kMostOfAByte = 1032;
    constexpr std::int64_t kBytes{kPixelBytes};
    if (!IsPictureSize(header.width, header.height)) {
        return false;
    }
    const std::int64_t pixels = std::int64_t{header.width} * header.height;
    const auto row = static_cast<std::int64_t>(RowBytes(header, header.width)) + 1;
    // Two rows for the filters, and one row of pixels that is spread over the picture.
    const std::int64_t work = 2 * row + (header.interlace == 0 ? 0 : header.width * kBytes);
    return pixels * kBytes + work <= kMostDecodingBytes &&
           CanFill(pixels, static_cast<std::int64_t>(compressed),
                   static_cast<std::int64_t>(size) / kMostOfAByte);
}

PngRows::PngRows(const PngHeader& header, const PngPixelWriter& writer, PicturePixels& cHost)
    : header_(header), writer_(writer), host_(cHost),
      number_(header.interlace == 0 ? kPlainPass : kFirstAdam7Pass),
      last_(header.interlace == 0 ? kPlainPass : kPlainPass - 1) {
    BeginPass();
}

// Passes without pixels have no data.
void PngRows::BeginPass() {
    int columns = 0;
    for (; !IsDone(); ++number_) {
        pass_ = PassAt(number_);
        columns = PassExtent(header_.width, pass_.firstColumn, pass_.columnStep);
        rows_ = PassExtent(header_.height, pass_.firstRow, pass_.rowStep);
        if (columns > 0 && rows_ > 0) {
            break;
        }
    }
    if (IsDone()) {
        return;
    }
    row_ = 0;
    rowBytes_ = 1 + RowBytes(header_, columns);
    // Uninitialized: a header can announce a long row whose data never arrive.
    bytes_ = std::make_unique_for_overwrite<std::uint8_t[]>(rowBytes_);
    if (rows_ > 1) {
        prior_ = std::make_unique_for_overwrite<std::uint8_t[]>(rowBytes_);
    }
    spread_.resize(number_ == kPlainPass ? 0 : static_cast<std::size_t>(columns) * kPixelBytes);
}

bool PngRows::Take(std::span<const std::uint8_t> data) {
    while (!data.empty() && !IsDone() && !isBroken_) {
        const std::size_t taken = std::min(data.size(), rowBytes_ - filled_);
        std::memcpy(bytes_.get() + filled_, data.data(), taken);
        filled_ += taken;
        data = data.subspan(taken);
        isBroken_ = filled_ == rowBytes_ && !DrawRow();
    }
    return !isBroken_;
}

bool PngRows::Finish() {
    while (!IsDone() && !isBroken_) {
        std::memset(bytes_.get() + filled_, 0, rowBytes_ - filled_);
        isBroken_ = !DrawRow();
    }
    return !isBroken_;
}

bool PngRows::DrawRow() {
    const std::span row(bytes_.get() + 1, rowBytes_ - 1);
    const std::uint8_t* const prior = row_ == 0 ? nullptr : prior_.get() + 1;
    const std::span<std::uint8_t> line = host_.Line(pass_.firstRow + row_ * pass_.rowStep);
    const std::span<std::uint8_t> pixels = spread_.empty() ? line : std::span(spread_);
    if (!Unfilter(bytes_[0], row, prior, PixelDistance(header_))) {
        return false;
    }
    if (!writer_.IsClear(row)) {
        if (!writer_.Write(row.data(), pixels)) {
            return false;
        }
        if (!spread_.empty()) {
            Spread(pixels, pass_, line);
        }
    }
    std::swap(bytes_, prior_);
    filled_ = 0;
    if (++row_ == rows_) {
        ++number_;
        BeginPass();
    }
    return true;
}
