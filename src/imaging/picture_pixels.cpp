// The pixel buffer with its two orders of rows, and the meaning of a bitmap's alpha bytes.
#include "imaging/picture_pixels.h"

#include <algorithm>
#include <cstdlib>
#include <utility>

namespace {

constexpr std::int64_t kMostPixelBytes = std::int64_t{1} << 30;

enum class AlphaClass { kNone, kPremultiplied, kStraight };

// Colours are straight if any of them exceeds its alpha, also where alpha is 0. A picture whose alpha is 0
// everywhere has no alpha.
AlphaClass Classify(std::span<const std::uint8_t> pixels) {
    bool hasHiddenColour = false;
    bool hasAlpha = false;
    for (std::size_t i = 0; i < pixels.size(); i += kPixelBytes) {
        const int colour = std::max({pixels[i], pixels[i + 1], pixels[i + 2]});
        const int alpha = pixels[i + 3];
        if (alpha == 0) {
            hasHiddenColour = hasHiddenColour || colour != 0;
            continue;
        }
        hasAlpha = true;
        if (hasHiddenColour || colour > alpha) {
            return AlphaClass::kStraight;
        }
    }
    if (!hasAlpha) {
        return AlphaClass::kNone;
    }
    return hasHiddenColour ? AlphaClass::kStraight : AlphaClass::kPremultiplied;
}

} // namespace

bool PicturePixels::InitializeDIB(int width, int height) {
    return Allocate(width, height, [](std::size_t bytes) { return std::calloc(bytes, 1); });
}

bool PicturePixels::InitializeUnset(int width, int height) {
    isTopDown_ = Allocate(width, height, AllocatePixels);
    return isTopDown_;
}

bool PicturePixels::InitializeClear(int width, int height) {
    isTopDown_ = Allocate(width, height, AllocateClearPixels);
    return isTopDown_;
}

bool PicturePixels::Allocate(int width, int height, void* (*allocate)(std::size_t bytes)) {
    DestroyDIB();
    const std::int64_t rows = std::abs(std::int64_t{height});
    const std::int64_t line = std::int64_t{width} * std::int64_t{kPixelBytes};
    if (width < 1 || rows < 1 || rows > kMostPixelBytes / line) {
        return false;
    }
    memory_.reset(static_cast<std::uint8_t*>(allocate(static_cast<std::size_t>(rows * line))));
    if (!memory_) {
        return false;
    }
    width_ = width;
    height_ = static_cast<int>(rows);
    return true;
}

void PicturePixels::TakePixels(PixelMemory memory, int width, int height) {
    DestroyDIB();
    memory_ = std::move(memory);
    isTopDown_ = true;
    width_ = width;
    height_ = height;
}

std::uint8_t* PicturePixels::BitsPointer() {
    OrderRows(false);
    return memory_.get();
}

std::span<const std::uint8_t> PicturePixels::TopDownRows() {
    OrderRows(true);
    return {memory_.get(), ByteCount()};
}

std::span<std::uint8_t> PicturePixels::Line(int row) {
    const auto line = static_cast<std::size_t>(isTopDown_ ? row : height_ - 1 - row);
    return {memory_.get() + line * ScanWidth(), ScanWidth()};
}

// Reverses the rows in place: swapping costs less than a second buffer as large as the screen.
void PicturePixels::OrderRows(bool isTopDown) {
    if (isTopDown_ == isTopDown) {
        return;
    }
    const std::size_t line = ScanWidth();
    std::uint8_t* low = memory_.get();
    std::uint8_t* high = low + ByteCount();
    for (int row = 0; row < height_ / 2; ++row) {
        high -= line;
        std::swap_ranges(low, low + line, high);
        low += line;
    }
    isTopDown_ = isTopDown;
}

bool SettleAlpha(std::span<std::uint8_t> pixels) {
    const AlphaClass found = Classify(pixels);
    for (std::size_t i = 0; found != AlphaClass::kPremultiplied && i < pixels.size(); i += kPixelBytes) {
        std::uint8_t* const pixel = pixels.data() + i;
        if (found == AlphaClass::kNone) {
            pixel[3] = 255;
        } else {
            std::transform(pixel, pixel + 3, pixel,
                           [alpha = pixel[3]](int colour) { return Premultiplied(colour, alpha); });
        }
    }
    // Deliberate D-60: an opaque 32-bit bitmap whose alpha bytes are all 255 counts as transparent.
    // One would expect the flag to be set only if a pixel is not opaque. The flag says that the file has
    // alpha, not what the pixels contain.
    return found != AlphaClass::kNone;
}
