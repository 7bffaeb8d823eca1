// One pass of a PNG after the other, each row unfiltered where it lies and then turned into pixels.
#include "imaging/png_passes.h"

#include "imaging/c32bppdib.h"
#include "imaging/png_filter.h"

#include <algorithm>
#include <cstddef>
#include <vector>

namespace {

constexpr std::size_t kPixelBytes = 4;

struct PassSize {
    int columns = 0;
    int rows = 0;
};

PassSize SizeOf(const PngHeader& header, const PngPass& pass) {
    return {PngPassExtent(header.width, pass.firstColumn, pass.columnStep),
            PngPassExtent(header.height, pass.firstRow, pass.rowStep)};
}

// Bytes from a sample to its left neighbour's; 1 where pixels share a byte.
std::size_t PixelDistance(const PngHeader& header) {
    return header.bitDepth < 8 ? 1 : static_cast<std::size_t>(PngBitsPerPixel(header) / 8);
}

std::span<std::uint8_t> LineOf(c32bppDIB& host, int row) {
    const auto line = static_cast<std::size_t>(host.Height() - row - 1);
    return {host.BitsPointer() + line * host.ScanWidth(), host.ScanWidth()};
}

void Spread(std::span<const std::uint8_t> pixels, const PngPass& pass, std::span<std::uint8_t> line) {
    const std::size_t step = static_cast<std::size_t>(pass.columnStep) * kPixelBytes;
    std::size_t to = static_cast<std::size_t>(pass.firstColumn) * kPixelBytes;
    for (std::size_t i = 0; i < pixels.size(); i += kPixelBytes, to += step) {
        std::copy_n(pixels.data() + i, kPixelBytes, line.data() + to);
    }
}

// Draws one pass and takes its rows off the front of `data`.
bool DrawPass(const PngHeader& header, const PngPixelWriter& writer, int number,
              std::span<std::uint8_t>& data, c32bppDIB& host) {
    const PngPass pass = PngPassAt(number);
    const PassSize size = SizeOf(header, pass);
    if (size.columns == 0 || size.rows == 0) {
        return true;
    }
    const bool isPlain = number == kPngPlainPass;
    const std::size_t rowBytes = PngRowBytes(header, size.columns);
    std::vector<std::uint8_t> scratch(isPlain ? 0 : static_cast<std::size_t>(size.columns) * kPixelBytes);
    const std::uint8_t* prior = nullptr;
    for (int i = 0; i < size.rows; ++i) {
        const std::span<std::uint8_t> row = data.subspan(1, rowBytes);
        const std::span<std::uint8_t> line = LineOf(host, pass.firstRow + i * pass.rowStep);
        const std::span<std::uint8_t> pixels = isPlain ? line : std::span(scratch);
        if (!Unfilter(data[0], row, prior, PixelDistance(header)) || !writer.Write(row.data(), pixels)) {
            return false;
        }
        if (!isPlain) {
            Spread(pixels, pass, line);
        }
        prior = row.data();
        data = data.subspan(1 + rowBytes);
    }
    return true;
}

} // namespace

bool DrawPngPasses(const PngHeader& header, const PngPixelWriter& writer, std::span<std::uint8_t> data,
                   c32bppDIB& host) {
    if (header.interlace == 0) {
        return DrawPass(header, writer, kPngPlainPass, data, host);
    }
    for (int pass = kPngFirstAdam7Pass; pass < kPngPlainPass; ++pass) {
        if (!DrawPass(header, writer, pass, data, host)) {
            return false;
        }
    }
    return true;
}
