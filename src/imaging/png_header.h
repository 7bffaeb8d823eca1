// The header of a PNG file and the layout of its passes.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

// The fields of IHDR; all zero until it comes.
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

// Where the pixels of one pass lie in the picture.
struct PngPass {
    int firstRow = 0;
    int firstColumn = 0;
    int rowStep = 1;
    int columnStep = 1;
};

// The range of passes that a picture is made of: Adam7 has seven, a plain picture the eighth alone.
constexpr int kPngFirstAdam7Pass = 0;
constexpr int kPngPlainPass = 7;
PngPass PngPassAt(int pass);

// Rows or columns of a pass: those of `size` that lie on `first` and every `step` behind it.
int PngPassExtent(int size, int first, int step);

// Bits of one pixel. Also for combinations of depth and type that the format forbids.
int PngBitsPerPixel(const PngHeader& header);

// Bytes of a row of `pixels` pixels, without its filter byte.
std::size_t PngRowBytes(const PngHeader& header, int pixels);

// Bytes of the inflated data, filter bytes included. Nothing when a step of the sum leaves 32 bits.
std::optional<std::size_t> PngInflatedSize(const PngHeader& header);

// Whether a picture of inflated size `size` may be decoded from `compressed` bytes: it has no more pixels
// than any picture may have, they fit in memory together with the rows under way, and the data can fill them.
bool IsPngAffordable(const PngHeader& header, std::size_t size, std::size_t compressed);

// Reads the contents of IHDR. Nothing when they are shorter than 13 bytes or a field has a value that does
// not exist.
std::optional<PngHeader> ReadPngHeader(std::span<const std::uint8_t> data);
