// Pictures kept ready: which are dropped when memory is short, how keys differ, and reduced decoding.
#include "imaging/picture/ready_pictures.h"

#include "imaging/picture/cover_picture.h"
#include "imaging/picture/drawing.h"
#include "imaging/picture/reduced_jpeg.h"
#include "imaging/picture_test_support.h"
#include "imaging/tags/tagged_images.h"
#include "support/home_folder.h"

#include <gtest/gtest.h>

#include <QBuffer>

using namespace Qt::Literals::StringLiterals;

namespace {

ReadyKey KeyOf(const char* path, int width = 100, int height = 100) {
    return {QString::fromLatin1(path), {}, PictureSource::kFile, width, height};
}

// 40,000 bytes of pixels.
ReadyPicture PictureOf100() {
    const c32bppDIB image = MakeImage(10, 10, PatternAt);
    return {true, MakeReady(image, 100, 100)};
}

TEST(ReadyPictures, TheOldestGoWhenRoomIsShort) {
    ReadyPictures ready(3 * 41'000);
    for (const char* const path : {"a", "b", "c"}) {
        ready.Put(KeyOf(path), PictureOf100());
    }
    EXPECT_NE(ready.Find(KeyOf("a")), nullptr);
    ready.Put(KeyOf("d"), PictureOf100());
    EXPECT_EQ(ready.Find(KeyOf("b")), nullptr);
    for (const char* const path : {"a", "c", "d"}) {
        EXPECT_NE(ready.Find(KeyOf(path)), nullptr) << path;
    }
}

TEST(ReadyPictures, BytesStayWithinTheLimitHoweverManyPagesAreSeen) {
    ReadyPictures ready(1'000'000);
    for (int i = 0; i < 2000; ++i) {
        ready.Put(KeyOf(QByteArray::number(i).constData()), PictureOf100());
        ASSERT_LE(ready.Bytes(), 1'000'000);
    }
    EXPECT_EQ(ready.Count(), 24U);
    // Entries without pixels use memory too.
    for (int i = 0; i < 5000; ++i) {
        ready.Put(KeyOf(QByteArray::number(i).constData(), 7), {});
    }
    EXPECT_LE(ready.Count(), 2000U);
    EXPECT_LE(ready.Bytes(), 1'000'000);
}

TEST(ReadyPictures, LongPathsTakeRoom) {
    ReadyPictures ready(1'000'000);
    const QByteArray folder(4000, 'x');
    for (int i = 0; i < 500; ++i) {
        ready.Put(KeyOf((folder + QByteArray::number(i)).constData()), {});
    }
    EXPECT_LE(ready.Count(), 1'000'000U / 8000);
}

TEST(ReadyPictures, APictureLargerThanAllRoomIsNotKept) {
    ReadyPictures ready(30'000);
    ready.Put(KeyOf("a"), PictureOf100());
    EXPECT_EQ(ready.Count(), 0U);
    EXPECT_EQ(ready.Bytes(), 0);
}

TEST(ReadyPictures, APictureThatIsPutAgainTakesThePlaceOfTheOldOne) {
    ReadyPictures ready;
    ready.Put(KeyOf("a"), PictureOf100());
    const std::int64_t bytes = ready.Bytes();
    ready.Put(KeyOf("a"), PictureOf100());
    EXPECT_EQ(ready.Bytes(), bytes);
    EXPECT_EQ(ready.Count(), 1U);
}

TEST(ReadyPictures, EveryPartOfTheKeyCounts) {
    ReadyPictures ready;
    const ReadyKey key = KeyOf("a");
    ready.Put(key, {true, nullptr});
    std::vector<ReadyKey> others(8, key);
    others[0].path = u"b"_s;
    others[1].width = 99;
    others[2].height = 99;
    others[3].source = PictureSource::kTag;
    others[4].identity.size = 1;
    others[5].identity.modifiedNanoseconds = 1;
    others[6].identity.changedNanoseconds = 1;
    others[7].identity.inode = 1;
    for (const ReadyKey& other : others) {
        EXPECT_EQ(ready.Find(other), nullptr);
    }
    EXPECT_NE(ready.Find(key), nullptr);
}

TEST(ReadyPictures, NoPictureIsMadeOfAnEmptyOne) {
    EXPECT_EQ(MakeReady(c32bppDIB(), 10, 10), nullptr);
    EXPECT_FALSE(MayBeReady(0, 10));
    EXPECT_FALSE(MayBeReady(10, -1));
    EXPECT_FALSE(MayBeReady(100'000, 100'000));
    EXPECT_TRUE(MayBeReady(1, 1));
}

// --- Reduced decoding ----------------------------------------------------------------------------

QByteArray JpegOf(int width, int height) {
    QImage picture(width, height, QImage::Format_RGB32);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            picture.setPixel(x, y, qRgb(x * 255 / width, y * 255 / height, 90));
        }
    }
    QBuffer file;
    file.open(QIODevice::WriteOnly);
    picture.save(&file, "JPG", 95);
    return file.data();
}

TEST(ReducedJpeg, IsTheLeastNumberOfEighthsOfTwiceTheBox) {
    struct Row {
        int box;
        int width;
    };
    const QByteArray file = JpegOf(800, 400);
    // An eighth of 800 pixels is 100. The height of the box is half its width.
    for (const Row& row : {Row{10, 100}, Row{50, 100}, Row{51, 200}, Row{100, 200}, Row{350, 700}}) {
        c32bppDIB picture;
        ASSERT_TRUE(LoadReducedJpeg(SpanOf(file), row.box, row.box / 2, picture)) << row.box;
        EXPECT_EQ(picture.Width(), row.width) << row.box;
        EXPECT_EQ(picture.Height(), row.width / 2) << row.box;
        EXPECT_EQ(picture.ImageType(), kImageBitmap);
        EXPECT_FALSE(picture.alpha());
    }
    c32bppDIB picture;
    EXPECT_FALSE(LoadReducedJpeg(SpanOf(file), 351, 10, picture));
    EXPECT_FALSE(LoadReducedJpeg(SpanOf(file), 10, 300, picture));
    EXPECT_EQ(picture.Handle(), 0);
}

TEST(ReducedJpeg, ShowsTheSamePicture) {
    const QByteArray file = JpegOf(800, 800);
    c32bppDIB picture;
    ASSERT_TRUE(LoadReducedJpeg(SpanOf(file), 50, 50, picture));
    const auto ready = MakeReady(picture, 50, 50);
    ASSERT_TRUE(ready);
    for (int y = 0; y < 50; y += 7) {
        for (int x = 0; x < 50; x += 7) {
            const QRgb pixel = ready->picture.pixel(x, y);
            EXPECT_NEAR(qRed(pixel), (x * 16 + 8) * 255 / 800, 4);
            EXPECT_NEAR(qGreen(pixel), (y * 16 + 8) * 255 / 800, 4);
            EXPECT_EQ(qAlpha(pixel), 255);
        }
    }
}

// Strokes of letters, a disc and film grain, as on covers.
QByteArray DetailedJpeg(int width, int height) {
    QImage picture(width, height, QImage::Format_RGB32);
    quint32 dice = 1;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            dice = dice * 1664525U + 1013904223U;
            const int noise = static_cast<int>(dice >> 28);
            const bool isLine = x % 61 < 6 || y % 83 < 9;
            const bool isInside = (x - 500) * (x - 500) + (y - 400) * (y - 400) < 300 * 300;
            picture.setPixel(x, y,
                             isLine     ? qRgb(20, 20, 20)
                             : isInside ? qRgb(250 - noise, 90, noise)
                                        : qRgb(noise * 3, 120 + noise, 200));
        }
    }
    QBuffer file;
    file.open(QIODevice::WriteOnly);
    picture.save(&file, "JPG", 92);
    return file.data();
}

