// The pixels of every colour type and depth of PNG, from a look-up table or sample by sample.
#include "imaging/png/pixels.h"

#include "imaging/picture_pixels.h"
#include "imaging/png/expand.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace {

constexpr std::size_t kPaletteEntries = 256;
constexpr int kOpaque = 255;

// Deliberate D-43: colour times alpha is rounded down, so half-transparent colours are up to one step darker.
// One would expect rounding to the nearest value. Pixel buffers are compared byte by byte, and all parsers
// round down.
void WritePixel(std::uint8_t* target, int red, int green, int blue, int alpha) {
    if (alpha != kOpaque) {
        red = Premultiplied(red, alpha);
        green = Premultiplied(green, alpha);
        blue = Premultiplied(blue, alpha);
    }
    target[0] = static_cast<std::uint8_t>(blue);
    target[1] = static_cast<std::uint8_t>(green);
    target[2] = static_cast<std::uint8_t>(red);
    target[3] = static_cast<std::uint8_t>(alpha);
}

// The template arguments are the byte offsets of the samples within a pixel.
//
// Deliberate D-44: only the high byte of a 16-bit sample is used.
// One would expect rounding to the nearest 8-bit value. Using the high byte gives the same bytes on every
// machine, and the makers of themes have judged their pictures by them.
template <int Step, int Red, int Green, int Blue, int Alpha>
void WriteWithAlpha(const std::uint8_t* row, std::span<std::uint8_t> target) {
    for (std::size_t i = 0; i + kPixelBytes <= target.size(); i += kPixelBytes, row += Step) {
        WritePixel(target.data() + i, row[Red], row[Green], row[Blue], row[Alpha]);
    }
}

int Joined(int red, int green, int blue) {
    return red << 16 | green << 8 | blue;
}

} // namespace

PngPixelWriter::PngPixelWriter(const PngHeader& header, PngColours colours)
    : header_(header), colours_(std::move(colours)) {
    const bool usesLookUp = header_.colourType == kPngPalette || header_.colourType == kPngGrey;
    if (usesLookUp && header_.bitDepth <= 8) {
        FillPalette();
        PrepareLookUp();
    }
    clearByte_ = ClearByte();
}

// With an alpha sample, zeros are clear pixels. Otherwise it is the first sample with a clear pixel, repeated
// to fill a byte.
int PngPixelWriter::ClearByte() const {
    if (header_.colourType == kPngGreyAlpha || header_.colourType == kPngColourAlpha) {
        return 0;
    }
    if (header_.bitDepth > 8) {
        return -1;
    }
    const unsigned highest = (1U << std::max(1, header_.bitDepth)) - 1;
    for (unsigned sample = 0; sample < known_ && sample <= highest; ++sample) {
        if (PixelOf(sample) == 0) {
            return static_cast<int>(sample * (255 / highest));
        }
    }
    return -1;
}

void PngPixelWriter::FillPalette() {
    if (!colours_.palette.empty()) {
        return;
    }
    colours_.palette.resize(kPaletteEntries * 3);
    if (header_.colourType == kPngGrey) {
        const int top = (1 << header_.bitDepth) - 1;
        auto entry = colours_.palette.begin();
        for (int i = 0; i <= top; ++i) {
            entry = std::fill_n(entry, 3, static_cast<std::uint8_t>(i * (255 / top)));
        }
    } else if (header_.bitDepth == 1) {
        // Deliberate D-45: a palette picture without a palette is black and white at one bit and all black at
        // other depths.
        // One would expect both to be refused as broken. People who make one-bit files of this kind mean
        // black and white.
        std::fill_n(colours_.palette.begin() + 3, 3, std::uint8_t{255});
    }
}

