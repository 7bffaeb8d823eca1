// Surfaces: size, copies in both qualities, text.
#include "imaging/picture/surface.h"

#include "core/run_time_error.h"
#include "imaging/picture_test_support.h"

#include <gtest/gtest.h>

#include <QFontDatabase>
#include <QGuiApplication>

#include <limits>
#include <memory>

namespace {

constexpr QRgb kBlack = 0xFF000000;
constexpr QRgb kGround = 0xFF204060;
constexpr int kLeast = std::numeric_limits<int>::min();
constexpr int kMost = std::numeric_limits<int>::max();

// Text needs the toolkit's fonts; the tests use their own font.
class GuiEnvironment : public testing::Environment {
public:
    void SetUp() override {
        if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) {
            qputenv("QT_QPA_PLATFORM", "offscreen");
        }
        application_ = std::make_unique<QGuiApplication>(argumentCount_, arguments_);
        ASSERT_GE(QFontDatabase::addApplicationFont(TextOfPath(TESTS_FOLDER "/fonts/vantorix_test.ttf")), 0);
    }
    void TearDown() override { application_.reset(); }

private:
    char name_[5] = "test";
    char* arguments_[2] = {name_, nullptr};
    int argumentCount_ = 1;
    std::unique_ptr<QGuiApplication> application_;
};

const auto* const kGuiEnvironment = testing::AddGlobalTestEnvironment(new GuiEnvironment);

Surface Ground(int width = 40, int height = 30) {
    return MakeSurface(width, height, [](int, int) { return kGround; });
}

int CountOf(const Surface& surface, QRgb colour) {
    int count = 0;
    for (int y = 0; y < surface.Height(); ++y) {
        for (int x = 0; x < surface.Width(); ++x) {
            count += PixelAt(surface, x, y) == colour;
        }
    }
    return count;
}

TEST(SurfaceSize, ANewSurfaceHasNoPixels) {
    const Surface surface;
    EXPECT_EQ(surface.Width(), 0);
    EXPECT_EQ(surface.Height(), 0);
}

TEST(SurfaceSize, ResizeGivesBlackPixels) {
    Surface surface = Ground();
    Resize(surface, 7, 5);
    EXPECT_EQ(surface.Width(), 7);
    EXPECT_EQ(surface.Height(), 5);
    EXPECT_EQ(CountOf(surface, kBlack), 35);
}

TEST(SurfaceSize, ResizeToTheSameSizeClears) {
    Surface surface = Ground(7, 5);
    Resize(surface, 7, 5);
    EXPECT_EQ(CountOf(surface, kBlack), 35);
}

TEST(SurfaceSize, ResizeLeavesACopyOfThePictureAlone) {
    Surface surface = Ground(7, 5);
    const Surface before = surface;
    Resize(surface, 7, 5);
    EXPECT_EQ(CountOf(before, kGround), 35);
}

TEST(SurfaceSize, NegativeSizesCountAsZero) {
    Surface surface = Ground();
    Resize(surface, -3, 5);
    EXPECT_EQ(surface.Width(), 0);
    Resize(surface, kLeast, kLeast);
    EXPECT_EQ(surface.Height(), 0);
    Cls(surface);
}

TEST(SurfaceSize, MoreThanOneGigabyteIsOutOfMemory) {
    Surface surface = Ground(7, 5);
    try {
        Resize(surface, kMost, kMost);
        FAIL();
    } catch (const RunTimeError& error) {
        EXPECT_EQ(error.number, kOutOfMemory);
    }
    EXPECT_THROW(Resize(surface, 16'384, 16'385), RunTimeError);
    EXPECT_EQ(surface.Width(), 7);
}

TEST(SurfaceSize, ClsPaintsBlack) {
    Surface surface = Ground(7, 5);
    Cls(surface);
    EXPECT_EQ(CountOf(surface, kBlack), 35);
}

class SurfaceCopy : public testing::TestWithParam<int> {
protected:
    Surface Target(int width = 40, int height = 30) const {
        Surface surface = Ground(width, height);
        surface.stretchMode = GetParam();
        return surface;
    }
};
INSTANTIATE_TEST_SUITE_P(BothModes, SurfaceCopy, testing::Values(kStretchFast, kStretchHalftone));

TEST_P(SurfaceCopy, OneToOneIsExact) {
    const Surface source = MakeSurface(20, 20, PatternAt);
    Surface target = Target();
    StretchBlt(target, {5, 6, 9, 8}, source, {3, 4, 9, 8});
    for (int y = 0; y < target.Height(); ++y) {
        for (int x = 0; x < target.Width(); ++x) {
            const bool isInside = x >= 5 && x < 14 && y >= 6 && y < 14;
            EXPECT_EQ(PixelAt(target, x, y), isInside ? PatternAt(x - 2, y - 2) : kGround) << x << ", " << y;
        }
    }
}

