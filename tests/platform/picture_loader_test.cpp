// Tests of the system's picture loader: what it recognises by content, what it refuses, and how it fails on
// demand.
#include "platform/pictures/picture_loader.h"

#include "core/path_text.h"
#include "platform/posix/posix_files.h"
#include "platform/simulated/simulated_platform.h"

#include <gtest/gtest.h>

namespace {

QByteArray Picture(const char* name) {
    const QString path = TextOfPath(TESTS_FOLDER "/images/") + QString::fromLatin1(name);
    return PosixFiles().ReadWhole(path, std::int64_t{1} << 20).value_or(QByteArray());
}

std::unique_ptr<SystemPicture> Load(SystemPictures& pictures, const QByteArray& file) {
    return pictures.OleLoadPicture(
        {reinterpret_cast<const std::uint8_t*>(file.constData()), static_cast<std::size_t>(file.size())});
}

std::unique_ptr<SystemPicture> Load(const QByteArray& file) {
    PictureLoader pictures;
    return Load(pictures, file);
}

TEST(PictureLoader, ReadsBitmapsAndJpegAsColours) {
    for (const char* const name :
         {"bmp/depth-1.bmp", "bmp/depth-16.bmp", "bmp/depth-8.bmp", "bmp/grey.jpg"}) {
        const auto picture = Load(Picture(name));
        ASSERT_TRUE(picture) << name;
        EXPECT_EQ(picture->bitCount, 32);
        EXPECT_EQ(picture->Row(0).size(), static_cast<std::size_t>(picture->width) * 4);
    }
}

TEST(PictureLoader, ReadsAGifAsIndicesWithItsColours) {
    const auto picture = Load(Picture("gif/own-colours-replace-those-of-the-screen.gif"));
    ASSERT_TRUE(picture);
    EXPECT_EQ(picture->bitCount, 8);
    EXPECT_EQ(picture->width, 7);
    EXPECT_EQ(picture->height, 6);
    EXPECT_EQ(picture->palette.size(), 32U * 3);
    EXPECT_EQ(picture->Row(5).size(), 7U);
}

TEST(PictureLoader, NeverReadsPngNorIcons) {
    EXPECT_FALSE(Load(Picture("png/colour-8-plain-mixed.png")));
    EXPECT_FALSE(Load(Picture("ico/depth-4-of-7-columns.ico")));
    EXPECT_FALSE(Load(QByteArray("II*\0\0\0\0\0", 8)));
    EXPECT_FALSE(Load({}));
}

TEST(PictureLoader, DamagedFilesAreNothing) {
    for (const char* const name : {"bmp/cut.bmp", "gif/cut-in-the-data.gif", "bmp/without-a-frame.jpg"}) {
        ASSERT_FALSE(Picture(name).isEmpty()) << name;
        EXPECT_FALSE(Load(Picture(name))) << name;
    }
}

// A bitmap of 16 bits with run-length coding or embedded JPEG data is broken.
TEST(PictureLoader, SixteenBitsAreReadUncompressedOnly) {
    QByteArray file = Picture("bmp/depth-16.bmp");
    ASSERT_TRUE(Load(file));
    for (const char compression : {'\1', '\2', '\4'}) {
        file[30] = compression;
        EXPECT_FALSE(Load(file.first(80)));
        EXPECT_FALSE(Load(file));
    }
}

TEST(PictureLoader, MasksWithGapsAreRefused) {
    QByteArray file = Picture("bmp/fields-565.bmp");
    ASSERT_TRUE(Load(file));
    file[54] = 5;
    EXPECT_FALSE(Load(file));
}

TEST(PictureLoader, EveryPrefixAndEveryChangedByteIsAnswered) {
    for (const char* const name : {"bmp/runs-4.bmp", "bmp/fields-565.bmp", "bmp/header-56-depth-8.bmp",
                                   "gif/interlaced-of-5-rows.gif", "bmp/progressive.jpg"}) {
        const QByteArray file = Picture(name);
        ASSERT_TRUE(Load(file)) << name;
        for (qsizetype at = 0; at < std::min<qsizetype>(200, file.size()); ++at) {
            QByteArray changed = file;
            changed[at] = static_cast<char>(~changed[at]);
            // Sizes that result from it are refused or small.
            const auto picture = Load(changed);
            EXPECT_TRUE(!picture || std::int64_t{picture->width} * picture->height <= 1 << 26);
            Load(file.first(at));
        }
    }
}

TEST(PictureLoader, FailsOnDemandOnTheSimulatedMachine) {
    SimulatedPlatform platform;
    const QByteArray file = Picture("bmp/grey.jpg");
    EXPECT_TRUE(Load(platform.pictures, file));
    ASSERT_TRUE(Failures::IsOperation(QStringLiteral("OleLoadPicture")));
    platform.failures.Add(QStringLiteral("OleLoadPicture"));
    EXPECT_FALSE(Load(platform.pictures, file));
}

} // namespace