void PngPixelWriter::PrepareLookUp() {
    const bool hasTable =
        header_.colourType == kPngPalette && colours_.transparentColour != kPngNoTransparentColour;
    std::size_t known = std::min(kPaletteEntries, colours_.palette.size() / 3);
    if (hasTable) {
        known = std::min(known, colours_.transparency.size());
    }
    known_ = static_cast<unsigned>(known);
    for (std::size_t i = 0; i < known; ++i) {
        int alpha = kOpaque;
        if (hasTable) {
            alpha = colours_.transparency[i];
        } else if (header_.colourType == kPngGrey && static_cast<int>(i) == colours_.transparentColour) {
            alpha = 0;
        }
        const std::uint8_t* const entry = colours_.palette.data() + i * 3;
        WritePixel(lookUp_[i].data(), entry[0], entry[1], entry[2], alpha);
    }
    for (std::size_t i = 0; header_.bitDepth == 4 && i < pairs_.size(); ++i) {
        std::memcpy(pairs_[i].data(), lookUp_[i >> 4].data(), kPixelBytes);
        std::memcpy(pairs_[i].data() + kPixelBytes, lookUp_[i & 15U].data(), kPixelBytes);
        isPairKnown_[i] = (i >> 4) < known_ && (i & 15U) < known_ ? 1 : 0;
    }
}

bool PngPixelWriter::IsClear(std::span<const std::uint8_t> row) const {
    return !row.empty() && row[0] == clearByte_ &&
           std::memcmp(row.data(), row.data() + 1, row.size() - 1) == 0;
}

bool PngPixelWriter::WritesEveryPixel() const {
    return header_.bitDepth >= 8 || header_.colourType == kPngPalette || header_.colourType == kPngGrey;
}

bool PngPixelWriter::Write(const std::uint8_t* row, std::span<std::uint8_t> target) const {
    const bool is16 = header_.bitDepth == 16;
    switch (header_.colourType) {
    case kPngPalette:
        return WriteIndexed(row, target);
    case kPngGrey:
        if (!is16) {
            return WriteIndexed(row, target);
        }
        WriteGrey16(row, target);
        return true;
    default:
        break;
    }
    if (!WritesEveryPixel()) {
        return true;
    }
    switch (header_.colourType) {
    case kPngColour:
        is16 ? WriteColour16(row, target) : ExpandColours(row, colours_.transparentColour, target);
        return true;
    case kPngGreyAlpha:
        is16 ? WriteWithAlpha<4, 0, 0, 0, 2>(row, target) : WriteWithAlpha<2, 0, 0, 0, 1>(row, target);
        return true;
    default:
        is16 ? WriteWithAlpha<8, 0, 2, 4, 6>(row, target) : ExpandColoursWithAlpha(row, target);
        return true;
    }
}

// A palette of 16 bits has no look-up table, because its samples do not fit in a byte: `known_` is 0 and
// every sample fails.
bool PngPixelWriter::WriteIndexed(const std::uint8_t* row, std::span<std::uint8_t> target) const {
    if (header_.bitDepth == 4) {
        return WritePairs(row, target);
    }
    if (header_.bitDepth >= 8) {
        return WriteBytes(row, target);
    }
    if (known_ >> header_.bitDepth != 0) {
        header_.bitDepth == 1 ? WriteBits<1>(row, target) : WriteBits<2>(row, target);
        return true;
    }
    const int depth = header_.bitDepth;
    const auto mask = static_cast<unsigned>((1 << depth) - 1);
    int shift = 8 - depth;
    for (std::size_t i = 0; i + kPixelBytes <= target.size(); i += kPixelBytes) {
        const unsigned sample = static_cast<unsigned>(*row) >> shift & mask;
        if (sample >= known_) {
            return false;
        }
        std::memcpy(target.data() + i, lookUp_[sample].data(), kPixelBytes);
        shift -= depth;
        if (shift < 0) {
            shift = 8 - depth;
            ++row;
        }
    }
    return true;
}

template <unsigned Depth>
void PngPixelWriter::WriteBits(const std::uint8_t* row, std::span<std::uint8_t> target) const {
    constexpr unsigned kSamples = 8 / Depth;
    for (std::size_t i = 0; i < target.size(); i += kSamples * kPixelBytes, ++row) {
        std::array<std::uint32_t, kSamples> pixels{};
        for (unsigned k = 0; k < kSamples; ++k) {
            pixels[k] = PixelOf(*row >> (8 - Depth - k * Depth) & ((1U << Depth) - 1));
        }
        std::memcpy(target.data() + i, pixels.data(), std::min(sizeof pixels, target.size() - i));
    }
}

