// Alpha bytes of 32-bit bitmaps and icons: none, premultiplied colours, or straight ones.
#include "imaging/alpha_class.h"

#include <algorithm>
#include <cstddef>

namespace {

constexpr std::size_t kPixelBytes = 4;

enum class AlphaClass { kNone, kPremultiplied, kStraight };

// Where colours stand under an alpha of 0, any pixel that has alpha decides for straight colours; so does a
// half-transparent pixel with a colour above its alpha.
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
    // Deliberate D-60: an opaque 32-bit bitmap whose alpha bytes say so counts as transparent. One would look
    // for a pixel that is not opaque. The flag tells that the file has alpha, not what it shows.
    return found != AlphaClass::kNone;
}
