// A pixel of up to eight bytes in a vector register, for the PNG filters. SSE2 and NEON give the same bytes.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

#if defined(__SSE2__)
#define VANTORIX_PIXEL_VECTORS
#include <immintrin.h>
#elif defined(__aarch64__) && defined(__ARM_NEON) && !defined(__AARCH64EB__)
#define VANTORIX_PIXEL_VECTORS
#include <arm_neon.h>
#endif

// Number of bytes that IsZeroBlock tests together.
constexpr std::size_t kZeroBlock = 64;

// Each version defines a vector type and these routines on it:
//
// - LoadBytes and StoreBytes move `Count` bytes of memory; the vector's other bytes are zero or ignored.
// - AddBytes adds without carries between bytes.
// - AverageBytes rounds down.
// - PaethNeighbours holds the left and the corner neighbour of the next pixel. Next returns that pixel, given
//   the filtered bytes and the pixel above; it becomes the left neighbour, and the pixel above becomes the
//   corner. AreEqual compares the first `Step` bytes of the two neighbours.
// - IsZeroBlock tests kZeroBlock bytes.

#if defined(__SSE2__)

using PixelVector = __m128i;

template <std::size_t Count>
PixelVector LoadBytes(const std::uint8_t* from) {
    std::uint64_t bytes = 0;
    std::memcpy(&bytes, from, Count);
    return _mm_cvtsi64_si128(static_cast<std::int64_t>(bytes));
}

template <std::size_t Count>
void StoreBytes(std::uint8_t* to, PixelVector vector) {
    const std::int64_t bytes = _mm_cvtsi128_si64(vector);
    std::memcpy(to, &bytes, Count);
}

inline PixelVector AddBytes(PixelVector a, PixelVector b) {
    return _mm_add_epi8(a, b);
}

inline PixelVector AverageBytes(PixelVector a, PixelVector b) {
    // The instruction rounds up.
    const __m128i half = _mm_and_si128(_mm_xor_si128(a, b), _mm_set1_epi8(1));
    return _mm_sub_epi8(_mm_avg_epu8(a, b), half);
}

// The samples are widened to 16 bits.
class PaethNeighbours {
public:
    PaethNeighbours() = default;
    explicit PaethNeighbours(PixelVector both) : left_(Widened(both)), corner_(left_) {}

    PixelVector Next(PixelVector added, PixelVector aboveBytes) {
        const __m128i above = Widened(aboveBytes);
        const __m128i low = _mm_min_epi16(left_, above);
        const __m128i high = _mm_max_epi16(left_, above);
        const __m128i thrice = _mm_add_epi16(corner_, _mm_add_epi16(corner_, corner_));
        const __m128i bound = _mm_sub_epi16(_mm_sub_epi16(thrice, above), left_);
        const __m128i notHigh = Chosen(_mm_cmpgt_epi16(high, bound), corner_, low);
        const __m128i nearest = Chosen(_mm_cmpgt_epi16(bound, low), notHigh, high);
        corner_ = above;
        // Bytes are added without a carry, so the upper halves stay zero.
        left_ = _mm_add_epi8(nearest, Widened(added));
        return _mm_packus_epi16(left_, left_);
    }

    template <std::size_t Step>
    bool AreEqual() const {
        constexpr int kSamples = (1 << (2 * Step)) - 1;
        return (_mm_movemask_epi8(_mm_cmpeq_epi16(left_, corner_)) & kSamples) == kSamples;
    }

private:
    static __m128i Widened(PixelVector pixel) { return _mm_unpacklo_epi8(pixel, _mm_setzero_si128()); }
    // `a` where the mask is set, otherwise `b`.
    static __m128i Chosen(__m128i mask, __m128i a, __m128i b) {
        return _mm_or_si128(_mm_and_si128(mask, a), _mm_andnot_si128(mask, b));
    }

    __m128i left_ = _mm_setzero_si128();
    __m128i corner_ = _mm_setzero_si128();
};

inline bool IsZeroBlock(const std::uint8_t* block) {
    __m128i bits = _mm_setzero_si128();
    for (std::size_t i = 0; i < kZeroBlock; i += sizeof bits) {
        bits = _mm_or_si128(bits, _mm_loadu_si128(reinterpret_cast<const __m128i*>(block + i)));
    }
    return _mm_movemask_epi8(_mm_cmpeq_epi8(bits, _mm_setzero_si128())) == 0xFFFF;
}

#elif defined(__aarch64__) && defined(__ARM_NEON) && !defined(__AARCH64EB__)

using PixelVector = uint8x8_t;

template <std::size_t Count>
PixelVector LoadBytes(const std::uint8_t* from) {
    if constexpr (Count == 4) {
        // Loads a vector register directly. The general way goes through another register.
        std::uint32_t bytes = 0;
        std::memcpy(&bytes, from, Count);
        return vreinterpret_u8_u32(vset_lane_u32(bytes, vdup_n_u32(0), 0));
    }
    std::uint64_t bytes = 0;
    std::memcpy(&bytes, from, Count);
    return vcreate_u8(bytes);
}

template <std::size_t Count>
void StoreBytes(std::uint8_t* to, PixelVector vector) {
    if constexpr (Count == 4) {
        const std::uint32_t bytes = vget_lane_u32(vreinterpret_u32_u8(vector), 0);
        std::memcpy(to, &bytes, Count);
        return;
    }
    const std::uint64_t bytes = vget_lane_u64(vreinterpret_u64_u8(vector), 0);
    std::memcpy(to, &bytes, Count);
}

inline PixelVector AddBytes(PixelVector a, PixelVector b) {
    return vadd_u8(a, b);
}

inline PixelVector AverageBytes(PixelVector a, PixelVector b) {
    return vhadd_u8(a, b);
}

class PaethNeighbours {
public:
    PaethNeighbours() = default;
    explicit PaethNeighbours(PixelVector both) : left_(both), corner_(both) {}

    PixelVector Next(PixelVector added, PixelVector above) {
        const uint8x8_t low = vmin_u8(left_, above);
        const uint8x8_t high = vmax_u8(left_, above);
        const uint16x8_t thrice = vmull_u8(corner_, vdup_n_u8(3));
        const uint16x8_t bound16 = vsubq_u16(thrice, vaddl_u8(left_, above));
        // Limiting the bound to a byte changes neither comparison: below 0 it is below the higher neighbour,
        // which is then not 0, and above 255 it is above the lower one, which is then not 255.
        const uint8x8_t bound = vqmovun_s16(vreinterpretq_s16_u16(bound16));
        const uint8x8_t notHigh = vbsl_u8(vcgt_u8(high, bound), corner_, low);
        const uint8x8_t nearest = vbsl_u8(vcgt_u8(bound, low), notHigh, high);
        corner_ = above;
        left_ = vadd_u8(nearest, added);
        return left_;
    }

    template <std::size_t Step>
    bool AreEqual() const {
        const uint64x1_t differing = vreinterpret_u64_u8(veor_u8(left_, corner_));
        return vget_lane_u64(differing, 0) << (64 - 8 * Step) == 0;
    }

private:
    uint8x8_t left_ = vdup_n_u8(0);
    uint8x8_t corner_ = vdup_n_u8(0);
};

inline bool IsZeroBlock(const std::uint8_t* block) {
    const uint8x16_t first = vorrq_u8(vld1q_u8(block), vld1q_u8(block + 16));
    const uint8x16_t second = vorrq_u8(vld1q_u8(block + 32), vld1q_u8(block + 48));
    return vmaxvq_u8(vorrq_u8(first, second)) == 0;
}

#endif