bool PngPixelWriter::WriteBytes(const std::uint8_t* row, std::span<std::uint8_t> target) const {
    const std::size_t count = target.size() / kPixelBytes;
    std::uint8_t highest = 0;
    for (std::size_t i = 0; i < count; ++i) {
        highest = std::max(highest, row[i]);
    }
    if (count != 0 && highest >= known_) {
        return false;
    }
    // Eight equal samples, common in plain areas, take a single look-up.
    constexpr std::size_t kRun = 8;
    std::uint8_t* to = target.data();
    std::size_t i = 0;
    for (; i + kRun <= count; i += kRun, to += kRun * kPixelBytes) {
        std::uint64_t indices = 0;
        std::memcpy(&indices, row + i, sizeof indices);
        const std::uint64_t first = PixelOf(indices & 255U);
        if (indices == (indices & 255U) * 0x0101010101010101U) {
            const std::uint64_t two = first << 32 | first;
            for (std::size_t k = 0; k < kRun / 2; ++k) {
                std::memcpy(to + k * sizeof two, &two, sizeof two);
            }
        } else {
            for (std::size_t k = 0; k < kRun; ++k) {
                std::memcpy(to + k * kPixelBytes, lookUp_[row[i + k]].data(), kPixelBytes);
            }
        }
    }
    for (; i < count; ++i, to += kPixelBytes) {
        std::memcpy(to, lookUp_[row[i]].data(), kPixelBytes);
    }
    return true;
}

bool PngPixelWriter::WritePairs(const std::uint8_t* row, std::span<std::uint8_t> target) const {
    constexpr std::size_t kPairBytes = 2 * kPixelBytes;
    std::uint8_t areKnown = 1;
    std::size_t i = 0;
    for (; i + kPairBytes <= target.size(); i += kPairBytes, ++row) {
        areKnown &= isPairKnown_[*row];
        std::memcpy(target.data() + i, pairs_[*row].data(), kPairBytes);
    }
    if (i < target.size()) {
        const unsigned last = static_cast<unsigned>(*row) >> 4;
        areKnown &= last < known_ ? 1 : 0;
        std::memcpy(target.data() + i, lookUp_[last].data(), kPixelBytes);
    }
    return areKnown != 0;
}

// Deliberate D-46: the transparent colour of 16-bit RGB is compared twice with the high bytes of a pixel: by
// its low bytes and by its high bytes.
// One would expect whole samples to be compared. The two tests also cover files that store the colour as
// 8-bit values, and existing pictures with similar colours rely on them.
void PngPixelWriter::WriteColour16(const std::uint8_t* row, std::span<std::uint8_t> target) const {
    const std::vector<std::uint8_t>& named = colours_.transparency;
    const bool hasColour = colours_.transparentColour != kPngNoTransparentColour && named.size() >= 5;
    const int lowBytes = colours_.transparentColour;
    const int highBytes = hasColour ? Joined(named[0], named[2], named[4]) : kPngNoTransparentColour;
    for (std::size_t i = 0; i + kPixelBytes <= target.size(); i += kPixelBytes, row += 6) {
        const int colour = Joined(row[0], row[2], row[4]);
        const bool isTransparent = colour == lowBytes || colour == highBytes;
        WritePixel(target.data() + i, row[0], row[2], row[4], isTransparent ? 0 : kOpaque);
    }
}

void PngPixelWriter::WriteGrey16(const std::uint8_t* row, std::span<std::uint8_t> target) const {
    const std::vector<std::uint8_t>& named = colours_.transparency;
    const bool hasColour = colours_.transparentColour != kPngNoTransparentColour && named.size() >= 2;
    const int transparent = hasColour ? named[0] << 8 | named[1] : kPngNoTransparentColour;
    for (std::size_t i = 0; i + kPixelBytes <= target.size(); i += kPixelBytes, row += 2) {
        const bool isTransparent = (row[0] << 8 | row[1]) == transparent;
        WritePixel(target.data() + i, row[0], row[0], row[0], isTransparent ? 0 : kOpaque);
    }
}
