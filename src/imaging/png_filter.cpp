// Sub, Up, Average and Paeth, taken off a row in place.
#include "imaging/png_filter.h"

#include <array>
#include <cstdlib>

namespace {

std::uint8_t Sum(int a, int b) {
    return static_cast<std::uint8_t>(a + b);
}

int Paeth(int left, int above, int corner) {
    const int toLeft = std::abs(above - corner);
    const int toAbove = std::abs(left - corner);
    const int toCorner = std::abs(left + above - 2 * corner);
    const int upper = toAbove <= toCorner ? above : corner;
    return toLeft <= toAbove && toLeft <= toCorner ? left : upper;
}

template <std::size_t Step>
void UnfilterSub(std::span<std::uint8_t> row) {
    for (std::size_t i = Step; i < row.size(); ++i) {
        row[i] = Sum(row[i], row[i - Step]);
    }
}

void UnfilterUp(std::span<std::uint8_t> row, const std::uint8_t* prior) {
    for (std::size_t i = 0; i < row.size(); ++i) {
        row[i] = Sum(row[i], prior[i]);
    }
}

// Left of the first pixel stand zeros.
template <std::size_t Step>
void UnfilterAverage(std::span<std::uint8_t> row, const std::uint8_t* prior) {
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

// A row without one above reads zeros there: Up is no filter, and Paeth always picks the left neighbour.
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
