// Pixels of every colour type and depth of PNG: by look-up, or sample by sample.
#include "imaging/png_pixels.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace {

constexpr std::size_t kPixelBytes = 4;
constexpr std::size_t kPaletteEntries = 256;
constexpr int kOpaque = 255;

std::uint8_t Multiplied(int channel, int alpha) {
    return static_cast<std::uint8_t>(channel * alpha / kOpaque);
}

// Deliberate D-43: colour times alpha is cut, not rounded, so half-transparent colours come out up to one
// step darker. Rounding is the usual choice; the pixel buffers are compared by their bytes, and all parsers
// cut alike.
void WritePixel(std::uint8_t* target, int red, int green, int blue, int alpha) {
    if (alpha != kOpaque) {
        red = Multiplied(red, alpha);
        green = Multiplied(green, alpha);
        blue = Multiplied(blue, alpha);
    }
    target[0] = static_cast<std::uint8_t>(blue);
    target[1] = static_cast<std::uint8_t>(green);
    target[2] = static_cast<std::uint8_t>(red);
    target[3] = static_cast<std::uint8_t>(alpha);
}

// Where the bytes of a pixel with an alpha sample stand.
//
// Deliberate D-44: of a 16-bit sample only the high byte is used.
// Rounding to the nearest 8-bit value is more exact. Cutting gives the same bytes on every machine and is
// what theme pictures have been judged by.
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
        // Deliberate D-45: a palette picture of one bit without a palette is black and white, a deeper one
        // all black. The format calls both broken. Black and white is what people who make such files mean.
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
    if (header_.bitDepth < 8) {
        return true;
    }
    switch (header_.colourType) {
    case kPngColour:
        is16 ? WriteColour16(row, target) : WriteColour8(row, target);
        return true;
    case kPngGreyAlpha:
        is16 ? WriteWithAlpha<4, 0, 0, 0, 2>(row, target) : WriteWithAlpha<2, 0, 0, 0, 1>(row, target);
        return true;
    default:
        is16 ? WriteWithAlpha<8, 0, 2, 4, 6>(row, target) : WriteWithAlpha<4, 0, 1, 2, 3>(row, target);
        return true;
    }
}

// A palette of 16 bits has no look-up, as no sample of it has a place in a byte: `known_` is 0 and every
// sample fails.
bool PngPixelWriter::WriteIndexed(const std::uint8_t* row, std::span<std::uint8_t> target) const {
    const int depth = std::min(header_.bitDepth, 8);
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

void PngPixelWriter::WriteColour8(const std::uint8_t* row, std::span<std::uint8_t> target) const {
    for (std::size_t i = 0; i + kPixelBytes <= target.size(); i += kPixelBytes, row += 3) {
        const bool isTransparent = Joined(row[0], row[1], row[2]) == colours_.transparentColour;
        WritePixel(target.data() + i, row[0], row[1], row[2], isTransparent ? 0 : kOpaque);
    }
}

// Deliberate D-46: the transparent colour of 16-bit RGB is compared twice by the pixels' high bytes: with the
// low bytes of the colour in the file, and with its high bytes. One would compare whole samples. With the two
// tests also files whose colour was written as 8-bit values are transparent where their makers meant it, and
// pictures that come near the colour have grown used to it.
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
