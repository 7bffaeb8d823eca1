// The image object: loading, emptying, and its buffer.
#include "imaging/picture/c32bppdib.h"

#include "imaging/picture_test_support.h"

#include <gtest/gtest.h>

#include <QTemporaryDir>

#include <stdexcept>
#include <utility>

namespace {

const QString kGood = QStringLiteral("png/colour-8-plain-mixed.png");
const QString kBad = QStringLiteral("png/filter-5.png");

void ExpectEmpty(const c32bppDIB& image) {
    // Also called for an object that was moved from, which is empty by contract.
    EXPECT_EQ(image.Handle(), 0); // NOLINT(clang-analyzer-cplusplus.Move)
    EXPECT_EQ(image.Width(), 0);
    EXPECT_EQ(image.Height(), 0);
    EXPECT_EQ(image.ScanWidth(), 0U);
    EXPECT_EQ(image.BitsPointer(), nullptr);
    EXPECT_FALSE(image.alpha());
    EXPECT_EQ(image.ImageType(), kImageNone);
    EXPECT_TRUE(image.OriginalBytes().isEmpty());
}

// Files in a folder that is removed after the test.
class ImageFiles : public testing::Test {
protected:
    QString Make(const QString& name, const QByteArray& bytes) {
        QString path = folder.filePath(name);
        EXPECT_TRUE(PosixFiles().Write(path, bytes, false));
        return path;
    }