// The greatest and the mean difference of the samples of two pictures of the same size.
std::pair<int, double> DifferenceOf(const QImage& a, const QImage& b) {
    int greatest = 0;
    double sum = 0;
    for (int y = 0; y < a.height(); ++y) {
        for (int x = 0; x < a.width(); ++x) {
            const QRgb one = a.pixel(x, y);
            const QRgb other = b.pixel(x, y);
            for (const int difference :
                 {qRed(one) - qRed(other), qGreen(one) - qGreen(other), qBlue(one) - qBlue(other)}) {
                greatest = std::max(greatest, std::abs(difference));
                sum += std::abs(difference);
            }
        }
    }
    return {greatest, sum / (3.0 * a.width() * a.height())};
}

// The two ways of decoding a cover must look the same. They differ by up to a fifth of the contrast along
// hard edges, which are everywhere in this picture, and by almost nothing elsewhere.
TEST(ReducedJpeg, ADetailedPictureLooksLikeTheWholeOneScaledDown) {
    PictureMachine machine;
    // For the second size, no number of eighths gives whole pixels.
    for (const QSize& size : {QSize(1000, 1000), QSize(1003, 997)}) {
        const QByteArray file = DetailedJpeg(size.width(), size.height());
        c32bppDIB whole;
        ASSERT_TRUE(whole.LoadPicture_Stream(machine.WithZlib(), SpanOf(file)));
        for (const QSize& box : {QSize(26, 26), QSize(60, 60), QSize(125, 125), QSize(200, 120)}) {
            c32bppDIB reduced;
            ASSERT_TRUE(LoadReducedJpeg(SpanOf(file), box.width(), box.height(), reduced)) << box.width();
            const auto [greatest, mean] = DifferenceOf(MakeReady(reduced, box.width(), box.height())->picture,
                                                       MakeReady(whole, box.width(), box.height())->picture);
            EXPECT_LT(greatest, 48) << box.width();
            EXPECT_LT(mean, 5.5) << box.width();
        }
    }
}

