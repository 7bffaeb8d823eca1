// Converts the samples of a PNG row to 32-bit premultiplied pixels.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>
#include <vector>

// The fields of IHDR, all zero until the chunk has been read.
struct PngHeader {
    int width = 0;
    int height = 0;
    int bitDepth = 0;
    int colourType = 0;
    int interlace = 0;
};

// Colour types of the W3C PNG document.
enum PngColourType : int {
    kPngGrey = 0,
    kPngColour = 2,
    kPngPalette = 3,
    kPngGreyAlpha = 4,
    kPngColourAlpha = 6,
};

// No transparent colour.
constexpr int kPngNoTransparentColour = -1;

// The contents of PLTE and tRNS.
struct PngColours {
    // 3 bytes per entry: red, green, blue.
    std::vector<std::uint8_t> palette;
    // The contents of tRNS, extended to 256 entries for palette pictures.
    std::vector<std::uint8_t> transparency;
    // A sample, or red, green and blue as 0xRRGGBB. In a palette picture 0 means that `transparency` is used.
    int transparentColour = kPngNoTransparentColour;
};

// Turns rows of samples into pixels: blue, green, red, alpha, the colour multiplied by alpha and rounded
// down. A pixel with alpha 0 is four zero bytes.
class PngPixelWriter {
public:
    // Fills in a missing palette of greyscale and palette pictures and prepares the look-up table.
    PngPixelWriter(const PngHeader& header, PngColours colours);

    // Writes `target.size() / 4` pixels from an unfiltered row of at least as many. Returns false when a
    // sample has no colour. Leaves `target` unchanged for a combination of depth and type that the format
    // forbids.
    bool Write(const std::uint8_t* row, std::span<std::uint8_t> target) const;

    // Whether an unfiltered row is known to contain only pixels with alpha 0. A quick test, which does not
    // find every such row.
    bool IsClear(std::span<const std::uint8_t> row) const;

private:
    // The four bytes of the pixel for a sample.
    std::uint32_t PixelOf(std::size_t sample) const {
        std::uint32_t pixel = 0;
        std::memcpy(&pixel, lookUp_[sample].data(), sizeof pixel);
        return pixel;
    }
    // Returns false for a combination of depth and type that the format forbids.
    bool WritesEveryPixel() const;
    void FillPalette();
    void PrepareLookUp();
    int ClearByte() const;
    bool WriteIndexed(const std::uint8_t* row, std::span<std::uint8_t> target) const;
    // For samples of one or two bits, if every sample value has a colour.
    template <unsigned Depth>
    void WriteBits(const std::uint8_t* row, std::span<std::uint8_t> target) const;
    bool WritePairs(const std::uint8_t* row, std::span<std::uint8_t> target) const;
    bool WriteBytes(const std::uint8_t* row, std::span<std::uint8_t> target) const;
    void WriteColour16(const std::uint8_t* row, std::span<std::uint8_t> target) const;
    void WriteGrey16(const std::uint8_t* row, std::span<std::uint8_t> target) const;

    PngHeader header_;
    PngColours colours_;
    // The pixel for each sample of a palette or of greyscale below 16 bits, and the number of valid entries.
    std::array<std::array<std::uint8_t, 4>, 256> lookUp_{};
    unsigned known_ = 0;
    // A row of only this byte is clear; -1 when there is no such byte.
    int clearByte_ = -1;
    // For samples of four bits: the two pixels of each byte, and whether both are valid.
    std::array<std::array<std::uint8_t, 8>, 256> pairs_{};
    std::array<std::uint8_t, 256> isPairKnown_{};
};
