// A picture's pixels: the buffer, its two orders of rows, and the alpha bytes of bitmaps.
#include "imaging/picture_pixels.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <numeric>
#include <utility>
#include <vector>

namespace {

using Bytes = std::vector<std::uint8_t>;

// Fills the rows with 1, 2, 3 ... in all four bytes, from the top row.
void Number(PicturePixels& pixels) {
    for (int y = 0; y < pixels.Height(); ++y) {
        std::ranges::fill(pixels.Line(y), static_cast<std::uint8_t>(y + 1));
    }
}

// The first byte of each row of a picture with one column.
Bytes FirstBytes(const std::uint8_t* rows, int count) {
    Bytes bytes;
    for (int y = 0; y < count; ++y, rows += kPixelBytes) {
        bytes.push_back(*rows);
    }
    return bytes;
}

TEST(PicturePixels, BeginZeroFilled) {
    PicturePixels pixels;
    ASSERT_TRUE(pixels.InitializeDIB(3, -2));
    EXPECT_EQ(pixels.Width(), 3);
    EXPECT_EQ(pixels.Height(), 2);
    EXPECT_EQ(Bytes(pixels.BitsPointer(), pixels.BitsPointer() + pixels.ByteCount()), Bytes(24, 0));
}

TEST(PicturePixels, RefuseImpossibleSizesAndAreEmptyThen) {
    constexpr int kLeast = std::numeric_limits<int>::min();
    constexpr int kMost = std::numeric_limits<int>::max();
    const std::pair<int, int> sizes[] = {{0, 1},         {1, 0},           {-1, 1},         {kLeast, 1},
                                         {kMost, kMost}, {1, kLeast},      {kMost, 1},      {16'384, 16'385},
                                         {1, kMost},     {65'536, 65'536}, {kMost, kLeast}, {-1, kLeast}};
    for (const auto& [width, height] : sizes) {
        PicturePixels pixels;
        ASSERT_TRUE(pixels.InitializeDIB(2, 2));
        pixels.alpha = true;
        pixels.ImageType = kImageGif;
        EXPECT_FALSE(pixels.InitializeDIB(width, height)) << width << " x " << height;
        EXPECT_TRUE(pixels.IsEmpty());
        EXPECT_EQ(pixels.Width(), 0);
        EXPECT_EQ(pixels.Height(), 0);
        EXPECT_EQ(pixels.ByteCount(), 0U);
        EXPECT_EQ(pixels.BitsPointer(), nullptr);
        EXPECT_FALSE(pixels.alpha);
        EXPECT_EQ(pixels.ImageType, kImageNone);
    }
}

TEST(PicturePixels, OneGigabyteIsAllowed) {
    PicturePixels pixels;
    EXPECT_TRUE(pixels.InitializeDIB(16'384, 16'384));
}

TEST(PicturePixels, RowsAreTheSameInEitherOrder) {
    for (const auto initialize :
         {&PicturePixels::InitializeDIB, &PicturePixels::InitializeUnset, &PicturePixels::InitializeClear}) {
        for (const int height : {1, 2, 5}) {
            PicturePixels pixels;
            ASSERT_TRUE((pixels.*initialize)(1, height));
            Number(pixels);
            Bytes topDown(static_cast<std::size_t>(height));
            std::iota(topDown.begin(), topDown.end(), std::uint8_t{1});
            const Bytes bottomUp(topDown.rbegin(), topDown.rend());
            EXPECT_EQ(FirstBytes(pixels.BitsPointer(), height), bottomUp);
            EXPECT_EQ(pixels.Line(0)[0], 1);
            EXPECT_EQ(FirstBytes(pixels.TopDownRows().data(), height), topDown);
            EXPECT_EQ(pixels.Line(height - 1)[0], height);
            EXPECT_EQ(FirstBytes(pixels.BitsPointer(), height), bottomUp);
        }
    }
}

struct AlphaCase {
    const char* name;
    std::vector<std::uint8_t> pixels;
    std::vector<std::uint8_t> settled;
    bool hasAlpha;
};

// Deliberate D-60: the case "opaque".
TEST(SettleAlpha, TellsWhatTheAlphaBytesMean) {
    const AlphaCase cases[] = {
        {"nothing but zeros", {0, 0, 0, 0}, {0, 0, 0, 255}, false},
        {"colours without alpha", {9, 8, 7, 0, 1, 2, 3, 0}, {9, 8, 7, 255, 1, 2, 3, 255}, false},
        {"opaque", {9, 8, 7, 255}, {9, 8, 7, 255}, true},
        {"colours within their alpha", {9, 8, 7, 9, 0, 0, 0, 0}, {9, 8, 7, 9, 0, 0, 0, 0}, true},
        {"a colour above its alpha", {10, 0, 0, 9, 100, 0, 0, 200}, {0, 0, 0, 9, 78, 0, 0, 200}, true},
        {"a hidden colour first", {1, 0, 0, 0, 100, 0, 0, 200}, {0, 0, 0, 0, 78, 0, 0, 200}, true},
        {"a hidden colour last", {100, 0, 0, 200, 1, 0, 0, 0}, {78, 0, 0, 200, 0, 0, 0, 0}, true},
        {"a hidden colour and an opaque one", {1, 0, 0, 0, 9, 8, 7, 255}, {0, 0, 0, 0, 9, 8, 7, 255}, true},
    };
    for (const AlphaCase& one : cases) {
        std::vector<std::uint8_t> pixels = one.pixels;
        EXPECT_EQ(SettleAlpha(pixels), one.hasAlpha) << one.name;
        EXPECT_EQ(pixels, one.settled) << one.name;
    }
}

} // namespace
