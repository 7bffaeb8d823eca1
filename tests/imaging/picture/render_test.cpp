// Drawing image objects: opacity, rectangles, mirrors, both qualities, and extreme numbers.
#include "imaging/picture/c32bppdib.h"

#include "imaging/picture_test_support.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

constexpr QRgb kGround = 0xFF204060;
constexpr int kLeast = std::numeric_limits<int>::min();
constexpr int kMost = std::numeric_limits<int>::max();

Surface Ground(int width = 40, int height = 30) {
    return MakeSurface(width, height, [](int, int) { return kGround; });
}

// Half transparent red, premultiplied.
constexpr QRgb kHalfRed = 0x80800000;

bool IsNear(QRgb a, QRgb b, int distance) {
    return std::abs(qRed(a) - qRed(b)) <= distance && std::abs(qGreen(a) - qGreen(b)) <= distance &&
           std::abs(qBlue(a) - qBlue(b)) <= distance;
}

// The expected blend: the source times opacity, plus the rest of the ground.
QRgb Blended(QRgb source, double opacity) {
    const double rest = 1 - qAlpha(source) / 255.0 * opacity;
    const auto channel = [&](int s, int g) { return static_cast<int>(std::lround(s * opacity + g * rest)); };
    return qRgb(channel(qRed(source), qRed(kGround)), channel(qGreen(source), qGreen(kGround)),
                channel(qBlue(source), qBlue(kGround)));
}

QRgb DrawnWithOpacity(int opacity, QRgb colour = 0xFFFF8000) {
    const c32bppDIB image = MakeImage(4, 4, [colour](int, int) { return colour; });
    Surface surface = Ground();
    EXPECT_TRUE(image.Render(surface, 3, 3, 0, 0, 0, 0, 0, 0, opacity));
    return PixelAt(surface, 4, 4);
}

TEST(Render, CopiesAnOpaquePictureExactly) {
    const c32bppDIB image = MakeImage(11, 9, PatternAt);
    Surface surface = Ground();
    ASSERT_TRUE(image.Render(surface, 5, 6));
    for (int y = 0; y < surface.Height(); ++y) {
        for (int x = 0; x < surface.Width(); ++x) {
            const bool isInside = x >= 5 && x < 16 && y >= 6 && y < 15;
            EXPECT_EQ(PixelAt(surface, x, y), isInside ? PatternAt(x - 5, y - 6) : kGround) << x << ", " << y;
        }
    }
}

TEST(Render, BlendsByAlpha) {
    EXPECT_TRUE(IsNear(DrawnWithOpacity(100, kHalfRed), Blended(kHalfRed, 1.0), 1));
    EXPECT_EQ(DrawnWithOpacity(100, 0), kGround);
}

TEST(Render, ASurfaceStaysOpaque) {
    const c32bppDIB image =
        MakeImage(40, 30, [](int x, int y) { return qPremultiply(qRgba(90, 9, 200, x * 6 + y)); });
    Surface surface = Ground();
    ASSERT_TRUE(image.Render(surface, 0, 0));
    ASSERT_TRUE(image.Render(surface, 0, 0, 33, 17));
    for (int y = 0; y < surface.Height(); ++y) {
        for (int x = 0; x < surface.Width(); ++x) {
            EXPECT_EQ(qAlpha(PixelAt(surface, x, y)), 255);
        }
    }
}

TEST(Render, OpacityOfZeroDrawsNothingAndIsTrue) {
    EXPECT_EQ(DrawnWithOpacity(0), kGround);
}

TEST(Render, OpacityCountsWithoutItsSign) {
    EXPECT_EQ(DrawnWithOpacity(-100), DrawnWithOpacity(100));
}