TEST_P(SurfaceCopy, AWholeSurfaceIsCopiedExactly) {
    const Surface source = MakeSurface(40, 30, PatternAt);
    Surface target = Target();
    BitBlt(target, {0, 0, 40, 30}, source, 0, 0);
    EXPECT_EQ(target.picture, source.picture);
}

TEST_P(SurfaceCopy, IsCutAtTheTargetsEdges) {
    const Surface source = MakeSurface(20, 20, PatternAt);
    Surface target = Target(10, 10);
    BitBlt(target, {-4, -5, 20, 20}, source, 0, 0);
    EXPECT_EQ(PixelAt(target, 0, 0), PatternAt(4, 5));
    EXPECT_EQ(PixelAt(target, 9, 9), PatternAt(13, 14));
}

TEST_P(SurfaceCopy, APartOutsideTheSourceIsLeftOut) {
    const Surface source = MakeSurface(10, 10, PatternAt);
    Surface target = Target();
    BitBlt(target, {2, 2, 20, 20}, source, -3, 5);
    EXPECT_EQ(PixelAt(target, 4, 2), kGround);
    EXPECT_EQ(PixelAt(target, 5, 2), PatternAt(0, 5));
    EXPECT_EQ(PixelAt(target, 14, 6), PatternAt(9, 9));
    EXPECT_EQ(PixelAt(target, 15, 6), kGround);
    EXPECT_EQ(PixelAt(target, 14, 7), kGround);
}

TEST_P(SurfaceCopy, APartOutsideTheSourceIsLeftOutWithItsShareOfTheTarget) {
    const Surface source = MakeSurface(10, 10, [](int, int) { return 0xFFFFFFFF; });
    Surface target = Target();
    // 20 source pixels on 40 target pixels: the 5 before the source and the 5 after it cover 10 target pixels
    // each.
    StretchBlt(target, {0, 0, 40, 30}, source, {-5, -5, 20, 20});
    EXPECT_EQ(CountOf(target, 0xFFFFFFFF), 20 * 15);
    EXPECT_EQ(CountOf(target, kGround), 40 * 30 - 20 * 15);
    EXPECT_EQ(PixelAt(target, 9, 15), kGround);
    EXPECT_EQ(PixelAt(target, 10, 15), 0xFFFFFFFF);
    EXPECT_EQ(PixelAt(target, 29, 15), 0xFFFFFFFF);
    EXPECT_EQ(PixelAt(target, 30, 15), kGround);
}

TEST_P(SurfaceCopy, ASurfaceMayBeCopiedOntoItselfInEveryDirection) {
    for (const auto& [dx, dy] :
         {std::pair(3, 0), std::pair(-3, 0), std::pair(0, 2), std::pair(0, -2), std::pair(2, 2)}) {
        Surface surface = MakeSurface(20, 20, PatternAt);
        surface.stretchMode = GetParam();
        BitBlt(surface, {5 + dx, 5 + dy, 8, 8}, surface, 5, 5);
        for (int y = 0; y < 8; ++y) {
            for (int x = 0; x < 8; ++x) {
                EXPECT_EQ(PixelAt(surface, 5 + dx + x, 5 + dy + y), PatternAt(5 + x, 5 + y));
            }
        }
    }
}

TEST_P(SurfaceCopy, ASurfaceMayBeScaledOntoItself) {
    const Surface before = MakeSurface(20, 20, PatternAt);
    Surface expected = before;
    expected.stretchMode = GetParam();
    StretchBlt(expected, {0, 0, 20, 20}, before, {5, 5, 7, 7});
    Surface surface = before;
    surface.stretchMode = GetParam();
    StretchBlt(surface, {0, 0, 20, 20}, surface, {5, 5, 7, 7});
    EXPECT_EQ(surface.picture, expected.picture);
}

TEST_P(SurfaceCopy, APlainColourStaysPlainInEverySizeAndFillsIt) {
    const Surface source = MakeSurface(13, 17, [](int, int) { return 0xFF123456; });
    for (const int size : {1, 2, 3, 6, 7, 12, 14, 25}) {
        Surface target = Target();
        StretchBlt(target, {2, 2, size, size}, source, {0, 0, 13, 17});
        EXPECT_EQ(CountOf(target, 0xFF123456), size * size) << size;
        EXPECT_EQ(CountOf(target, kGround), 1200 - size * size) << size;
    }
}

