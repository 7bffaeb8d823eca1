// From the samples of a PNG row to 32-bit premultiplied pixels.
#pragma once

#include "imaging/png_header.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>
#include <vector>

// No transparent colour.
constexpr int kPngNoTransparentColour = -1;

// What the samples mean, as PLTE and tRNS tell it.
struct PngColours {
    // 3 bytes an entry: red, green, blue.
    std::vector<std::uint8_t> palette;
    // The contents of tRNS, widened to 256 entries for palette pictures.
    std::vector<std::uint8_t> transparency;
    // A sample, or red, green and blue as 0xRRGGBB. For palette pictures 0, the sign that `transparency` is
    // in use.
    int transparentColour = kPngNoTransparentColour;
};

// Turns rows of samples into pixels: blue, green, red, alpha, colour multiplied by alpha and cut. A pixel
// with alpha 0 is four zero bytes.
class PngPixelWriter {
public:
    // Fills in a missing palette of greyscale and palette pictures and prepares the look-up.
    PngPixelWriter(const PngHeader& header, PngColours colours);

    // Writes `target.size() / 4` pixels from an unfiltered row that holds them. False when a sample has no
    // colour. A combination of depth and type that the format forbids leaves `target` as it is.
    bool Write(const std::uint8_t* row, std::span<std::uint8_t> target) const;

    // False for such a combination.
    bool WritesEveryPixel() const;

private:
    // The four bytes of a sample's pixel.
    std::uint32_t PixelOf(std::size_t sample) const {
        std::uint32_t pixel = 0;
        std::memcpy(&pixel, lookUp_[sample].data(), sizeof pixel);
        return pixel;
    }
    void FillPalette();
    void PrepareLookUp();
    bool WriteIndexed(const std::uint8_t* row, std::span<std::uint8_t> target) const;
    // Samples of fewer than four bits, all of which have a colour.
    template <unsigned Depth>
    void WriteBits(const std::uint8_t* row, std::span<std::uint8_t> target) const;
    bool WritePairs(const std::uint8_t* row, std::span<std::uint8_t> target) const;
    bool WriteBytes(const std::uint8_t* row, std::span<std::uint8_t> target) const;
    void WriteColour16(const std::uint8_t* row, std::span<std::uint8_t> target) const;
    void WriteGrey16(const std::uint8_t* row, std::span<std::uint8_t> target) const;

    PngHeader header_;
    PngColours colours_;
    // The pixel of each sample for palettes and for greyscale below 16 bits, and how many of them exist.
    std::array<std::array<std::uint8_t, 4>, 256> lookUp_{};
    unsigned known_ = 0;
    // For samples of four bits: the two pixels of each byte, and whether both exist.
    std::array<std::array<std::uint8_t, 8>, 256> pairs_{};
    std::array<std::uint8_t, 256> isPairKnown_{};
};