// Deliberate D-34.
TEST(Render, OpacityCountsModuloOneHundred) {
    EXPECT_EQ(DrawnWithOpacity(150), DrawnWithOpacity(50));
    EXPECT_EQ(DrawnWithOpacity(-250), DrawnWithOpacity(50));
    EXPECT_EQ(DrawnWithOpacity(200), 0xFFFF8000);
    EXPECT_EQ(DrawnWithOpacity(100), 0xFFFF8000);
    EXPECT_EQ(DrawnWithOpacity(kLeast), DrawnWithOpacity(48));
    EXPECT_EQ(DrawnWithOpacity(kMost), DrawnWithOpacity(47));
}

TEST(Render, OpacityScalesTheSource) {
    EXPECT_TRUE(IsNear(DrawnWithOpacity(50), Blended(0xFFFF8000, 0.5), 1));
    EXPECT_TRUE(IsNear(DrawnWithOpacity(50, kHalfRed), Blended(kHalfRed, 0.5), 1));
    EXPECT_TRUE(IsNear(DrawnWithOpacity(1), Blended(0xFFFF8000, 0.01), 2));
}

TEST(Render, AnEmptyObjectIsFalse) {
    const c32bppDIB image;
    Surface surface = Ground();
    EXPECT_FALSE(image.Render(surface, 0, 0));
    EXPECT_FALSE(image.Render(surface, 0, 0, 0, 0, 0, 0, 0, 0, 0));
}

TEST(Render, ASurfaceWithoutPixelsTakesEverything) {
    const c32bppDIB image = MakeImage(4, 4, PatternAt);
    Surface surface;
    EXPECT_TRUE(image.Render(surface, 0, 0));
    EXPECT_TRUE(image.Render(surface, 0, 0, 100, 100));
}

TEST(Render, ASourceThatPassesTheEdgeIsFalseAndDrawsNothing) {
    const c32bppDIB image = MakeImage(8, 8, PatternAt);
    Surface surface = Ground();
    const struct {
        int x, y, width, height;
    } sources[] = {{0, 0, 9, 8},      {0, 0, 8, 9},
                   {1, 0, 8, 8},      {0, 1, 8, 8},
                   {1, 0, 0, 0},      {0, 1, 0, 0},
                   {0, 0, -1, 8},     {0, 0, 8, -1},
                   {8, 0, 1, 1},      {kMost, 0, 1, 1},
                   {0, kMost, 1, 1},  {0, 0, kMost, 1},
                   {0, 0, kLeast, 1}, {kMost, kMost, kMost, kMost}};
    for (const auto& from : sources) {
        EXPECT_FALSE(image.Render(surface, 0, 0, 5, 5, from.x, from.y, from.width, from.height));
        EXPECT_EQ(PixelAt(surface, 0, 0), kGround);
    }
    EXPECT_TRUE(image.Render(surface, 0, 0, 1, 1, 7, 7, 1, 1));
    EXPECT_EQ(PixelAt(surface, 0, 0), PatternAt(7, 7));
}

TEST(Render, ANegativeSourceCornerCountsAsZero) {
    const c32bppDIB image = MakeImage(8, 8, PatternAt);
    Surface surface = Ground();
    ASSERT_TRUE(image.Render(surface, 0, 0, 3, 3, -4, kLeast, 3, 3));
    EXPECT_EQ(PixelAt(surface, 2, 1), PatternAt(2, 1));
}

TEST(Render, AWidthOrHeightOfZeroMeansThePicturesOwn) {
    const c32bppDIB image = MakeImage(8, 6, PatternAt);
    Surface surface = Ground();
    ASSERT_TRUE(image.Render(surface, 0, 0, 0, 0, 0, 0, 8, 6));
    EXPECT_EQ(PixelAt(surface, 7, 5), PatternAt(7, 5));
    EXPECT_EQ(PixelAt(surface, 8, 5), kGround);
    EXPECT_EQ(PixelAt(surface, 7, 6), kGround);
}

TEST(Render, DrawsAPartByTopDownCoordinates) {
    const c32bppDIB image = MakeImage(8, 8, PatternAt);
    Surface surface = Ground();
    ASSERT_TRUE(image.Render(surface, 10, 10, 3, 2, 4, 5, 3, 2));
    EXPECT_EQ(PixelAt(surface, 10, 10), PatternAt(4, 5));
    EXPECT_EQ(PixelAt(surface, 12, 11), PatternAt(6, 6));
    EXPECT_EQ(PixelAt(surface, 13, 11), kGround);
}