TEST_P(SurfaceCopy, EmptyAndNegativeRectanglesCopyNothing) {
    const Surface source = MakeSurface(10, 10, PatternAt);
    const Surface none;
    Surface target = Target();
    for (const Box& empty : {Box{0, 0, 0, 5}, Box{0, 0, 5, 0}, Box{5, 5, -3, 3}, Box{5, 5, 3, kLeast}}) {
        StretchBlt(target, empty, source, {0, 0, 5, 5});
        StretchBlt(target, {0, 0, 5, 5}, source, empty);
    }
    StretchBlt(target, {0, 0, 5, 5}, none, {0, 0, 5, 5});
    StretchBlt(target, {0, 0, 5, 5}, source, {10, 0, 5, 5});
    StretchBlt(target, {40, 0, 5, 5}, source, {0, 0, 5, 5});
    EXPECT_EQ(CountOf(target, kGround), 1200);
    Surface nowhere;
    StretchBlt(nowhere, {0, 0, 5, 5}, source, {0, 0, 5, 5});
}

TEST_P(SurfaceCopy, NumbersOutOfAllProportionAreSafe) {
    const Surface source = MakeSurface(64, 48, PatternAt);
    const int numbers[] = {kLeast, -100'000, -1, 0, 1, 100'000, kMost};
    for (const int toX : numbers) {
        for (const int toWidth : {1, 3, 100'000, kMost}) {
            for (const int fromX : numbers) {
                for (const int fromWidth : {1, 3, 100'000, kMost}) {
                    Surface target = Target();
                    StretchBlt(target, {toX, -5, toWidth, 40}, source, {fromX, 0, fromWidth, 48});
                    StretchBlt(target, {-5, toX, 40, toWidth}, source, {0, fromX, 48, fromWidth});
                    EXPECT_EQ(target.Width(), 40);
                }
            }
        }
    }
}

TEST_P(SurfaceCopy, PixelsStayOpaque) {
    const Surface source = MakeSurface(64, 48, PatternAt);
    Surface target = Target();
    StretchBlt(target, {0, 0, 40, 30}, source, {0, 0, 64, 48});
    StretchBlt(target, {0, 0, 5, 30}, source, {0, 0, 64, 48});
    for (int y = 0; y < target.Height(); ++y) {
        const auto* const line = reinterpret_cast<const QRgb*>(target.picture.constScanLine(y));
        for (int x = 0; x < target.Width(); ++x) {
            EXPECT_EQ(line[x] >> 24, 255U);
        }
    }
}

// The target shows an older picture, which is the same outside the part.
TEST_P(SurfaceCopy, APartThatHasChangedIsCopiedAgain) {
    const Box part{11, 7, 9, 6};
    const Surface old = Ground();
    const Surface source = MakeSurface(40, 30, [&](int x, int y) {
        const bool isChanged =
            x >= part.x && x < part.x + part.width && y >= part.y && y < part.y + part.height;
        return isChanged ? qRgb(x, y, 200) : kGround;
    });
    for (const Box& to : {Box{0, 0, 40, 30}, Box{-3, 2, 95, 71}, Box{4, -5, 17, 19}}) {
        Surface expected = MakeSurface(60, 50, [](int, int) { return kBlack; });
        expected.stretchMode = GetParam();
        Surface target = expected;
        StretchBlt(expected, to, source, {0, 0, 40, 30});
        StretchBlt(target, to, old, {0, 0, 40, 30});
        StretchBltPart(target, to, source, {0, 0, 40, 30}, part);
        EXPECT_EQ(target.picture, expected.picture) << to.width;
    }
}

TEST_P(SurfaceCopy, APartOutOfAllProportionIsSafe) {
    for (const int x : {kLeast, -1, 0, kMost}) {
        for (const int width : {kLeast, 0, kMost}) {
            Surface target = Ground();
            target.stretchMode = GetParam();
            StretchBltPart(target, {0, 0, 40, 30}, Ground(), {0, 0, 40, 30}, {x, x, width, width});
            EXPECT_EQ(CountOf(target, kGround), 40 * 30);
        }
    }
}

// A fast copy of a part leaves the other pixels alone.
TEST(SurfaceFastCopy, OnlyPixelsOfThePartAreCopied) {
    for (const int size : {40, 80}) {
        Surface target = MakeSurface(size, size, [](int, int) { return kBlack; });
        StretchBltPart(target, {0, 0, size, size}, Ground(40, 40), {0, 0, 40, 40}, {10, 20, 5, 4});
        EXPECT_EQ(CountOf(target, kGround), 20 * size / 40 * size / 40);
    }
}

TEST(SurfaceFastCopy, EachPixelShowsTheOneUnderItsMiddle) {
    const Surface source = MakeSurface(8, 6, PatternAt);
    Surface target = Ground();
    StretchBlt(target, {3, 2, 24, 18}, source, {0, 0, 8, 6});
    for (int y = 0; y < 18; ++y) {
        for (int x = 0; x < 24; ++x) {
            EXPECT_EQ(PixelAt(target, 3 + x, 2 + y), PatternAt(x / 3, y / 3));
        }
    }
    StretchBlt(target, {0, 0, 4, 2}, source, {0, 0, 8, 6});
    EXPECT_EQ(PixelAt(target, 1, 1), PatternAt(3, 4));
}

TEST(SurfaceSmoothCopy, AShrunkPixelIsTheAverageOfWhatItStandsFor) {
    const Surface source =
        MakeSurface(60, 40, [](int x, int y) { return x % 10 == 0 || y % 10 == 0 ? kBlack : 0xFFFFFFFF; });
    Surface target = Ground();
    target.stretchMode = kStretchHalftone;
    StretchBlt(target, {1, 1, 6, 4}, source, {0, 0, 60, 40});
    for (int y = 1; y < 5; ++y) {
        for (int x = 1; x < 7; ++x) {
            EXPECT_NEAR(qRed(PixelAt(target, x, y)), 207, 3);
        }
    }
}

TEST(SurfaceSmoothCopy, AnEnlargedEdgeIsASlope) {
    const Surface source = MakeSurface(2, 1, [](int x, int) { return x == 0 ? kBlack : 0xFFFFFFFF; });
    Surface target = Ground();
    target.stretchMode = kStretchHalftone;
    StretchBlt(target, {0, 0, 16, 8}, source, {0, 0, 2, 1});
    int steps = 0;
    for (int x = 1; x < 16; ++x) {
        EXPECT_GE(qRed(PixelAt(target, x, 4)), qRed(PixelAt(target, x - 1, 4)));
        steps += PixelAt(target, x, 4) != PixelAt(target, x - 1, 4);
    }
    EXPECT_GE(steps, 6);
}

// A surface with the tests' own font. At 9 points a character is 6 x 12 pixels, and one dot of its design is
// one pixel.
Surface TextSurface() {
    Surface surface = Ground(100, 40);
    surface.FontName = QStringLiteral("Vantorix Test");
    surface.FontSize = 9;
    surface.ForeColor = 0xFFFFFFFF;
    return surface;
}

TEST(SurfaceText, IsMeasuredInPixelsAt96DotsPerInch) {
    Surface surface = TextSurface();
    EXPECT_EQ(TextWidth(surface, QStringLiteral("abc")), 18);
    EXPECT_EQ(TextHeight(surface, QStringLiteral("abc")), 12);
    surface.FontSize = 18;
    EXPECT_EQ(TextWidth(surface, QStringLiteral("abc")), 36);
    EXPECT_EQ(TextHeight(surface, QStringLiteral("abc")), 24);
}

TEST(SurfaceText, AnEmptyTextIsOneLineHighAndDrawsNothing) {
    Surface surface = TextSurface();
    EXPECT_EQ(TextWidth(surface, QString()), 0);
    EXPECT_EQ(TextHeight(surface, QString()), 12);
    TextOutA(surface, 0, 0, QString());
    EXPECT_EQ(CountOf(surface, kGround), 4000);
}

TEST(SurfaceText, StandsWithItsTopLeftCornerAtThePlace) {
    Surface surface = TextSurface();
    TextOutA(surface, 10, 20, QStringLiteral("H"));
    int left = 100;
    int top = 40;
    int right = -1;
    int bottom = -1;
    for (int y = 0; y < surface.Height(); ++y) {
        for (int x = 0; x < surface.Width(); ++x) {
            if (PixelAt(surface, x, y) != kGround) {
                left = std::min(left, x);
                top = std::min(top, y);
                right = std::max(right, x);
                bottom = std::max(bottom, y);
            }
        }
    }
    // A capital letter covers rows 2 to 8 of the 12.
    EXPECT_EQ(top, 22);
    EXPECT_EQ(bottom, 28);
    EXPECT_GE(left, 10);
    EXPECT_LT(right, 16);
    EXPECT_EQ(right - left, 4);
}

TEST(SurfaceText, IsWrittenInItsColourAndLeavesTheGround) {
    Surface surface = TextSurface();
    surface.ForeColor = 0xFFFF0000;
    TextOutA(surface, 10, 10, QStringLiteral("H"));
    // Two bars of seven dots, with three dots between them.
    EXPECT_EQ(CountOf(surface, 0xFFFF0000), 17);
    EXPECT_EQ(CountOf(surface, kGround), 4000 - 17);
}

TEST(SurfaceText, TheColoursAlphaPlaysNoPart) {
    Surface surface = TextSurface();
    surface.ForeColor = 0x00FF0000;
    TextOutA(surface, 10, 10, QStringLiteral("H"));
    EXPECT_EQ(CountOf(surface, 0xFFFF0000), 17);
}

TEST(SurfaceText, IsCutAtTheSurfacesEdges) {
    Surface surface = TextSurface();
    for (const auto& [x, y] : {std::pair(-3, 5), std::pair(98, 5), std::pair(5, -5), std::pair(5, 35)}) {
        Cls(surface);
        TextOutA(surface, x, y, QStringLiteral("HHH"));
        EXPECT_GT(CountOf(surface, 0xFFFFFFFF), 0) << x << ", " << y;
    }
}

TEST(SurfaceText, PlacesOutOfAllProportionAreSafe) {
    Surface surface = TextSurface();
    for (const int x : {kLeast, -100'000, 0, 100'000, kMost}) {
        for (const int y : {kLeast, -100'000, 100'000, kMost}) {
            TextOutA(surface, x, y, QStringLiteral("HHH"));
        }
    }
    TextOutA(surface, kLeast, 5, QStringLiteral("HHH"));
    TextOutA(surface, kMost, 5, QStringLiteral("HHH"));
    EXPECT_EQ(CountOf(surface, kGround), 4000);
    Surface none;
    TextOutA(none, 0, 0, QStringLiteral("HHH"));
}

// Marks are stacked over any number of lines, so a text far below the surface can reach it.
TEST(SurfaceText, StackedMarksReachTheSurfaceFromFarBelow) {
    Surface whole = TextSurface();
    Resize(whole, 60, 400);
    whole.FontName = QStringLiteral("DejaVu Sans");
    const QString text = QStringLiteral("a") + QString(40, QChar(0x301));
    const int y = 300;
    TextOutA(whole, 10, y, text);
    const TextReach reach = ReachOfText(whole, text);
    ASSERT_LT(y + reach.top, 200);
    Surface upper = TextSurface();
    Resize(upper, 60, 200);
    const QImage clear = upper.picture.copy();
    upper.FontName = whole.FontName;
    TextOutA(upper, 10, y, text);
    EXPECT_EQ(upper.picture, whole.picture.copy(0, 0, 60, 200));
    EXPECT_NE(upper.picture, clear);
}

TEST(SurfaceText, EveryFontSizeIsSafe) {
    Surface surface = TextSurface();
    for (const int points : {-32'768, -1, 0, 1, 1000, 32'767}) {
        surface.FontSize = points;
        EXPECT_GT(TextHeight(surface, QStringLiteral("H")), 0) << points;
        EXPECT_GE(TextWidth(surface, QStringLiteral("H")), 0) << points;
        TextOutA(surface, 0, 0, QStringLiteral("H"));
    }
}

TEST(SurfaceText, TheFontOfTheMomentCounts) {
    Surface surface = TextSurface();
    const int width = TextWidth(surface, QStringLiteral("mmmm"));
    surface.FontName = QStringLiteral("DejaVu Sans");
    surface.FontSize = 24;
    EXPECT_NE(TextWidth(surface, QStringLiteral("mmmm")), width);
    surface.FontName = QStringLiteral("Vantorix Test");
    surface.FontSize = 9;
    EXPECT_EQ(TextWidth(surface, QStringLiteral("mmmm")), width);
}

TEST(SurfaceText, AFontThatIsRegisteredLaterIsUsedFromThenOn) {
    Surface surface = TextSurface();
    QFontDatabase::removeAllApplicationFonts();
    EXPECT_NE(TextWidth(surface, QStringLiteral("abc")), 18);
    ASSERT_GE(QFontDatabase::addApplicationFont(TextOfPath(TESTS_FOLDER "/fonts/vantorix_test.ttf")), 0);
    EXPECT_EQ(TextWidth(surface, QStringLiteral("abc")), 18);
}

TEST(SurfaceText, AnUnknownFontIsReplaced) {
    Surface surface = TextSurface();
    surface.FontName = QStringLiteral("No Such Font At All");
    EXPECT_GT(TextWidth(surface, QStringLiteral("abc")), 0);
    surface.FontName = QString();
    EXPECT_GT(TextWidth(surface, QStringLiteral("abc")), 0);
}

} // namespace
