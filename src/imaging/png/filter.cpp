// Removes the filters Sub, Up, Average and Paeth from a row in place.
#include "imaging/png/filter.h"

#include "imaging/png/pixel_vectors.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace {

std::uint8_t Sum(int a, int b) {
    return static_cast<std::uint8_t>(a + b);
}

// The neighbour nearest to left + above - corner, found by comparisons only. `bound` is three times the
// corner minus the other two. If it is between them, the corner is nearest, otherwise the neighbour on the
// far side.
int Paeth(int left, int above, int corner) {
    const int low = std::min(left, above);
    const int high = std::max(left, above);
    const int bound = 3 * corner - above - left;
    const int notHigh = high > bound ? corner : low;
    return bound > low ? notHigh : high;
}

// Versions for pixels of three bytes and more. They process all samples of a pixel at once; whole pixels
// cannot run in parallel because each needs its left neighbour.
template <std::size_t Step>
void UnfilterPixelsSub(std::span<std::uint8_t> row);
template <std::size_t Step>
void UnfilterPixelsAverage(std::span<std::uint8_t> row, const std::uint8_t* prior);
template <std::size_t Step>
void UnfilterPixelsPaeth(std::span<std::uint8_t> row, const std::uint8_t* prior);

#if defined(VANTORIX_PIXEL_VECTORS)

template <std::size_t Step>
constexpr bool kUsesVectors = Step >= 3;

// A range of bytes in a row, of whole pixels.
struct Part {
    std::size_t begin;
    std::size_t end;
};

template <std::size_t Step>
Part WholePixels(std::span<const std::uint8_t> row) {
    return {0, row.size() / Step * Step};
}

// Replaces each pixel of a part by the result of `unfiltered` for it and for the pixel above. Pixels of three
// and six bytes are moved as four and eight bytes. The surplus bytes belong to the next pixel, which is read
// before they are overwritten and written afterwards.
template <std::size_t Step, typename Unfiltered>
void UnfilterPixels(std::span<std::uint8_t> row, const std::uint8_t* prior, Part part,
                    Unfiltered unfiltered) {
    constexpr std::size_t kMoved = Step <= 4 ? 4 : 8;
    std::size_t i = part.begin;
    if (i + Step + kMoved <= row.size()) {
        PixelVector pixel = LoadBytes<kMoved>(row.data() + i);
        for (; i < part.end && i + Step + kMoved <= row.size(); i += Step) {
            const PixelVector next = LoadBytes<kMoved>(row.data() + i + Step);
            StoreBytes<kMoved>(row.data() + i, unfiltered(pixel, LoadBytes<kMoved>(prior + i)));
            pixel = next;
        }
        StoreBytes<kMoved>(row.data() + i, pixel);
    }
    for (; i < part.end; i += Step) {
        const PixelVector pixel = LoadBytes<Step>(row.data() + i);
        StoreBytes<Step>(row.data() + i, unfiltered(pixel, LoadBytes<Step>(prior + i)));
    }
}

template <std::size_t Step>
void UnfilterPixelsSub(std::span<std::uint8_t> row) {
    PixelVector left{};
    UnfilterPixels<Step>(row, row.data(), WholePixels<Step>(row),
                         [left](PixelVector pixel, PixelVector /*above*/) mutable {
                             left = AddBytes(left, pixel);
                             return left;
                         });
}

template <std::size_t Step>
void UnfilterPixelsAverage(std::span<std::uint8_t> row, const std::uint8_t* prior) {
    PixelVector left{};
    UnfilterPixels<Step>(row, prior, WholePixels<Step>(row),
                         [left](PixelVector pixel, PixelVector above) mutable {
                             left = AddBytes(AverageBytes(left, above), pixel);
                             return left;
                         });
}

// A run of pixels, given by its end in bytes, and whether it is all zeros.
struct PixelRun {
    std::size_t end;
    bool isZero;
};

// The run that starts at `from`: blocks of zeros or blocks of anything else.
template <std::size_t Step>
PixelRun RunFrom(std::span<const std::uint8_t> row, std::size_t from) {
    constexpr std::size_t kPixels = kZeroBlock / Step * Step;
    std::size_t end = from;
    const auto isZero = [&] { return end + kZeroBlock <= row.size() && IsZeroBlock(row.data() + end); };
    if (isZero()) {
        for (; isZero(); end += kPixels) {
        }
        return {end, true};
    }
    while (end + kZeroBlock <= row.size() && !isZero()) {
        end += kPixels;
    }
    return {end + kZeroBlock <= row.size() ? end : row.size(), false};
}

