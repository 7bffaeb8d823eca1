// Expands rows of 8-bit colours: several pixels at a time with vectors, the rest one by one.
#include "imaging/png/expand.h"

#include "imaging/picture_pixels.h"

#if defined(__x86_64__)
#include <immintrin.h>
#elif defined(__aarch64__) && defined(__ARM_NEON)
#include <arm_neon.h>
#endif

namespace {

#if defined(__x86_64__)

constexpr std::size_t kVector = 16;

bool CanShuffle() {
    static const bool can = __builtin_cpu_supports("ssse3") != 0;
    return can;
}

__m128i* At(std::uint8_t* bytes) {
    return reinterpret_cast<__m128i*>(bytes);
}

const __m128i* At(const std::uint8_t* bytes) {
    return reinterpret_cast<const __m128i*>(bytes);
}

bool IsSame(__m128i a, __m128i b) {
    return _mm_movemask_epi8(_mm_cmpeq_epi32(a, b)) == 0xFFFF;
}

// Makes four pixels from twelve bytes; reads sixteen. Returns the number of pixels written.
__attribute__((target("ssse3"))) std::size_t ShuffleColours(const std::uint8_t* row, int transparent,
                                                            std::span<std::uint8_t> target) {
    const std::size_t count = target.size() / kPixelBytes;
    const __m128i order = _mm_setr_epi8(2, 1, 0, -1, 5, 4, 3, -1, 8, 7, 6, -1, 11, 10, 9, -1);
    const __m128i opaque = _mm_set1_epi32(static_cast<int>(0xFF000000U));
    // Without a transparent colour this value is zero, which no pixel equals because all of them are opaque.
    const __m128i left =
        transparent < 0 ? _mm_setzero_si128() : _mm_or_si128(_mm_set1_epi32(transparent), opaque);
    std::size_t i = 0;
    for (; i * 3 + kVector <= count * 3; i += 4) {
        const __m128i colours = _mm_shuffle_epi8(_mm_loadu_si128(At(row + i * 3)), order);
        const __m128i pixels = _mm_or_si128(colours, opaque);
        _mm_storeu_si128(At(target.data() + i * kPixelBytes),
                         _mm_andnot_si128(_mm_cmpeq_epi32(pixels, left), pixels));
    }
    return i;
}

// x / 255, rounded down, for products of two bytes. Equal to (x + 1 + x / 256) / 256.
__m128i Divided(__m128i products) {
    const __m128i one = _mm_set1_epi16(1);
    return _mm_srli_epi16(_mm_add_epi16(_mm_add_epi16(products, one), _mm_srli_epi16(products, 8)), 8);
}

// Makes four pixels from sixteen bytes. Alpha itself is multiplied by 255.
__attribute__((target("ssse3"))) std::size_t ShuffleColoursWithAlpha(const std::uint8_t* row,
                                                                     std::span<std::uint8_t> target) {
    const std::size_t count = target.size() / kPixelBytes;
    const __m128i first = _mm_setr_epi8(2, -1, 1, -1, 0, -1, 3, -1, 6, -1, 5, -1, 4, -1, 7, -1);
    const __m128i second = _mm_setr_epi8(10, -1, 9, -1, 8, -1, 11, -1, 14, -1, 13, -1, 12, -1, 15, -1);
    const __m128i firstAlpha = _mm_setr_epi8(3, -1, 3, -1, 3, -1, -1, -1, 7, -1, 7, -1, 7, -1, -1, -1);
    const __m128i secondAlpha = _mm_setr_epi8(11, -1, 11, -1, 11, -1, -1, -1, 15, -1, 15, -1, 15, -1, -1, -1);
    const __m128i whole = _mm_setr_epi16(0, 0, 0, 255, 0, 0, 0, 255);
    const __m128i alpha = _mm_set1_epi32(static_cast<int>(0xFF000000U));
    const __m128i swapped = _mm_setr_epi8(2, 1, 0, 3, 6, 5, 4, 7, 10, 9, 8, 11, 14, 13, 12, 15);
    std::size_t i = 0;
    for (; i + 4 <= count; i += 4) {
        const __m128i bytes = _mm_loadu_si128(At(row + i * kPixelBytes));
        const __m128i alphas = _mm_and_si128(bytes, alpha);
        // Most pixels of a theme are fully transparent or opaque, and so are their neighbours.
        if (IsSame(alphas, _mm_setzero_si128())) {
            _mm_storeu_si128(At(target.data() + i * kPixelBytes), _mm_setzero_si128());
            continue;
        }
        if (IsSame(alphas, alpha)) {
            _mm_storeu_si128(At(target.data() + i * kPixelBytes), _mm_shuffle_epi8(bytes, swapped));
            continue;
        }
        const __m128i low = _mm_mullo_epi16(_mm_shuffle_epi8(bytes, first),
                                            _mm_or_si128(_mm_shuffle_epi8(bytes, firstAlpha), whole));
        const __m128i high = _mm_mullo_epi16(_mm_shuffle_epi8(bytes, second),
                                             _mm_or_si128(_mm_shuffle_epi8(bytes, secondAlpha), whole));
        _mm_storeu_si128(At(target.data() + i * kPixelBytes), _mm_packus_epi16(Divided(low), Divided(high)));
    }
    return i;
}

#elif defined(__aarch64__) && defined(__ARM_NEON)

// Pixels that are made together: the loads separate their samples into one vector for each colour.
constexpr std::size_t kTogether = 16;

// Every processor of this architecture can.
bool CanShuffle() {
    return true;
}

std::size_t ShuffleColours(const std::uint8_t* row, int transparent, std::span<std::uint8_t> target) {
    const std::size_t count = target.size() / kPixelBytes;
    const uint8x16_t red = vdupq_n_u8(static_cast<std::uint8_t>(transparent >> 16));
    const uint8x16_t green = vdupq_n_u8(static_cast<std::uint8_t>(transparent >> 8));
    const uint8x16_t blue = vdupq_n_u8(static_cast<std::uint8_t>(transparent));
    const uint8x16_t hasTransparent = vdupq_n_u8(transparent < 0 ? 0 : 255);
    std::size_t i = 0;
    for (; i + kTogether <= count; i += kTogether) {
        const uint8x16x3_t colours = vld3q_u8(row + i * 3);
        const uint8x16_t isSame =
            vandq_u8(vandq_u8(vceqq_u8(colours.val[0], red), vceqq_u8(colours.val[1], green)),
                     vandq_u8(vceqq_u8(colours.val[2], blue), hasTransparent));
        const uint8x16x4_t pixels{vbicq_u8(colours.val[2], isSame), vbicq_u8(colours.val[1], isSame),
                                  vbicq_u8(colours.val[0], isSame), vmvnq_u8(isSame)};
        vst4q_u8(target.data() + i * kPixelBytes, pixels);
    }
    return i;
}

// x / 255, rounded down, for products of two bytes. Equal to (x + 1 + x / 256) / 256.
uint8x8_t Divided(uint16x8_t products) {
    return vaddhn_u16(vaddq_u16(products, vdupq_n_u16(1)), vshrq_n_u16(products, 8));
}

uint8x16_t Multiplied(uint8x16_t colour, uint8x16_t alpha) {
    return vcombine_u8(Divided(vmull_u8(vget_low_u8(colour), vget_low_u8(alpha))),
                       Divided(vmull_high_u8(colour, alpha)));
}

std::size_t ShuffleColoursWithAlpha(const std::uint8_t* row, std::span<std::uint8_t> target) {
    const std::size_t count = target.size() / kPixelBytes;
    std::size_t i = 0;
    for (; i + kTogether <= count; i += kTogether) {
        const uint8x16x4_t bytes = vld4q_u8(row + i * kPixelBytes);
        const uint8x16_t alpha = bytes.val[3];
        uint8x16x4_t pixels{bytes.val[2], bytes.val[1], bytes.val[0], alpha};
        // Most pixels of a theme are opaque, and so are their neighbours.
        if (vminvq_u8(alpha) != 255) {
            for (int colour = 0; colour < 3; ++colour) {
                pixels.val[colour] = Multiplied(pixels.val[colour], alpha);
            }
        }
        vst4q_u8(target.data() + i * kPixelBytes, pixels);
    }
    return i;
}

#else

bool CanShuffle() {
    return false;
}

std::size_t ShuffleColours(const std::uint8_t*, int, std::span<std::uint8_t>) {
    return 0;
}

std::size_t ShuffleColoursWithAlpha(const std::uint8_t*, std::span<std::uint8_t>) {
    return 0;
}

#endif

} // namespace

