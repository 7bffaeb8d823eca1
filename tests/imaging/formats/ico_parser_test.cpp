// The icon parser: the choice of an entry, and its pixels.
#include "imaging/formats/ico_parser.h"

#include "imaging/picture_test_support.h"

#include <gtest/gtest.h>

namespace {

QByteArray Little(quint32 value, int bytes) {
    QByteArray text;
    for (; bytes > 0; --bytes, value >>= 8) {
        text.append(static_cast<char>(value & 255U));
    }
    return text;
}

// A bitmap of 24 bits in one colour, with an empty mask.
QByteArray Plain(int size, quint8 colour) {
    const auto side = static_cast<quint32>(size);
    const int row = (size * 3 + 3) / 4 * 4;
    const int maskRow = (size + 31) / 32 * 4;
    return Little(40, 4) + Little(side, 4) + Little(side * 2, 4) + Little(1, 2) + Little(24, 2) +
           QByteArray(24, '\0') + QByteArray(qsizetype{row} * size, static_cast<char>(colour)) +
           QByteArray(qsizetype{maskRow} * size, '\0');
}

struct Entry {
    int width;
    int height;
    int depth;
    QByteArray data;
};

QByteArray Icon(const std::vector<Entry>& entries) {
    QByteArray directory = Little(0, 2) + Little(1, 2) + Little(static_cast<quint32>(entries.size()), 2);
    QByteArray data;
    const auto start = static_cast<quint32>(6 + 16 * entries.size());
    for (const Entry& entry : entries) {
        directory += Little(static_cast<quint32>(entry.width), 1) +
                     Little(static_cast<quint32>(entry.height), 1) + Little(0, 2) + Little(1, 2) +
                     Little(static_cast<quint32>(entry.depth), 2) +
                     Little(static_cast<quint32>(entry.data.size()), 4) +
                     Little(start + static_cast<quint32>(data.size()), 4);
        data += entry.data;
    }
    return directory + data;
}

bool Load(const QByteArray& ico, int width, int height, PicturePixels& host) {
    DlopenedZlib zlib;
    const auto bytes = SpanOf(ico);
    return cICOparser().LoadStream(bytes, width, height, host, 0, bytes.size(), zlib);
}

// The width of the chosen entry, 0 for none.
int TakenFor(int width, int height, const QByteArray& ico) {
    PicturePixels image;
    return Load(ico, width, height, image) ? image.Width() : 0;
}

QByteArray ThreeSizes() {
    return Icon({{16, 16, 32, Plain(16, 1)}, {32, 32, 32, Plain(32, 2)}, {48, 48, 32, Plain(48, 3)}});
}

// Deliberate D-63.
TEST(IcoParser, WithoutADesiredSizeTheSmallestEntryIsTaken) {
    EXPECT_EQ(TakenFor(0, 0, ThreeSizes()), 16);
}

TEST(IcoParser, AnEntryOfTheDesiredSizeWinsAtOnce) {
    EXPECT_EQ(TakenFor(32, 32, ThreeSizes()), 32);
    EXPECT_EQ(TakenFor(48, 48, ThreeSizes()), 48);
}

TEST(IcoParser, AmongTheLargerOnesTheNearestIsTaken) {
    EXPECT_EQ(TakenFor(20, 20, ThreeSizes()), 32);
    EXPECT_EQ(TakenFor(33, 33, ThreeSizes()), 48);
}

TEST(IcoParser, NothingIsTakenWhenAllAreTooSmall) {
    EXPECT_EQ(TakenFor(100, 100, ThreeSizes()), 0);
}

// Deliberate D-63: 40 - 32 and twice 32 - 36 give 0, so this entry wins over one that is larger in both
// directions.
TEST(IcoParser, TooSmallInOneDirectionCountsTwiceAgainstTheOther) {
    const QByteArray ico = Icon({{48, 48, 32, Plain(48, 1)}, {40, 32, 32, Plain(7, 2)}});
    EXPECT_EQ(TakenFor(32, 36, ico), 7);
}

TEST(IcoParser, TheOnlyEntryIsTakenWhateverItsSizeAndDepth) {
    EXPECT_EQ(TakenFor(500, 500, Icon({{9, 9, 99, Plain(9, 1)}})), 9);
}

TEST(IcoParser, TheBitmapsOwnSizeCountsAndNotThatOfTheDirectory) {
    EXPECT_EQ(TakenFor(0, 0, Icon({{99, 3, 24, Plain(11, 1)}})), 11);
}

TEST(IcoParser, ADesiredSizeReachesTheParserThroughTheImageObject) {
    PictureMachine machine;
    const QByteArray ico = ThreeSizes();
    c32bppDIB image;
    ASSERT_TRUE(image.LoadPicture_Stream(machine.WithZlib(), SpanOf(ico), 32, 32));
    EXPECT_EQ(image.Width(), 32);
    EXPECT_EQ(PixelAt(image, 31, 0), 0xFF020202);
    EXPECT_EQ(image.ImageType(), kImageIcon);
    // Negative sizes count as 0.
    ASSERT_TRUE(image.LoadPicture_Stream(machine.WithZlib(), SpanOf(ico), -5, -5));
    EXPECT_EQ(image.Width(), 16);
}

TEST(IcoParser, APngEntryIsAnIconAndKeepsItsAlpha) {
    PicturePixels image;
    ASSERT_TRUE(Load(Fixture(QStringLiteral("ico/png.ico")), 0, 0, image));
    EXPECT_EQ(image.ImageType, kImageIcon);
    EXPECT_TRUE(image.alpha);
    EXPECT_EQ(image.Width(), 7);
}

TEST(IcoParser, APartOfAStreamIsRead) {
    const QByteArray ico = ThreeSizes();
    const QByteArray around = QByteArray(3, 'x') + ico;
    DlopenedZlib zlib;
    PicturePixels image;
    const auto length = static_cast<std::size_t>(ico.size());
    EXPECT_TRUE(cICOparser().LoadStream(SpanOf(around), 0, 0, image, 3, length, zlib));
    EXPECT_FALSE(cICOparser().LoadStream(SpanOf(around), 0, 0, image, 4, length, zlib));
    EXPECT_TRUE(image.IsEmpty());
}

TEST(IcoParser, EveryPrefixOfAFileFails) {
    for (const char* const name : {"ico/depth-4-of-7-columns.ico", "ico/png.ico"}) {
        const QByteArray ico = Fixture(QString::fromLatin1(name));
        PicturePixels image;
        ASSERT_TRUE(Load(ico, 0, 0, image));
        for (qsizetype length = 0; length < ico.size(); ++length) {
            EXPECT_FALSE(Load(ico.first(length), 0, 0, image)) << length;
            EXPECT_TRUE(image.IsEmpty());
        }
    }
}

} // namespace