TEST(ReducedJpeg, LeavesEverythingElseAlone) {
    c32bppDIB picture;
    for (const QByteArray& file :
         {QByteArray(), QByteArray("\xFF\xD8"), QByteArray("\xFF\xD8\xFF"), JpegOf(800, 800).first(100),
          Fixture(u"png/colour-8-plain-0.png"_s), QByteArray(1000, 'x')}) {
        EXPECT_FALSE(LoadReducedJpeg(SpanOf(file), 10, 10, picture));
        EXPECT_EQ(picture.Handle(), 0);
    }
}

// --- The image object of a cover -----------------------------------------------------------------

QByteArray PngOf(int width, int height, QRgb colour) {
    QImage picture(width, height, QImage::Format_ARGB32);
    picture.fill(QColor::fromRgba(colour));
    QBuffer file;
    file.open(QIODevice::WriteOnly);
    picture.save(&file, "PNG");
    return file.data();
}

class CoverFiles : public testing::Test {
protected:
    PictureMachine machine;
    HomeFolder home;
    ReadyPictures ready;
    CoverPicture cover{ready};
};

TEST_F(CoverFiles, AnswersForTheWholePictureWhateverWasDrawn) {
    EXPECT_EQ(cover.Width(), 0);
    ASSERT_TRUE(cover.LoadPicture_File(machine.WithZlib(), home.Write(u"a"_s, PngOf(80, 60, 0xFF204060))));
    Surface surface = MakeSurface(30, 30, [](int, int) { return 0xFFFFFFFFU; });
    EXPECT_TRUE(cover.Render(surface, 5, 5, 20, 20));
    EXPECT_EQ(PixelAt(surface, 5, 5), 0xFF204060U);
    EXPECT_EQ(PixelAt(surface, 24, 24), 0xFF204060U);
    EXPECT_EQ(PixelAt(surface, 25, 25), 0xFFFFFFFFU);
    EXPECT_EQ(cover.Width(), 80);
    EXPECT_EQ(cover.Height(), 60);
}

TEST_F(CoverFiles, ItsAlphaIsBlended) {
    cover.LoadPicture_File(machine.WithZlib(), home.Write(u"a"_s, PngOf(80, 60, 0x80000000)));
    Surface surface = MakeSurface(30, 30, [](int, int) { return 0xFFFFFFFFU; });
    EXPECT_TRUE(cover.Render(surface, 0, 0, 20, 20));
    EXPECT_NEAR(qRed(PixelAt(surface, 10, 10)), 127, 1);
}