TEST(Render, ANegativeWidthMirrorsInPlace) {
    const c32bppDIB image = MakeImage(8, 6, PatternAt);
    Surface surface = Ground();
    ASSERT_TRUE(image.Render(surface, 4, 3, -8, 6));
    for (int x = 0; x < 8; ++x) {
        EXPECT_EQ(PixelAt(surface, 4 + x, 5), PatternAt(7 - x, 2));
    }
    EXPECT_EQ(PixelAt(surface, 3, 3), kGround);
    EXPECT_EQ(PixelAt(surface, 12, 3), kGround);
}

TEST(Render, ANegativeHeightTurnsOver) {
    const c32bppDIB image = MakeImage(8, 6, PatternAt);
    Surface surface = Ground();
    ASSERT_TRUE(image.Render(surface, 4, 3, 0, -6));
    for (int y = 0; y < 6; ++y) {
        EXPECT_EQ(PixelAt(surface, 6, 3 + y), PatternAt(2, 5 - y));
    }
}

TEST(Render, TheSourceRectangleIsReadInTheMirroredPicture) {
    const c32bppDIB image = MakeImage(8, 6, PatternAt);
    Surface surface = Ground();
    ASSERT_TRUE(image.Render(surface, 0, 0, -3, -2, 1, 1, 3, 2));
    EXPECT_EQ(PixelAt(surface, 0, 0), PatternAt(6, 4));
    EXPECT_EQ(PixelAt(surface, 2, 1), PatternAt(4, 3));
}

TEST(Render, EnlargesSmoothlyWithHardOuterEdges) {
    const c32bppDIB image = MakeImage(2, 1, [](int x, int) { return x == 0 ? 0xFF000000 : 0xFFFFFFFF; });
    Surface surface = Ground();
    ASSERT_TRUE(image.Render(surface, 4, 4, 16, 8));
    EXPECT_EQ(PixelAt(surface, 3, 8), kGround);
    EXPECT_EQ(PixelAt(surface, 20, 8), kGround);
    EXPECT_EQ(PixelAt(surface, 4, 3), kGround);
    EXPECT_EQ(PixelAt(surface, 4, 12), kGround);
    EXPECT_EQ(PixelAt(surface, 4, 4), 0xFF000000);
    EXPECT_EQ(PixelAt(surface, 19, 11), 0xFFFFFFFF);
    for (int x = 5; x < 20; ++x) {
        EXPECT_GE(qRed(PixelAt(surface, x, 8)), qRed(PixelAt(surface, x - 1, 8)));
    }
    EXPECT_NEAR(qRed(PixelAt(surface, 11, 8)) + qRed(PixelAt(surface, 12, 8)), 255, 4);
}

TEST(Render, EnlargesInHardStepsWithoutHighQuality) {
    c32bppDIB image = MakeImage(5, 4, PatternAt);
    image.HighQualityInterpolation = false;
    Surface surface = Ground();
    ASSERT_TRUE(image.Render(surface, 2, 3, 15, 12));
    for (int y = 0; y < 12; ++y) {
        for (int x = 0; x < 15; ++x) {
            EXPECT_EQ(PixelAt(surface, 2 + x, 3 + y), PatternAt(x / 3, y / 3)) << x << ", " << y;
        }
    }
    EXPECT_EQ(PixelAt(surface, 17, 3), kGround);
}

// One column and one row of ten are black. Skipping any source pixel would change the result.
TEST(Render, ShrinksToTheAverage) {
    const c32bppDIB image =
        MakeImage(60, 40, [](int x, int y) { return x % 10 == 0 || y % 10 == 0 ? 0xFF000000 : 0xFFFFFFFF; });
    Surface surface = Ground();
    ASSERT_TRUE(image.Render(surface, 1, 1, 6, 4));
    for (int y = 1; y < 5; ++y) {
        for (int x = 1; x < 7; ++x) {
            EXPECT_NEAR(qRed(PixelAt(surface, x, y)), 207, 3);
        }
    }
    EXPECT_EQ(PixelAt(surface, 0, 0), kGround);
    EXPECT_EQ(PixelAt(surface, 7, 4), kGround);
}

