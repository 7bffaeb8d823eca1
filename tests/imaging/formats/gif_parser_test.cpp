// The GIF parser: the search for the first frame, the input of the system's loader, and the colours of
// indices.
#include "imaging/formats/gif_parser.h"

#include "imaging/picture_test_support.h"
#include "imaging/recording_pictures.h"

#include <gtest/gtest.h>

namespace {

const QString kAnimation = QStringLiteral("gif/an-animation-shows-its-first-frame.gif");

bool Load(const QByteArray& gif, PicturePixels& host, SystemPictures& pictures) {
    const auto bytes = SpanOf(gif);
    return cGIFparser().LoadStream(bytes, host, 0, bytes.size(), pictures);
}

bool Load(const QByteArray& gif, PicturePixels& host) {
    PictureLoader pictures;
    return Load(gif, host, pictures);
}

// A screen with the four colours 0x01..0x0C, followed by `parts`.
QByteArray Gif(const QByteArray& parts) {
    return QByteArray::fromHex("474946383961 0200 0100 81 00 00 010203 040506 070809 0A0B0C") + parts;
}

const QByteArray kControl = QByteArray::fromHex("21F904 01 0000 02 00");
const QByteArray kFrame = QByteArray::fromHex("2C 0000 0000 0200 0100 00 02 02 4C01 00");

TEST(GifParser, AnAnimatedGifShowsItsFirstFrameOnly) {
    const QByteArray animation = Fixture(kAnimation);
    PicturePixels whole;
    PicturePixels first;
    ASSERT_TRUE(Load(animation, whole));
    // The second frame begins after the second control extension.
    const qsizetype second = animation.lastIndexOf(QByteArray::fromHex("21F904"));
    ASSERT_GT(second, 100);
    ASSERT_TRUE(Load(animation.first(second), first));
    EXPECT_EQ(PixelsOf(whole), PixelsOf(first));
    EXPECT_FALSE(whole.alpha);
}

TEST(GifParser, ABadBlockBeforeTheFrameLeavesTheRawBytesToTheSystem) {
    const QByteArray bad = Fixture(QStringLiteral("gif/bad-block-before-the-frame.gif"));
    RecordingPictures pictures;
    PicturePixels pixels;
    EXPECT_FALSE(Load(bad, pixels, pictures));
    EXPECT_TRUE(pictures.asked.empty());

    pictures.answer =
        std::make_unique<SystemPicture>(MakeSystemPicture(1, 1, 32, std::vector<std::uint8_t>{1, 2, 3, 0}));
    PictureMachine machine;
    const PicturePorts ports{machine.files, machine.zlib, machine.pump, pictures};
    c32bppDIB image;
    EXPECT_TRUE(image.LoadPicture_Stream(ports, SpanOf(bad)));
    ASSERT_EQ(pictures.asked.size(), 1U);
    EXPECT_TRUE(std::ranges::equal(pictures.asked[0], SpanOf(bad)));
    EXPECT_EQ(image.ImageType(), kImageBitmap);
    EXPECT_EQ(PixelAt(image, 0, 0), 0xFF030201);
    EXPECT_FALSE(image.alpha());
}

TEST(GifParser, TheSystemIsGivenTheFirstFrameAlone) {
    const QByteArray comment = QByteArray::fromHex("21FE 0361626300");
    RecordingPictures pictures;
    PicturePixels image;
    EXPECT_FALSE(Load(Gif(comment + kControl + comment + kFrame + comment + kFrame + ';'), image, pictures));
    ASSERT_EQ(pictures.asked.size(), 1U);
    EXPECT_TRUE(std::ranges::equal(pictures.asked[0], SpanOf(Gif(kControl + kFrame + ';'))));
    EXPECT_TRUE(image.IsEmpty());
}

TEST(GifParser, IndicesTakeTheirColoursAndTheTransparentOneStaysEmpty) {
    RecordingPictures pictures;
    pictures.answer = std::make_unique<SystemPicture>(MakeSystemPicture(2, 2, 8, {0, 1, 2, 3}));
    PicturePixels image;
    ASSERT_TRUE(Load(Gif(kControl + kFrame), image, pictures));
    EXPECT_EQ(PixelAt(image, 0, 0), 0xFF010203);
    EXPECT_EQ(PixelAt(image, 1, 0), 0xFF040506);
    EXPECT_EQ(PixelAt(image, 0, 1), 0U);
    EXPECT_EQ(PixelAt(image, 1, 1), 0xFF0A0B0C);
    EXPECT_TRUE(image.alpha);
    EXPECT_EQ(image.ImageType, kImageGif);
}

TEST(GifParser, APictureOfTheSystemThatIsNotOneOfIndicesIsRefused) {
    RecordingPictures pictures;
    pictures.answer = std::make_unique<SystemPicture>(MakeSystemPicture(1, 1, 32, {0, 0, 0, 0}));
    PicturePixels image;
    EXPECT_FALSE(Load(Gif(kFrame), image, pictures));
    EXPECT_TRUE(image.IsEmpty());
}

TEST(GifParser, AnIndexWithoutAColourLeavesTheHostEmpty) {
    RecordingPictures pictures;
    pictures.answer = std::make_unique<SystemPicture>(MakeSystemPicture(2, 1, 8, {0, 4}));
    PicturePixels image;
    EXPECT_FALSE(Load(Gif(kFrame), image, pictures));
    EXPECT_TRUE(image.IsEmpty());
}

// Deliberate D-61.
TEST(GifParser, AControlCountsEightBytesAndIsNotUndoneByALaterOne) {
    RecordingPictures pictures;
    PicturePixels image;
    const QByteArray ofOneByte = QByteArray::fromHex("21F901 01 0000 02 00");
    const QByteArray withoutColour = QByteArray::fromHex("21F904 00 0000 03 00");
    pictures.answer = std::make_unique<SystemPicture>(MakeSystemPicture(1, 1, 8, {2}));
    ASSERT_TRUE(Load(Gif(ofOneByte + withoutColour + kFrame), image, pictures));
    EXPECT_EQ(PixelAt(image, 0, 0), 0U);
    EXPECT_TRUE(image.alpha);
}

TEST(GifParser, ImageDataOfOneByteAndAnEndAreTooFew) {
    RecordingPictures pictures;
    PicturePixels image;
    EXPECT_FALSE(Load(Gif(QByteArray::fromHex("2C 0000 0000 0200 0100 00 02 00")), image, pictures));
    EXPECT_TRUE(pictures.asked.empty());
    EXPECT_FALSE(Load(Gif(QByteArray::fromHex("2C 0000 0000 0200 0100 00 02 01 44 00")), image, pictures));
    EXPECT_EQ(pictures.asked.size(), 1U);
}

TEST(GifParser, APartOfAStreamIsRead) {
    const QByteArray animation = Fixture(kAnimation);
    const QByteArray around = QByteArray(5, 'x') + animation + QByteArray(9, 'y');
    PictureLoader pictures;
    PicturePixels image;
    const auto length = static_cast<std::size_t>(animation.size());
    EXPECT_TRUE(cGIFparser().LoadStream(SpanOf(around), image, 5, length, pictures));
    EXPECT_FALSE(cGIFparser().LoadStream(SpanOf(around), image, 6, length + 9, pictures));
    EXPECT_TRUE(image.IsEmpty());
    EXPECT_FALSE(cGIFparser().LoadStream(SpanOf(around), image, length + 99, 0, pictures));
}

TEST(GifParser, EveryPrefixOfAFileIsAnswered) {
    const QByteArray animation = Fixture(kAnimation);
    int read = 0;
    for (qsizetype length = 0; length <= animation.size(); ++length) {
        PicturePixels image;
        read += Load(animation.first(length), image) ? 1 : 0;
        EXPECT_EQ(image.IsEmpty(), image.Width() == 0);
    }
    EXPECT_GT(read, 0);
    EXPECT_LT(read, animation.size() / 2);
}

} // namespace
