// Removing filters from rows of every kind, compared with their definition.
#include "imaging/png/filter.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <random>
#include <span>
#include <vector>

namespace {

using Bytes = std::vector<std::uint8_t>;

// The predictor as defined in the W3C document, 9.4.
int DefinedPaeth(int left, int above, int corner) {
    const int estimate = left + above - corner;
    const int toLeft = std::abs(estimate - left);
    const int toAbove = std::abs(estimate - above);
    const int toCorner = std::abs(estimate - corner);
    if (toLeft <= toAbove && toLeft <= toCorner) {
        return left;
    }
    return toAbove <= toCorner ? above : corner;
}

int Predicted(int filter, int left, int above, int corner) {
    const int predictions[] = {0, left, above, (left + above) / 2, DefinedPaeth(left, above, corner)};
    return predictions[filter];
}

Bytes Defined(int filter, Bytes row, const Bytes& prior, std::size_t step) {
    for (std::size_t i = 0; i < row.size(); ++i) {
        const int left = i < step ? 0 : row[i - step];
        const int corner = i < step || prior.empty() ? 0 : prior[i - step];
        const int above = prior.empty() ? 0 : prior[i];
        row[i] = static_cast<std::uint8_t>(row[i] + Predicted(filter, left, above, corner));
    }
    return row;
}

// Noise between runs of zeros of random lengths.
Bytes FilteredRow(std::minstd_rand& dice, std::size_t size) {
    Bytes row(size);
    for (std::size_t i = 0; i < size;) {
        const std::size_t end = std::min<std::size_t>(size, i + dice() % 300);
        const bool isZero = dice() % 2 == 0;
        for (; i < end; ++i) {
            row[i] = static_cast<std::uint8_t>(isZero ? 0 : dice() >> 8);
        }
    }
    return row;
}

// Plain parts and gradients, where the neighbours of Paeth are equal, and noise.
Bytes PriorRow(std::minstd_rand& dice, std::size_t size, std::size_t step) {
    Bytes row(size);
    for (std::size_t i = 0; i < size;) {
        const std::size_t end = std::min<std::size_t>(size, i + dice() % 400);
        const auto kind = dice() % 3;
        for (; i < end; ++i) {
            const unsigned left = i < step ? 0 : row[i - step];
            const auto noise = static_cast<unsigned>(dice() >> 8);
            row[i] = static_cast<std::uint8_t>(kind == 0 ? left : kind == 1 ? left + 1 : noise);
        }
    }
    return row;
}

class PngFilter : public testing::TestWithParam<std::size_t> {};

TEST_P(PngFilter, IsTakenOffAsItIsDefined) {
    const std::size_t step = GetParam();
    std::minstd_rand dice(static_cast<unsigned>(step));
    for (int round = 0; round < 400; ++round) {
        const std::size_t pixels = round < 100 ? static_cast<std::size_t>(round) : dice() % 700;
        const Bytes filtered = FilteredRow(dice, pixels * step);
        const Bytes prior = round % 5 == 0 ? Bytes() : PriorRow(dice, filtered.size(), step);
        for (int filter = 0; filter <= 4; ++filter) {
            Bytes row = filtered;
            ASSERT_TRUE(Unfilter(filter, row, prior.empty() ? nullptr : prior.data(), step));
            ASSERT_EQ(row, Defined(filter, filtered, prior, step)) << "filter " << filter << ", " << pixels;
        }
    }
}

// Every triple of neighbours. A first pixel produces the left one.
TEST_P(PngFilter, PaethPicksTheDefinedNeighbourOfEveryTriple) {
    const std::size_t step = GetParam();
    for (int corner = 0; corner < 256; corner += 5) {
        for (int above = 0; above < 256; ++above) {
            for (int left = 0; left < 256; left += 3) {
                Bytes row(4 * step);
                Bytes prior(4 * step);
                std::fill_n(prior.begin(), step, static_cast<std::uint8_t>(corner));
                std::fill_n(prior.begin() + static_cast<std::ptrdiff_t>(step), step,
                            static_cast<std::uint8_t>(above));
                std::fill_n(row.begin(), step, static_cast<std::uint8_t>(left - corner));
                ASSERT_TRUE(Unfilter(4, row, prior.data(), step));
                ASSERT_EQ(row[step], DefinedPaeth(left, above, corner))
                    << left << " " << above << " " << corner;
            }
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Pixels, PngFilter, testing::Values(1, 2, 3, 4, 6, 8));

TEST(PngFilters, AnUnknownFilterIsRefused) {
    Bytes row(9);
    for (const int filter : {5, 6, 255}) {
        EXPECT_FALSE(Unfilter(filter, row, nullptr, 3));
    }
}

} // namespace
