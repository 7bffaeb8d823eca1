// The bitmap parser, the last in the chain: 32-bit bitmaps, and all pictures of the system's loader.
#include "imaging/formats/bmp_parser.h"

#include "imaging/formats/gif_parser.h"
#include "imaging/formats/ico_parser.h"
#include "imaging/picture_test_support.h"
#include "imaging/png/parser.h"
#include "imaging/recording_pictures.h"

#include <gtest/gtest.h>

namespace {

bool Load(const QByteArray& file, PicturePixels& host, SystemPictures& pictures) {
    const auto bytes = SpanOf(file);
    return cBMPparser().LoadStream(bytes, host, 0, bytes.size(), pictures);
}

TEST(BmpParser, A24BitBitmapGoesThroughTheLastResortAndIsOpaqueThroughout) {
    const QByteArray file = Fixture(QStringLiteral("bmp/depth-24.bmp"));
    RecordingPictures nothing;
    PicturePixels image;
    EXPECT_FALSE(Load(file, image, nothing));
    ASSERT_EQ(nothing.asked.size(), 1U);
    EXPECT_TRUE(std::ranges::equal(nothing.asked[0], SpanOf(file)));

    PictureLoader pictures;
    ASSERT_TRUE(Load(file, image, pictures));
    EXPECT_FALSE(image.alpha);
    EXPECT_EQ(image.ImageType, kImageBitmap);
    for (int y = 0; y < image.Height(); ++y) {
        for (int x = 0; x < image.Width(); ++x) {
            EXPECT_EQ(qAlpha(PixelAt(image, x, y)), 255);
        }
    }
}

TEST(BmpParser, A32BitBitmapIsReadWithoutTheSystem) {
    RecordingPictures pictures;
    PicturePixels image;
    EXPECT_TRUE(Load(Fixture(QStringLiteral("bmp/depth-32-straight.bmp")), image, pictures));
    EXPECT_TRUE(pictures.asked.empty());
    EXPECT_TRUE(image.alpha);
}

TEST(BmpParser, A32BitBitmapWhoseRowsPassTheEndGoesToTheSystem) {
    RecordingPictures pictures;
    PicturePixels image;
    EXPECT_FALSE(Load(Fixture(QStringLiteral("bmp/depth-32-cut.bmp")), image, pictures));
    EXPECT_EQ(pictures.asked.size(), 1U);
}

TEST(BmpParser, A32BitBitmapWhoseAlphaBytesAreAllZeroDrawsAsOpaque) {
    PictureMachine machine;
    c32bppDIB image;
    ASSERT_TRUE(image.LoadPicture_File(
        machine.WithZlib(), FixturePath(QStringLiteral("bmp/depth-32-without-alpha-is-opaque.bmp"))));
    EXPECT_FALSE(image.alpha());
    Surface surface = MakeSurface(image.Width(), image.Height(), [](int, int) { return 0xFF00FF00; });
    ASSERT_TRUE(image.Render(surface, 0, 0));
    for (int y = 0; y < image.Height(); ++y) {
        for (int x = 0; x < image.Width(); ++x) {
            EXPECT_EQ(PixelAt(surface, x, y), PixelAt(image, x, y));
            EXPECT_EQ(qAlpha(PixelAt(image, x, y)), 255);
        }
    }
}

TEST(BmpParser, AJpegFailsTheFirstThreeParsersAndIsReadThroughTheLastResort) {
    const QByteArray jpeg = Fixture(QStringLiteral("bmp/colour.jpg"));
    const auto bytes = SpanOf(jpeg);
    PictureMachine machine;
    PicturePixels pixels;
    EXPECT_FALSE(cPNGparser().LoadStream(bytes, pixels, 0, bytes.size(), machine.zlib));
    EXPECT_FALSE(cGIFparser().LoadStream(bytes, pixels, 0, bytes.size(), machine.pictures));
    EXPECT_FALSE(cICOparser().LoadStream(bytes, 0, 0, pixels, 0, bytes.size(), machine.zlib));
    c32bppDIB image;
    ASSERT_TRUE(image.LoadPicture_Stream(machine.WithZlib(), bytes));
    EXPECT_EQ(image.ImageType(), kImageBitmap);
    EXPECT_FALSE(image.alpha());
    EXPECT_EQ(image.Width(), 17);
    EXPECT_EQ(image.Height(), 11);
}

// Deliberate D-62.
TEST(BmpParser, TheMasksOfA32BitBitmapAreNotLookedAt) {
    PictureLoader pictures;
    PicturePixels image;
    const QByteArray file = Fixture(QStringLiteral("bmp/depth-32-masks-are-not-looked-at.bmp"));
    ASSERT_TRUE(Load(file, image, pictures));
    const qsizetype first = 14 + 40 + 12;
    const auto byte = [&](qsizetype at) { return static_cast<quint8>(file[first + at]); };
    const int alpha = byte(3);
    EXPECT_EQ(PixelAt(image, 0, image.Height() - 1),
              qRgba(byte(2) * alpha / 255, byte(1) * alpha / 255, byte(0) * alpha / 255, alpha));
}

TEST(BmpParser, AFileThatTheSystemDoesNotKnowLeavesTheHostEmpty) {
    RecordingPictures pictures;
    PicturePixels image;
    image.InitializeDIB(3, 3);
    EXPECT_FALSE(Load(QByteArray(100, 'x'), image, pictures));
    EXPECT_TRUE(image.IsEmpty());
}

TEST(ConvertstdPic, TakesColoursAndMakesThemOpaque) {
    SystemPicture picture = MakeSystemPicture(2, 1, 32, {1, 2, 3, 4, 5, 6, 7, 0});
    PicturePixels image;
    ASSERT_TRUE(cBMPparser().ConvertstdPicTo32bpp(picture, image, 32));
    EXPECT_EQ(PixelAt(image, 0, 0), 0xFF030201);
    EXPECT_EQ(PixelAt(image, 1, 0), 0xFF070605);
    EXPECT_FALSE(image.alpha);
    EXPECT_EQ(image.ImageType, kImageBitmap);
}

TEST(ConvertstdPic, TakesMemoryOverAndMakesItOpaque) {
    SystemPicture picture = MakeSystemPicture(1, 2, 32, {});
    picture.memory.reset(static_cast<std::uint8_t*>(AllocatePixels(8)));
    const std::uint8_t rows[] = {1, 2, 3, 0, 5, 6, 7, 8};
    std::copy(std::begin(rows), std::end(rows), picture.memory.get());
    const std::uint8_t* const memory = picture.memory.get();
    PicturePixels image;
    image.InitializeDIB(3, 3);
    image.alpha = true;
    ASSERT_TRUE(cBMPparser().ConvertstdPicTo32bpp(picture, image, 32));
    EXPECT_EQ(image.Line(0).data(), memory);
    EXPECT_EQ(PixelAt(image, 0, 0), 0xFF030201);
    EXPECT_EQ(PixelAt(image, 0, 1), 0xFF070605);
    EXPECT_FALSE(image.alpha);
    EXPECT_EQ(image.ImageType, kImageBitmap);
}

TEST(ConvertstdPic, LooksIndicesUpTheHighestRowFirst) {
    SystemPicture picture = MakeSystemPicture(1, 2, 8, {1, 0});
    picture.palette = {10, 20, 30, 40, 50, 60};
    PicturePixels image;
    ASSERT_TRUE(cBMPparser().ConvertstdPicTo32bpp(picture, image, 8));
    EXPECT_EQ(PixelAt(image, 0, 0), 0xFF28323C);
    EXPECT_EQ(PixelAt(image, 0, 1), 0xFF0A141E);
    picture.palette.resize(5);
    EXPECT_FALSE(cBMPparser().ConvertstdPicTo32bpp(picture, image, 8));
    EXPECT_TRUE(image.IsEmpty());
}

TEST(ConvertstdPic, OtherBitCountsAndPicturesWithoutPixelsAreRefused) {
    PicturePixels image;
    SystemPicture other = MakeSystemPicture(1, 1, 24, {1, 2, 3});
    EXPECT_FALSE(cBMPparser().ConvertstdPicTo32bpp(other, image, 24));
    SystemPicture empty = MakeSystemPicture(0, 1, 32, {});
    EXPECT_FALSE(cBMPparser().ConvertstdPicTo32bpp(empty, image, 32));
    EXPECT_TRUE(image.IsEmpty());
}

} // namespace