void ExpandColours(const std::uint8_t* row, int transparent, std::span<std::uint8_t> target) {
    const std::size_t done = CanShuffle() ? ShuffleColours(row, transparent, target) : 0;
    row += done * 3;
    for (std::size_t i = done * kPixelBytes; i + kPixelBytes <= target.size(); i += kPixelBytes, row += 3) {
        const bool isTransparent = (row[0] << 16 | row[1] << 8 | row[2]) == transparent;
        const auto kept = static_cast<std::uint8_t>(isTransparent ? 0 : 255);
        target[i] = row[2] & kept;
        target[i + 1] = row[1] & kept;
        target[i + 2] = row[0] & kept;
        target[i + 3] = kept;
    }
}

void ExpandColoursWithAlpha(const std::uint8_t* row, std::span<std::uint8_t> target) {
    const std::size_t done = CanShuffle() ? ShuffleColoursWithAlpha(row, target) : 0;
    row += done * kPixelBytes;
    for (std::size_t i = done * kPixelBytes; i + kPixelBytes <= target.size();
         i += kPixelBytes, row += kPixelBytes) {
        target[i] = Premultiplied(row[2], row[3]);
        target[i + 1] = Premultiplied(row[1], row[3]);
        target[i + 2] = Premultiplied(row[0], row[3]);
        target[i + 3] = row[3];
    }
}
