// Expanding rows of colours, compared with its definition for every colour, every alpha and every length.
#include "imaging/png/expand.h"

#include "imaging/picture_pixels.h"

#include <gtest/gtest.h>

#include <sys/mman.h>
#include <unistd.h>

#include <cstdint>
#include <cstring>
#include <random>
#include <span>
#include <vector>

namespace {

using Bytes = std::vector<std::uint8_t>;

// Two pages. The second one can be neither read nor written, so that an access beyond a row crashes.
class GuardedPage {
public:
    GuardedPage() : size_(static_cast<std::size_t>(sysconf(_SC_PAGESIZE))) {
        void* const pages =
            mmap(nullptr, 2 * size_, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
        EXPECT_NE(pages, MAP_FAILED);
        pages_ = static_cast<std::uint8_t*>(pages);
        EXPECT_EQ(mprotect(pages_ + size_, size_, PROT_NONE), 0);
    }
    ~GuardedPage() { munmap(pages_, 2 * size_); }
    GuardedPage(const GuardedPage&) = delete;
    GuardedPage& operator=(const GuardedPage&) = delete;

    // The last `count` bytes of the first page.
    std::span<std::uint8_t> Last(std::size_t count) const { return {pages_ + size_ - count, count}; }

private:
    std::size_t size_;
    std::uint8_t* pages_ = nullptr;
};

Bytes DefinedColours(std::span<const std::uint8_t> row, int transparent) {
    Bytes pixels;
    for (std::size_t i = 0; i + 3 <= row.size(); i += 3) {
        if ((row[i] << 16 | row[i + 1] << 8 | row[i + 2]) == transparent) {
            pixels.insert(pixels.end(), kPixelBytes, 0);
        } else {
            pixels.insert(pixels.end(), {row[i + 2], row[i + 1], row[i], 255});
        }
    }
    return pixels;
}

Bytes DefinedColoursWithAlpha(std::span<const std::uint8_t> row) {
    Bytes pixels;
    for (std::size_t i = 0; i + 4 <= row.size(); i += 4) {
        const int alpha = row[i + 3];
        for (const std::size_t colour : {2U, 1U, 0U}) {
            pixels.push_back(static_cast<std::uint8_t>(row[i + colour] * alpha / 255));
        }
        pixels.push_back(row[i + 3]);
    }
    return pixels;
}

// A row at the end of its page, expanded to the end of another.
Bytes Expanded(const Bytes& row, int transparent) {
    const GuardedPage from;
    const GuardedPage to;
    const auto target = to.Last(row.size() / 3 * kPixelBytes);
    std::memcpy(from.Last(row.size()).data(), row.data(), row.size());
    ExpandColours(from.Last(row.size()).data(), transparent, target);
    return {target.begin(), target.end()};
}

Bytes ExpandedWithAlpha(const Bytes& row) {
    const GuardedPage from;
    const GuardedPage to;
    const auto target = to.Last(row.size());
    std::memcpy(from.Last(row.size()).data(), row.data(), row.size());
    ExpandColoursWithAlpha(from.Last(row.size()).data(), target);
    return {target.begin(), target.end()};
}

TEST(PngExpand, ColoursOfEveryLength) {
    std::minstd_rand dice(1);
    for (std::size_t pixels = 1; pixels < 100; ++pixels) {
        Bytes row(pixels * 3);
        for (std::uint8_t& sample : row) {
            // Few values, so that some pixels have the transparent colour and some share only a part of it.
            sample = static_cast<std::uint8_t>(250 + dice() % 3);
        }
        for (const int transparent : {-1, 0xFAFBFC, 0xFAFAFA, 0xFCFAFB, 0xFFFFFF}) {
            ASSERT_EQ(Expanded(row, transparent), DefinedColours(row, transparent))
                << pixels << " pixels, transparent " << transparent;
        }
    }
}

TEST(PngExpand, WhiteIsOpaqueWithoutATransparentColour) {
    const Bytes row(99, 255);
    EXPECT_EQ(Expanded(row, -1), Bytes(132, 255));
    EXPECT_EQ(Expanded(row, 0xFFFFFF), Bytes(132, 0));
}

TEST(PngExpand, EveryColourTimesEveryAlpha) {
    for (int alpha = 0; alpha < 256; ++alpha) {
        Bytes row;
        for (int colour = 0; colour < 256; ++colour) {
            for (const int sample : {colour, 255 - colour, colour ^ 85, alpha}) {
                row.push_back(static_cast<std::uint8_t>(sample));
            }
        }
        ASSERT_EQ(ExpandedWithAlpha(row), DefinedColoursWithAlpha(row)) << "alpha " << alpha;
    }
}

// Runs of transparent and opaque pixels between others.
TEST(PngExpand, ColoursWithAlphaOfEveryLength) {
    std::minstd_rand dice(2);
    for (std::size_t pixels = 1; pixels < 200; ++pixels) {
        Bytes row;
        while (row.size() < pixels * 4) {
            const auto kind = dice() % 3;
            for (auto run = 1 + dice() % 40; run > 0 && row.size() < pixels * 4; --run) {
                for (int colour = 0; colour < 3; ++colour) {
                    row.push_back(static_cast<std::uint8_t>(dice() >> 8));
                }
                row.push_back(static_cast<std::uint8_t>(kind == 0 ? 0 : kind == 1 ? 255 : dice() >> 8));
            }
        }
        ASSERT_EQ(ExpandedWithAlpha(row), DefinedColoursWithAlpha(row)) << pixels << " pixels";
    }
}

} // namespace