    QTemporaryDir folder;
    PictureMachine machine;
};

using C32bppDib = ImageFiles;

// No parser can read these bytes. Events run only if a parser was called.
TEST_F(C32bppDib, AFileOf56BytesIsNotTriedAndOneOf57Is) {
    c32bppDIB image;
    EXPECT_FALSE(
        image.LoadPicture_File(machine.WithZlib(), Make(QStringLiteral("a.png"), QByteArray(56, 'x'))));
    EXPECT_EQ(machine.pump.calls, 0);
    EXPECT_FALSE(
        image.LoadPicture_File(machine.WithZlib(), Make(QStringLiteral("b.png"), QByteArray(57, 'x'))));
    EXPECT_EQ(machine.pump.calls, 1);
}

TEST_F(C32bppDib, LoadsAndLetsEventsRunOnce) {
    c32bppDIB image;
    EXPECT_TRUE(image.LoadPicture_File(machine.WithZlib(), FixturePath(kGood)));
    EXPECT_EQ(image.Width(), 9);
    EXPECT_EQ(image.Height(), 7);
    EXPECT_EQ(image.ScanWidth(), 36U);
    EXPECT_EQ(image.ImageType(), kImagePng);
    EXPECT_NE(image.Handle(), 0);
    EXPECT_EQ(machine.pump.calls, 1);
}

TEST_F(C32bppDib, TheExtensionPlaysNoPart) {
    c32bppDIB image;
    EXPECT_TRUE(image.LoadPicture_File(machine.WithZlib(), Make(QStringLiteral("a.jpg"), Fixture(kGood))));
    EXPECT_EQ(image.ImageType(), kImagePng);
}

TEST_F(C32bppDib, AMissingFileAFolderAndAnUnreadableFileAreFalse) {
    c32bppDIB image;
    EXPECT_FALSE(image.LoadPicture_File(machine.WithZlib(), folder.filePath(QStringLiteral("none.png"))));
    EXPECT_FALSE(image.LoadPicture_File(machine.WithZlib(), folder.path()));
    EXPECT_FALSE(image.LoadPicture_File(machine.WithZlib(), QString()));
    machine.files.Fail("ReadWhole");
    EXPECT_FALSE(image.LoadPicture_File(machine.WithZlib(), FixturePath(kGood)));
    ExpectEmpty(image);
    machine.files.FailNothing();
    EXPECT_TRUE(image.LoadPicture_File(machine.WithZlib(), FixturePath(kGood)));
}

TEST_F(C32bppDib, AFailedSecondLoadLeavesTheObjectEmpty) {
    c32bppDIB image;
    for (const QString& second : {FixturePath(kBad), folder.filePath(QStringLiteral("none.png"))}) {
        ASSERT_TRUE(image.LoadPicture_File(machine.WithZlib(), FixturePath(kGood), 0, 0, true));
        EXPECT_FALSE(image.LoadPicture_File(machine.WithZlib(), second));
        ExpectEmpty(image);
    }
}

// The invalid filter is found after some rows have been drawn.
TEST_F(C32bppDib, AFileThatIsRejectedMidwayLeavesTheObjectEmpty) {
    c32bppDIB image;
    EXPECT_FALSE(image.LoadPicture_File(machine.WithZlib(),
                                        FixturePath(QStringLiteral("png/filter-5-in-the-last-row.png"))));
    ExpectEmpty(image);
}

TEST_F(C32bppDib, AFileOfNoKnownKindIsFalse) {
    c32bppDIB image;
    const QByteArray bytes =
        QByteArrayLiteral("This is a text of more than fifty-seven characters, and no picture.");
    EXPECT_FALSE(image.LoadPicture_File(machine.WithZlib(), Make(QStringLiteral("a.png"), bytes)));
    EXPECT_FALSE(image.LoadPicture_Stream(machine.WithZlib(), SpanOf(bytes)));
    EXPECT_FALSE(image.LoadPicture_Stream(machine.WithZlib(), {}));
}

TEST_F(C32bppDib, EventsThatRunDuringALoadMayLoadTheSameObject) {
    c32bppDIB image;
    machine.pump.pending = [&] {
        image.LoadPicture_File(machine.WithZlib(),
                               FixturePath(QStringLiteral("png/size-8x8-colour-8-plain.png")));
    };
    EXPECT_TRUE(image.LoadPicture_File(machine.WithZlib(), FixturePath(kGood)));
    EXPECT_EQ(image.Width(), 8);
    EXPECT_EQ(machine.pump.calls, 2);
}

TEST_F(C32bppDib, WhatEndsTheProgramInAnEventPassesTheLoad) {
    c32bppDIB image;
    machine.pump.pending = [] { throw std::runtime_error("end"); };
    EXPECT_THROW(image.LoadPicture_File(machine.WithZlib(), FixturePath(kGood)), std::runtime_error);
}

TEST_F(C32bppDib, KeepsTheOriginalBytesOnRequest) {
    c32bppDIB image;
    ASSERT_TRUE(image.LoadPicture_File(machine.WithZlib(), FixturePath(kGood)));
    EXPECT_TRUE(image.OriginalBytes().isEmpty());
    ASSERT_TRUE(image.LoadPicture_File(machine.WithZlib(), FixturePath(kGood), -5, -5, true));
    EXPECT_EQ(image.OriginalBytes(), Fixture(kGood));
    // Loading releases the original bytes, which are also its input.
    ASSERT_TRUE(
        image.LoadPicture_Stream(machine.WithZlib(), SpanOf(image.OriginalBytes()), 0, 0, 0, 0, true));
    EXPECT_EQ(image.OriginalBytes(), Fixture(kGood));
}

TEST_F(C32bppDib, LoadsAPartOfAStream) {
    const QByteArray png = Fixture(kGood);
    const QByteArray around = QByteArray(7, 'x') + png + QByteArray(3, 'y');
    const auto length = static_cast<std::size_t>(png.size());
    c32bppDIB image;
    EXPECT_TRUE(image.LoadPicture_Stream(machine.WithZlib(), SpanOf(around), 0, 0, 7, length, true));
    EXPECT_EQ(image.OriginalBytes(), png);
    EXPECT_TRUE(image.LoadPicture_Stream(machine.WithZlib(), SpanOf(around), 0, 0, 7));
    EXPECT_FALSE(image.LoadPicture_Stream(machine.WithZlib(), SpanOf(around), 0, 0, 0, length));
    EXPECT_FALSE(image.LoadPicture_Stream(machine.WithZlib(), SpanOf(around), 0, 0, 7, length + 4));
    EXPECT_FALSE(image.LoadPicture_Stream(machine.WithZlib(), SpanOf(around), 0, 0, SIZE_MAX, 1));
    EXPECT_FALSE(image.LoadPicture_Stream(machine.WithZlib(), SpanOf(around), 0, 0, 7, SIZE_MAX));
    ExpectEmpty(image);
    EXPECT_EQ(machine.pump.calls, 0);
}

TEST(C32bppDibBuffer, InitializeReplacesAPictureByZeros) {
    PictureMachine machine;
    c32bppDIB image;
    ASSERT_TRUE(image.LoadPicture_File(machine.WithZlib(), FixturePath(kGood), 0, 0, true));
    ASSERT_TRUE(image.InitializeDIB(3, -2));
    EXPECT_EQ(image.Width(), 3);
    EXPECT_EQ(image.Height(), 2);
    EXPECT_EQ(PixelsOf(image), std::vector<std::uint8_t>(24, 0));
    EXPECT_FALSE(image.alpha());
    EXPECT_EQ(image.ImageType(), kImageNone);
    EXPECT_TRUE(image.OriginalBytes().isEmpty());
    EXPECT_FALSE(image.InitializeDIB(0, 1));
    ExpectEmpty(image);
}

TEST(C32bppDibBuffer, TakesTheKindAndTheAlphaOfPixels) {
    PictureMachine machine;
    c32bppDIB image;
    ASSERT_TRUE(image.LoadPicture_File(machine.WithZlib(), FixturePath(kGood), 0, 0, true));
    PicturePixels pixels;
    ASSERT_TRUE(pixels.InitializeDIB(2, 1));
    pixels.ImageType = kImageGif;
    image.TakePixels(std::move(pixels));
    EXPECT_EQ(PixelsOf(image), std::vector<std::uint8_t>(8, 0));
    EXPECT_FALSE(image.alpha());
    EXPECT_EQ(image.ImageType(), kImageGif);
    EXPECT_TRUE(image.OriginalBytes().isEmpty());
}

TEST(C32bppDibBuffer, DestroyKeepsTheQualityAndEmptiesTheRest) {
    c32bppDIB image = MakeImage(2, 2, PatternAt);
    image.HighQualityInterpolation = false;
    image.DestroyDIB();
    ExpectEmpty(image);
    EXPECT_FALSE(image.HighQualityInterpolation);
}

TEST(C32bppDibBuffer, AnObjectMovedFromIsEmpty) {
    c32bppDIB first = MakeImage(2, 3, PatternAt);
    const auto pixels = PixelsOf(first);
    c32bppDIB second = std::move(first);
    ExpectEmpty(first); // NOLINT(bugprone-use-after-move)
    EXPECT_EQ(PixelsOf(second), pixels);
    first = std::move(second);
    EXPECT_EQ(first.Height(), 3);
}

} // namespace