// If the left neighbour equals the corner, Paeth picks the pixel above. If the filtered bytes are also zero,
// the next pixel has equal neighbours again. A run of zeros is then a copy of the row above. Plain areas and
// gradients have many such runs.
template <std::size_t Step>
void UnfilterPixelsPaeth(std::span<std::uint8_t> row, const std::uint8_t* prior) {
    PaethNeighbours neighbours;
    for (std::size_t i = 0; i < row.size();) {
        const PixelRun run = RunFrom<Step>(row, i);
        if (run.isZero && neighbours.AreEqual<Step>()) {
            std::memcpy(row.data() + i, prior + i, run.end - i);
            neighbours = PaethNeighbours(LoadBytes<Step>(prior + run.end - Step));
            i = run.end;
            continue;
        }
        const std::size_t end = run.isZero ? i + kZeroBlock / Step * Step : run.end;
        UnfilterPixels<Step>(row, prior, {i, end},
                             [&neighbours](auto added, auto above) { return neighbours.Next(added, above); });
        i = end;
    }
}

#else

template <std::size_t Step>
constexpr bool kUsesVectors = false;

#endif

template <std::size_t Step>
void UnfilterSub(std::span<std::uint8_t> row) {
    if constexpr (kUsesVectors<Step>) {
        UnfilterPixelsSub<Step>(row);
        return;
    }
    for (std::size_t i = Step; i < row.size(); ++i) {
        row[i] = Sum(row[i], row[i - Step]);
    }
}

void UnfilterUp(std::span<std::uint8_t> row, const std::uint8_t* prior) {
    for (std::size_t i = 0; i < row.size(); ++i) {
        row[i] = Sum(row[i], prior[i]);
    }
}

// The pixel left of the first one counts as zeros.
template <std::size_t Step>
void UnfilterAverage(std::span<std::uint8_t> row, const std::uint8_t* prior) {
    if constexpr (kUsesVectors<Step>) {
        UnfilterPixelsAverage<Step>(row, prior);
        return;
    }
    std::array<int, Step> left{};
    for (std::size_t i = 0; i + Step <= row.size(); i += Step) {
        for (std::size_t c = 0; c < Step; ++c) {
            row[i + c] = Sum(row[i + c], (left[c] + prior[i + c]) / 2);
            left[c] = row[i + c];
        }
    }
}

template <std::size_t Step>
void UnfilterFirstAverage(std::span<std::uint8_t> row) {
    for (std::size_t i = Step; i < row.size(); ++i) {
        row[i] = Sum(row[i], row[i - Step] / 2);
    }
}

template <std::size_t Step>
void UnfilterPaeth(std::span<std::uint8_t> row, const std::uint8_t* prior) {
    if constexpr (kUsesVectors<Step>) {
        UnfilterPixelsPaeth<Step>(row, prior);
        return;
    }
    std::array<int, Step> left{};
    std::array<int, Step> corner{};
    for (std::size_t i = 0; i + Step <= row.size(); i += Step) {
        for (std::size_t c = 0; c < Step; ++c) {
            const int above = prior[i + c];
            row[i + c] = Sum(row[i + c], Paeth(left[c], above, corner[c]));
            left[c] = row[i + c];
            corner[c] = above;
        }
    }
}

// A missing row above counts as zeros: Up then changes nothing, and Paeth always picks the left neighbour.
template <std::size_t Step>
void UnfilterFirst(int filter, std::span<std::uint8_t> row) {
    if (filter == 1 || filter == 4) {
        UnfilterSub<Step>(row);
    } else if (filter == 3) {
        UnfilterFirstAverage<Step>(row);
    }
}

template <std::size_t Step>
bool UnfilterBy(int filter, std::span<std::uint8_t> row, const std::uint8_t* prior) {
    if (filter > 4) {
        return false;
    }
    if (prior == nullptr) {
        UnfilterFirst<Step>(filter, row);
    } else if (filter == 1) {
        UnfilterSub<Step>(row);
    } else if (filter == 2) {
        UnfilterUp(row, prior);
    } else if (filter == 3) {
        UnfilterAverage<Step>(row, prior);
    } else if (filter == 4) {
        UnfilterPaeth<Step>(row, prior);
    }
    return true;
}

} // namespace

bool Unfilter(int filter, std::span<std::uint8_t> row, const std::uint8_t* prior, std::size_t pixelBytes) {
    switch (pixelBytes) {
    case 1:
        return UnfilterBy<1>(filter, row, prior);
    case 2:
        return UnfilterBy<2>(filter, row, prior);
    case 3:
        return UnfilterBy<3>(filter, row, prior);
    case 4:
        return UnfilterBy<4>(filter, row, prior);
    case 6:
        return UnfilterBy<6>(filter, row, prior);
    case 8:
        return UnfilterBy<8>(filter, row, prior);
    default:
        return false;
    }
}