TEST_F(CoverFiles, EachLoadLetsEventsThroughOnceIfThereIsAFileToTry) {
    Surface surface = MakeSurface(30, 30, PatternAt);
    const QString path = home.Write(u"a"_s, PngOf(80, 60, 0xFF204060));
    for (int i = 1; i <= 3; ++i) {
        EXPECT_TRUE(cover.LoadPicture_File(machine.WithZlib(), path));
        cover.Render(surface, 0, 0, 20, 20);
        EXPECT_EQ(machine.pump.calls, i);
    }
    EXPECT_FALSE(cover.LoadPicture_File(machine.WithZlib(), home.Write(u"short"_s, QByteArray(56, 'x'))));
    EXPECT_FALSE(cover.LoadPicture_File(machine.WithZlib(), home.Path(u"none"_s)));
    EXPECT_EQ(machine.pump.calls, 3);
    EXPECT_FALSE(cover.Render(surface, 0, 0, 20, 20));
    EXPECT_EQ(cover.Width(), 0);
}

TEST_F(CoverFiles, AFileThatCannotBeReadOrDecodedDrawsNothing) {
    Surface surface = MakeSurface(30, 30, PatternAt);
    const Surface before = surface;
    ASSERT_TRUE(cover.LoadPicture_File(machine.WithZlib(), home.Write(u"bad"_s, QByteArray(500, 'x'))));
    EXPECT_FALSE(cover.Render(surface, 0, 0, 20, 20));
    machine.files.Fail("ReadWhole");
    ASSERT_TRUE(cover.LoadPicture_File(machine.WithZlib(), home.Write(u"good"_s, PngOf(80, 60, 0xFF204060))));
    EXPECT_FALSE(cover.Render(surface, 0, 0, 20, 20));
    EXPECT_FALSE(cover.Render(surface, 0, 0));
    EXPECT_EQ(surface.picture, before.picture);
}

TEST_F(CoverFiles, AFileThatCouldNotBeReadOnceIsReadAgain) {
    Surface surface = MakeSurface(30, 30, PatternAt);
    const QString path = home.Write(u"a"_s, PngOf(80, 60, 0xFF204060));
    machine.files.Fail("ReadWhole");
    ASSERT_TRUE(cover.LoadPicture_File(machine.WithZlib(), path));
    EXPECT_FALSE(cover.Render(surface, 0, 0, 20, 20));
    machine.files.FailNothing();
    ASSERT_TRUE(cover.LoadPicture_File(machine.WithZlib(), path));
    EXPECT_TRUE(cover.Render(surface, 0, 0, 20, 20));
    EXPECT_EQ(PixelAt(surface, 10, 10), 0xFF204060U);
}

TEST_F(CoverFiles, SizesOf0AreThePicturesOwnAndNegativeOnesMirror) {
    QImage halves(8, 4, QImage::Format_RGB32);
    halves.fill(0xFF102030);
    halves.setPixel(0, 0, 0xFFFFFFFF);
    QBuffer file;
    file.open(QIODevice::WriteOnly);
    halves.save(&file, "PNG");
    ASSERT_TRUE(cover.LoadPicture_File(machine.WithZlib(), home.Write(u"a"_s, file.data())));
    Surface surface = MakeSurface(30, 30, [](int, int) { return 0xFF000000U; });
    EXPECT_TRUE(cover.Render(surface, 0, 0));
    EXPECT_EQ(PixelAt(surface, 0, 0), 0xFFFFFFFFU);
    EXPECT_TRUE(cover.Render(surface, 0, 0, -8, 4));
    EXPECT_EQ(PixelAt(surface, 7, 0), 0xFFFFFFFFU);
}

// Covers, pictures in tags and theme pictures are refused in the same way, also for small boxes.
TEST(ReducedJpeg, AFileOfTooManyScansIsRefusedOnEveryWay) {
    PictureMachine machine;
    for (const char16_t* const name :
         {u"bmp/progressive-of-600-scans.jpg", u"bmp/baseline-of-600-scans.jpg",
          u"bmp/progressive-of-80-refining-scans.jpg", u"bmp/few-bytes-for-many-pixels.jpg"}) {
        const QByteArray file = Fixture(QString::fromUtf16(name));
        ASSERT_FALSE(file.isEmpty());
        c32bppDIB picture;
        EXPECT_FALSE(LoadReducedJpeg(SpanOf(file), 20, 20, picture));
        EXPECT_FALSE(PictureFromStream(machine.pictures, SpanOf(file), picture));
        EXPECT_FALSE(picture.LoadPicture_Stream(machine.WithZlib(), SpanOf(file)));
        EXPECT_EQ(picture.Handle(), 0);
    }
}

} // namespace