TEST(Render, ShrinksToTheAverageInOneDirection) {
    const c32bppDIB image =
        MakeImage(60, 10, [](int x, int) { return x % 10 == 0 ? 0xFF000000 : 0xFFFFFFFF; });
    Surface surface = Ground();
    ASSERT_TRUE(image.Render(surface, 0, 0, 6, 20));
    EXPECT_NEAR(qRed(PixelAt(surface, 3, 10)), 230, 3);
}

TEST(Render, ShrinksAPartAlone) {
    const c32bppDIB image = MakeImage(60, 40, [](int x, int) { return x < 30 ? 0xFFFF0000 : 0xFF0000FF; });
    Surface surface = Ground();
    ASSERT_TRUE(image.Render(surface, 0, 0, 5, 5, 30, 0, 30, 40));
    EXPECT_EQ(PixelAt(surface, 0, 0), 0xFF0000FF);
    ASSERT_TRUE(image.Render(surface, 0, 0, 5, 5, 0, 0, 30, 40));
    EXPECT_EQ(PixelAt(surface, 4, 4), 0xFFFF0000);
}

TEST(Render, APlainColourStaysPlainInEverySize) {
    const c32bppDIB image = MakeImage(13, 17, [](int, int) { return 0xFF123456; });
    for (const int size : {1, 2, 3, 6, 7, 12, 14, 25}) {
        Surface surface = Ground();
        ASSERT_TRUE(image.Render(surface, 2, 2, size, size));
        EXPECT_EQ(PixelAt(surface, 2, 2), 0xFF123456) << size;
        EXPECT_EQ(PixelAt(surface, 1 + size, 1 + size), 0xFF123456) << size;
        EXPECT_EQ(PixelAt(surface, 2 + size, 2), kGround) << size;
    }
}

TEST(Render, DrawingTheSameAgainGivesTheSamePixels) {
    const c32bppDIB image = MakeImage(19, 14, [](int x, int y) {
        return qPremultiply(qRgba(qRed(PatternAt(x, y)), qGreen(PatternAt(x, y)), x * 9, 40 + y * 15));
    });
    for (const auto& [width, height] :
         {std::pair(33, 25), std::pair(15, 12), std::pair(7, 5), std::pair(30, 4)}) {
        for (const int opacity : {100, 60}) {
            Surface first = Ground();
            ASSERT_TRUE(image.Render(first, 3, 2, width, height, 0, 0, 0, 0, opacity));
            for (int again = 0; again < 3; ++again) {
                Surface next = Ground();
                ASSERT_TRUE(image.Render(next, 3, 2, width, height, 0, 0, 0, 0, opacity));
                EXPECT_EQ(next.picture, first.picture) << width << " x " << height << " at " << opacity;
            }
        }
    }
}

TEST(Render, NewPixelsAreDrawnAfterTheyWereWritten) {
    c32bppDIB image = MakeImage(10, 10, [](int, int) { return 0xFFFF0000; });
    Surface surface = Ground();
    for (const int size : {10, 3, 20, 20}) {
        ASSERT_TRUE(image.Render(surface, 0, 0, size, size));
    }
    std::fill_n(image.BitsPointer(), 400, std::uint8_t{0});
    Surface empty = Ground();
    for (const int size : {10, 3, 20}) {
        ASSERT_TRUE(image.Render(empty, 0, 0, size, size));
    }
    EXPECT_EQ(PixelAt(empty, 1, 1), kGround);
}

