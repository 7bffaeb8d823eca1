// One pass of a PNG after the other, each row unfiltered as soon as it is whole and then turned into pixels.
#include "imaging/png_passes.h"

#include "imaging/c32bppdib.h"
#include "imaging/png_filter.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace {

constexpr std::size_t kPixelBytes = 4;

// Bytes from a sample to its left neighbour's; 1 where pixels share a byte.
std::size_t PixelDistance(const PngHeader& header) {
    return header.bitDepth < 8 ? 1 : static_cast<std::size_t>(PngBitsPerPixel(header) / 8);
}

void Spread(std::span<const std::uint8_t> pixels, const PngPass& pass, std::span<std::uint8_t> line) {
    const std::size_t step = static_cast<std::size_t>(pass.columnStep) * kPixelBytes;
    std::size_t to = static_cast<std::size_t>(pass.firstColumn) * kPixelBytes;
    for (std::size_t i = 0; i < pixels.size(); i += kPixelBytes, to += step) {
        std::copy_n(pixels.data() + i, kPixelBytes, line.data() + to);
    }
}

} // namespace

PngRows::PngRows(const PngHeader& header, const PngPixelWriter& writer, c32bppDIB& host)
    : header_(header), writer_(writer), host_(host),
      number_(header.interlace == 0 ? kPngPlainPass : kPngFirstAdam7Pass),
      last_(header.interlace == 0 ? kPngPlainPass : kPngPlainPass - 1) {
    BeginPass();
}

// Passes without a pixel have no data.
void PngRows::BeginPass() {
    int columns = 0;
    for (; !IsDone(); ++number_) {
        pass_ = PngPassAt(number_);
        columns = PngPassExtent(header_.width, pass_.firstColumn, pass_.columnStep);
        rows_ = PngPassExtent(header_.height, pass_.firstRow, pass_.rowStep);
        if (columns > 0 && rows_ > 0) {
            break;
        }
    }
    if (IsDone()) {
        return;
    }
    row_ = 0;
    rowBytes_ = 1 + PngRowBytes(header_, columns);
    // Unset, as a row may be as long as the file says and its data never come.
    bytes_ = std::make_unique_for_overwrite<std::uint8_t[]>(rowBytes_);
    if (rows_ > 1) {
        prior_ = std::make_unique_for_overwrite<std::uint8_t[]>(rowBytes_);
    }
    spread_.resize(number_ == kPngPlainPass ? 0 : static_cast<std::size_t>(columns) * kPixelBytes);
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
    if (!Unfilter(bytes_[0], row, prior, PixelDistance(header_)) || !writer_.Write(row.data(), pixels)) {
        return false;
    }
    if (!spread_.empty()) {
        Spread(pixels, pass_, line);
    }
    std::swap(bytes_, prior_);
    filled_ = 0;
    if (++row_ == rows_) {
        ++number_;
        BeginPass();
    }
    return true;
}
