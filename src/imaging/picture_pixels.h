// The pixels of a picture, as the parsers make them from a file.
#pragma once

#include "platform/pixel_memory.h"

#include <cstddef>
#include <cstdint>
#include <span>

constexpr std::size_t kPixelBytes = 4;

// Source kinds of a loaded picture.
enum ImageKind : int { kImageNone = 0, kImageBitmap = 1, kImageGif = 9, kImagePng = 10, kImageIcon = 11 };

// A buffer of 32-bit pixels: blue, green, red, alpha, the colour multiplied by alpha.
class PicturePixels {
public:
    // Empties the object and makes a zero-filled buffer. Returns false for a height of 0, a width below 1 or
    // more than 1 GiB of pixels. The sign of the height is ignored.
    bool InitializeDIB(int width, int height);
    // The same with undefined contents, for a caller that writes every pixel, preferably through Line.
    bool InitializeUnset(int width, int height);
    // The same as InitializeDIB for a caller that writes through Line. Rows that are never written take
    // little or no memory in a large picture.
    bool InitializeClear(int width, int height);
    // Empties the object and takes over memory from AllocatePixels: rows without gaps, the top row first.
    // Both sizes are at least 1.
    void TakePixels(PixelMemory memory, int width, int height);
    // Empties the object: no pixels, `alpha` false, `ImageType` none.
    void DestroyDIB() { *this = PicturePixels(); }

    bool IsEmpty() const { return !memory_; }
    // Size in pixels, 0 when empty.
    int Width() const { return width_; }
    int Height() const { return height_; }
    // Bytes from one row to the next, and of all rows.
    std::size_t ScanWidth() const { return static_cast<std::size_t>(width_) * kPixelBytes; }
    std::size_t ByteCount() const { return ScanWidth() * static_cast<std::size_t>(height_); }

    // The pixels, bottom row first. Null when empty. Invalidated by TopDownRows.
    std::uint8_t* BitsPointer();
    // The pixels, top row first. Invalidated by BitsPointer.
    std::span<const std::uint8_t> TopDownRows();
    // One row; row 0 is the top row. Unlike the other two, it never reorders the rows.
    std::span<std::uint8_t> Line(int row);

    // The pixels contain real transparency.
    bool alpha = false;
    // One of ImageKind.
    int ImageType = kImageNone;

private:
    bool Allocate(int width, int height, void* (*allocate)(std::size_t bytes));
    void OrderRows(bool isTopDown);

    PixelMemory memory_;
    // The order of the rows in memory.
    bool isTopDown_ = false;
    int width_ = 0;
    int height_ = 0;
};

// Colour times alpha / 255, rounded down. Every parser uses it.
constexpr std::uint8_t Premultiplied(int colour, int alpha) {
    return static_cast<std::uint8_t>(colour * alpha / 255);
}

// Decides from all pixels, in any order of rows, what the alpha bytes of a 32-bit bitmap mean, and converts
// them. If every alpha byte is 0, the bitmap has no alpha, and all alpha bytes become 255. If no colour
// exceeds its alpha, the colours are already premultiplied and stay as they are. Otherwise they are
// multiplied. Returns whether the picture has alpha: false only in the first case.
bool SettleAlpha(std::span<std::uint8_t> pixels);