TEST(Render, IsCutAtEveryEdgeOfTheSurface) {
    const c32bppDIB image = MakeImage(12, 12, PatternAt);
    for (const int size : {12, 20, 5}) {
        Surface whole = Ground(60, 60);
        ASSERT_TRUE(image.Render(whole, 20, 20, size, size));
        for (const auto& [x, y] :
             {std::pair(-3, 2), std::pair(2, -3), std::pair(7, 2), std::pair(2, 7), std::pair(-20, 0)}) {
            Surface surface = Ground(9, 9);
            ASSERT_TRUE(image.Render(surface, x, y, size, size));
            EXPECT_EQ(surface.picture, whole.picture.copy(20 - x, 20 - y, 9, 9))
                << size << " at " << x << ", " << y;
        }
    }
}

// Deliberate D-35.
TEST(Render, WithoutHighQualityAndBlendThePicturesAlphaIsLeftOut) {
    c32bppDIB image = MakeImage(4, 4, [](int, int) { return kHalfRed; });
    image.HighQualityInterpolation = false;
    Surface surface = Ground();
    ASSERT_TRUE(image.Render(surface, 0, 0, 0, 0, 0, 0, 0, 0, 100, false));
    EXPECT_EQ(PixelAt(surface, 0, 0), 0xFF800000);
    ASSERT_TRUE(image.Render(surface, 8, 8, 0, 0, 0, 0, 0, 0, 100, true));
    EXPECT_TRUE(IsNear(PixelAt(surface, 8, 8), Blended(kHalfRed, 1.0), 1));
    image.HighQualityInterpolation = true;
    ASSERT_TRUE(image.Render(surface, 16, 16, 0, 0, 0, 0, 0, 0, 100, false));
    EXPECT_TRUE(IsNear(PixelAt(surface, 16, 16), Blended(kHalfRed, 1.0), 1));
}

TEST(Render, NumbersOutOfAllProportionAreSafe) {
    c32bppDIB image = MakeImage(64, 48, PatternAt);
    const int numbers[] = {kLeast, kLeast + 1, -100'000, -1, 1, 100'000, kMost - 1, kMost};
    for (const bool highQuality : {true, false}) {
        image.HighQualityInterpolation = highQuality;
        for (const int x : numbers) {
            for (const int y : {kLeast, -5, kMost}) {
                for (const int width : numbers) {
                    for (const int height : {kLeast, 3, kMost}) {
                        Surface surface = Ground();
                        EXPECT_TRUE(image.Render(surface, x, y, width, height));
                        EXPECT_EQ(surface.Width(), 40);
                    }
                }
            }
        }
    }
}

TEST(Render, AnEnormousEnlargementShowsTheRightPixel) {
    const c32bppDIB image = MakeImage(4, 4, [](int x, int) { return x < 2 ? 0xFFFF0000 : 0xFF0000FF; });
    Surface surface = Ground();
    ASSERT_TRUE(image.Render(surface, -1'500'000'000, -1'500'000'000, 2'000'000'000, 2'000'000'000));
    EXPECT_EQ(PixelAt(surface, 20, 15), 0xFF0000FF);
    ASSERT_TRUE(image.Render(surface, -500'000'000, -500'000'000, 2'000'000'000, 2'000'000'000));
    EXPECT_EQ(PixelAt(surface, 20, 15), 0xFFFF0000);
}

TEST(Render, AVeryWidePictureIsDrawn) {
    const c32bppDIB image =
        MakeImage(100'000, 2, [](int x, int) { return x < 50'000 ? 0xFFFF0000 : 0xFF0000FF; });
    Surface surface = Ground();
    ASSERT_TRUE(image.Render(surface, 0, 0, 40, 20));
    EXPECT_EQ(PixelAt(surface, 10, 5), 0xFFFF0000);
    EXPECT_EQ(PixelAt(surface, 30, 5), 0xFF0000FF);
    ASSERT_TRUE(image.Render(surface, 0, 0, 40, 20, 49'990, 0, 20, 2));
    EXPECT_EQ(PixelAt(surface, 5, 5), 0xFFFF0000);
    EXPECT_EQ(PixelAt(surface, 35, 5), 0xFF0000FF);
}

} // namespace
