// The rules of the PNG decoder, each with the fixture that shows it.
#include "imaging/png/parser.h"

#include "imaging/picture_test_support.h"
#include "imaging/png/passes.h"

#include <gtest/gtest.h>

#include <QtEndian>

#include <algorithm>
#include <map>
#include <string>
#include <vector>

#include <sys/mman.h>
#include <unistd.h>

namespace {

// The library, counting its calls.
class CountingZlib : public DlopenedZlib {
public:
    bool Has(const char* routine) override {
        ++questions[routine];
        return DlopenedZlib::Has(routine);
    }
    int Uncompress(std::span<std::uint8_t> target, std::size_t& written,
                   std::span<const std::uint8_t> source) override {
        ++inflations;
        return refuses ? -5 : DlopenedZlib::Uncompress(target, written, source);
    }

    std::map<std::string, int> questions;
    int inflations = 0;
    bool refuses = false;
};

QByteArray Png(const char* name) {
    return Fixture(QStringLiteral("png/%1.png").arg(QString::fromLatin1(name)));
}

bool Load(const QByteArray& bytes, PicturePixels& image, ZlibLibrary& zlib) {
    return cPNGparser().LoadStream(SpanOf(bytes), image, 0, static_cast<std::size_t>(bytes.size()), zlib);
}

// The pixels of a fixture that loads on every machine.
PicturePixels Loaded(const char* name) {
    NoZlib zlib;
    PicturePixels image;
    EXPECT_TRUE(Load(Png(name), image, zlib)) << name;
    return image;
}

bool Loads(const char* name) {
    DlopenedZlib zlib;
    PicturePixels image;
    const bool isLoaded = Load(Png(name), image, zlib);
    EXPECT_EQ(image.IsEmpty(), !isLoaded);
    return isLoaded;
}

void Append(QByteArray& file, const char* type, const QByteArray& data) {
    DlopenedZlib zlib;
    const QByteArray typeAndData = QByteArray(type) + data;
    char number[4];
    qToBigEndian(static_cast<quint32>(data.size()), number);
    file += QByteArray(number, 4) + typeAndData;
    qToBigEndian(zlib.Crc32(0, SpanOf(typeAndData)), number);
    file += QByteArray(number, 4);
}

// A PNG of any declared size around a zlib stream.
QByteArray PngOf(int width, int height, int depth, int type, const QByteArray& stream) {
    QByteArray header(13, '\0');
    qToBigEndian(width, header.data());
    qToBigEndian(height, header.data() + 4);
    header[8] = static_cast<char>(depth);
    header[9] = static_cast<char>(type);
    QByteArray file("\x89PNG\r\n\x1a\n");
    Append(file, "IHDR", header);
    Append(file, "IDAT", stream);
    Append(file, "IEND", {});
    return file;
}

// Deliberate D-39.
TEST(PngParser, ABadDataChecksumFailsWithTheLibraryAndIsNotTestedWithoutIt) {
    DlopenedZlib zlib;
    NoZlib noZlib;
    PicturePixels image;
    EXPECT_FALSE(Load(Png("bad-checksum-idat"), image, zlib));
    EXPECT_TRUE(image.IsEmpty());
    EXPECT_TRUE(Load(Png("bad-checksum-idat"), image, noZlib));
    EXPECT_EQ(image.Width(), 9);
}

TEST(PngParser, WithoutTheLibraryTheOwnInflateGivesTheSamePixels) {
    DlopenedZlib zlib;
    NoZlib noZlib;
    PicturePixels with;
    PicturePixels without;
    ASSERT_TRUE(Load(Png("colour-alpha-8-plain-mixed"), with, zlib));
    ASSERT_TRUE(Load(Png("colour-alpha-8-plain-mixed"), without, noZlib));
    EXPECT_EQ(PixelsOf(with), PixelsOf(without));
}

TEST(PngParser, WhatTheLibraryRefusesIsInflatedAllTheSame) {
    CountingZlib zlib;
    zlib.refuses = true;
    PicturePixels image;
    EXPECT_TRUE(Load(Png("colour-8-plain-mixed"), image, zlib));
    EXPECT_EQ(Sha256Of(image), Sha256Of(Loaded("colour-8-plain-mixed")));
}

// A library that reads data that nothing else can read: a grey picture whose rows get lighter one by one.
class CleverZlib : public DlopenedZlib {
public:
    int Uncompress(std::span<std::uint8_t> target, std::size_t& written,
                   std::span<const std::uint8_t> /*source*/) override {
        for (std::size_t i = 0; i < target.size(); ++i) {
            target[i] = static_cast<std::uint8_t>(i % 3 == 0 ? 0 : i / 3);
        }
        written = target.size();
        return 0;
    }
};

// Valid stored rows, followed by a block of an unknown type.
TEST(PngParser, TheLibrarysRowsBeginAnewBehindThoseThatTheOwnInflateMade) {
    const QByteArray twoRows("\0\xAA\xAA\0\xBB\xBB", 6);
    const QByteArray stream =
        QByteArray("\x78\x01\0\x06\0\xF9\xFF", 7) + twoRows + QByteArray("\x07\0\0\0", 4);
    NoZlib noZlib;
    CleverZlib zlib;
    PicturePixels image;
    EXPECT_FALSE(Load(PngOf(2, 4, 8, 0, stream), image, noZlib));
    ASSERT_TRUE(Load(PngOf(2, 4, 8, 0, stream), image, zlib));
    for (int y = 0; y < 4; ++y) {
        EXPECT_EQ(PixelAt(image, 1, y), qRgb(y, y, y)) << y;
    }
}

// A library that inflates everything to zeros.
class ZeroZlib : public CountingZlib {
public:
    int Uncompress(std::span<std::uint8_t> target, std::size_t& written,
                   std::span<const std::uint8_t> /*source*/) override {
        std::fill(target.begin(), target.end(), std::uint8_t{0});
        written = target.size();
        return 0;
    }
};

// The own inflate draws many visible rows and then fails at a block of an unknown type.
TEST(PngParser, ClearRowsOfTheLibraryReplaceVisibleOnes) {
    constexpr int kRowsOfBlock = 13'000;
    constexpr int kBlocks = 8;
    const QByteArray block =
        QByteArray("\0\xE8\xFD\x17\x02", 5) + QByteArray("\0\xAA\xAA\xAA\xAA", 5).repeated(kRowsOfBlock);
    const QByteArray stream =
        QByteArray("\x78\x01", 2) + block.repeated(kBlocks) + QByteArray("\x07\0\0\0", 4);
    ZeroZlib zlib;
    PicturePixels image;
    ASSERT_TRUE(Load(PngOf(1, kBlocks * kRowsOfBlock + 1, 8, kPngColourAlpha, stream), image, zlib));
    EXPECT_EQ(PixelAt(image, 0, 0), 0U);
}

// The number of memory pages of the pixels that are in use.
int PagesInUse(PicturePixels& image) {
    const auto page = static_cast<std::size_t>(::sysconf(_SC_PAGESIZE));
    const std::span<std::uint8_t> first = image.Line(0);
    std::vector<unsigned char> states(image.ByteCount() / page);
    EXPECT_EQ(::mincore(first.data(), states.size() * page, states.data()), 0);
    return static_cast<int>(
        std::count_if(states.begin(), states.end(), [](auto state) { return state & 1; }));
}

// The last of 2048 rows has a visible pixel. Written whole, the picture takes 4096 pages of 4 KB.
TEST(PngParser, ClearRowsTakeNoMemory) {
    constexpr int kSide = 2048;
    QByteArray data((1 + 4 * kSide) * kSide, '\0');
    data.back() = '\xFF';
    NoZlib zlib;
    PicturePixels image;
    ASSERT_TRUE(Load(PngOf(kSide, kSide, 8, kPngColourAlpha, qCompress(data).mid(4)), image, zlib));
    EXPECT_LE(PagesInUse(image), 1024);
    EXPECT_EQ(PixelAt(image, kSide - 1, kSide - 1), qRgba(0, 0, 0, 255));
    EXPECT_EQ(PixelAt(image, kSide - 1, kSide - 2), 0U);
}

TEST(PngParser, WhatTheOwnInflateRefusesGoesToTheLibrary) {
    CountingZlib zlib;
    PicturePixels image;
    EXPECT_FALSE(Load(Png("data-block-type-3"), image, zlib));
    EXPECT_EQ(zlib.inflations, 1);
}

TEST(PngParser, AsksForEachRoutineOnceALoad) {
    CountingZlib zlib;
    PicturePixels image;
    EXPECT_TRUE(Load(Png("data-in-many-chunks"), image, zlib));
    EXPECT_EQ(zlib.questions, (std::map<std::string, int>{{"crc32", 1}}));
    zlib.questions.clear();
    EXPECT_FALSE(Load(Png("data-block-type-3"), image, zlib));
    EXPECT_EQ(zlib.questions, (std::map<std::string, int>{{"crc32", 1}, {"uncompress", 1}}));
}

TEST(PngParser, AChunkPastTheEndOfTheFileIsAnError) {
    EXPECT_FALSE(Loads("chunk-past-the-end"));
    EXPECT_FALSE(Loads("chunk-of-4-gigabytes"));
    EXPECT_FALSE(Loads("chunk-that-passes-the-end-by-its-checksum"));
}

// Deliberate D-38.
TEST(PngParser, AFileWithoutItsEndIsAnError) {
    EXPECT_FALSE(Loads("no-end"));
}

// Deliberate D-40.
TEST(PngParser, GammaChangesNothing) {
    EXPECT_EQ(Sha256Of(Loaded("gamma-is-not-applied")), Sha256Of(Loaded("colour-8-plain-0")));
}

TEST(PngParser, APaletteOf100BytesIsAnErrorExceptInGrey) {
    EXPECT_FALSE(Loads("palette-of-100-bytes"));
    EXPECT_TRUE(Loads("palette-of-any-length-in-a-grey-picture"));
}

TEST(PngParser, EntriesBehindTheTransparencyOfAPaletteAreOpaque) {
    const PicturePixels opaque = Loaded("palette-8-plain-0");
    PicturePixels image = Loaded("palette-4-plain-0-trns-three");
    EXPECT_TRUE(image.alpha);
    EXPECT_FALSE(opaque.alpha);
    int opaquePixels = 0;
    int clearPixels = 0;
    for (int y = 0; y < image.Height(); ++y) {
        for (int x = 0; x < image.Width(); ++x) {
            opaquePixels += qAlpha(PixelAt(image, x, y)) == 255;
            clearPixels += PixelAt(image, x, y) == 0;
        }
    }
    // Entry 0 is transparent, entry 1 half transparent, entry 2 and all entries after the third opaque.
    EXPECT_GT(opaquePixels, 40);
    EXPECT_GT(clearPixels, 0);
}

// Deliberate D-45.
TEST(PngParser, AOneBitPaletteWithoutAPaletteIsBlackAndWhite) {
    PicturePixels image = Loaded("palette-missing-1");
    std::map<QRgb, int> colours;
    for (int y = 0; y < image.Height(); ++y) {
        for (int x = 0; x < image.Width(); ++x) {
            ++colours[PixelAt(image, x, y)];
        }
    }
    EXPECT_EQ(colours.size(), 2U);
    EXPECT_GT(colours[0xFF000000], 0);
    EXPECT_GT(colours[0xFFFFFFFF], 0);
}

TEST(PngParser, AnInterlacedPictureOfWidthOneSkipsThePassesWithoutColumns) {
    PicturePixels image = Loaded("size-1x8-colour-8-adam7");
    EXPECT_EQ(image.Width(), 1);
    EXPECT_EQ(image.Height(), 8);
    EXPECT_EQ(Sha256Of(image), Sha256Of(Loaded("size-1x8-colour-8-plain")));
}

TEST(PngParser, FilterFiveFails) {
    EXPECT_FALSE(Loads("filter-5"));
    EXPECT_FALSE(Loads("filter-5-in-the-last-row"));
    EXPECT_FALSE(Loads("filter-5-in-the-second-pass"));
}

// Deliberate D-44.
TEST(PngParser, SamplesOf16BitsAreCutToTheirHighBytes) {
    // One pixel: 0x12FF, 0x80FF, 0xFFFF.
    const QByteArray raw("\0\x12\xFF\x80\xFF\xFF\xFF", 7);
    NoZlib zlib;
    PicturePixels image;
    ASSERT_TRUE(Load(PngOf(1, 1, 16, kPngColour, qCompress(raw).mid(4)), image, zlib));
    EXPECT_EQ(PixelAt(image, 0, 0), qRgba(0x12, 0x80, 0xFF, 0xFF));
}

// Deliberate D-43.
TEST(PngParser, ColourIsMultipliedByAlphaAndCut) {
    const QByteArray raw("\0\xFF\x64\x01\x7F", 5);
    NoZlib zlib;
    PicturePixels image;
    ASSERT_TRUE(Load(PngOf(1, 1, 8, kPngColourAlpha, qCompress(raw).mid(4)), image, zlib));
    EXPECT_EQ(PixelAt(image, 0, 0), qRgba(127, 49, 0, 127)); // 100 * 127 / 255 is 49.8
}

// Deliberate D-42.
TEST(PngParser, ColourPicturesCountAsTransparentWhateverTheyHold) {
    EXPECT_TRUE(Loaded("colour-8-plain-0").alpha);
    EXPECT_TRUE(Loaded("colour-alpha-8-plain-0").alpha);
    EXPECT_FALSE(Loaded("grey-8-plain-0").alpha);
    EXPECT_TRUE(Loaded("grey-8-plain-0-trns-hit").alpha);
}

// Deliberate D-37.
TEST(PngParser, AForbiddenPairOfDepthAndTypeDrawsNothing) {
    PicturePixels image = Loaded("forbidden-colour-4-plain-draws-nothing");
    EXPECT_EQ(PixelsOf(image), std::vector<std::uint8_t>(252, 0));
    EXPECT_TRUE(image.alpha);
}

// Deliberate D-46.
TEST(PngParser, TheTransparentColourOf16BitsIsComparedTwiceByHighBytes) {
    PicturePixels image = Loaded("trns-colour-16-takes-near-colours-along");
    EXPECT_EQ(PixelAt(image, 0, 0), 0U);
    EXPECT_EQ(PixelAt(image, 1, 0), 0U);
    EXPECT_NE(PixelAt(image, 2, 0), 0U);
}

TEST(PngParser, ReadsAPartOfALongerStream) {
    const QByteArray png = Png("colour-8-plain-0");
    const QByteArray around = QByteArray(5, 'x') + png + QByteArray(9, 'y');
    DlopenedZlib zlib;
    PicturePixels image;
    EXPECT_TRUE(
        cPNGparser().LoadStream(SpanOf(around), image, 5, static_cast<std::size_t>(png.size()), zlib));
    EXPECT_FALSE(
        cPNGparser().LoadStream(SpanOf(around), image, 4, static_cast<std::size_t>(png.size()), zlib));
    EXPECT_TRUE(image.IsEmpty());
    EXPECT_FALSE(cPNGparser().LoadStream(SpanOf(around), image, 5, SIZE_MAX, zlib));
    EXPECT_FALSE(cPNGparser().LoadStream(SpanOf(around), image, SIZE_MAX, 1, zlib));
}

TEST(PngParser, FailsWhereverTheFileIsCut) {
    DlopenedZlib zlib;
    NoZlib noZlib;
    PicturePixels image;
    const QByteArray png = Png("palette-4-adam7-mixed-trns-three");
    for (qsizetype size = 0; size < png.size(); ++size) {
        EXPECT_FALSE(Load(png.left(size), image, zlib)) << size;
        EXPECT_FALSE(Load(png.left(size), image, noZlib)) << size;
        EXPECT_TRUE(image.IsEmpty());
    }
}

TEST(PngParser, AHeaderThatLiesAboutItsSizeFailsBeforeMemoryIsUsed) {
    NoZlib zlib;
    PicturePixels image;
    // The data end at once.
    EXPECT_FALSE(Load(PngOf(100'000, 160, 8, kPngColourAlpha, QByteArray("\x78\x9c\x63", 3)), image, zlib));
    EXPECT_FALSE(Load(PngOf(100'000, 160, 16, kPngColour, QByteArray("\x78\x9c\x63", 3)), image, zlib));
}

TEST(PngParser, APictureOfMoreThanOneGigabyteFails) {
    NoZlib zlib;
    PicturePixels image;
    const QByteArray empty("\x78\x9c\x03\0\0\0\0\x01", 8);
    EXPECT_FALSE(Load(PngOf(16'384, 16'385, 1, kPngGrey, empty), image, zlib));
    EXPECT_FALSE(Load(PngOf(0x7FFFFFFF, 0x7FFFFFFF, 8, kPngColourAlpha, empty), image, zlib));
    EXPECT_TRUE(Load(PngOf(1000, 10, 1, kPngGrey, empty), image, zlib));
}

// Deliberate D-41: up to 4096 x 4096 pixels, data may be missing.
TEST(PngParser, OnlyAPictureOfModerateSizeMayHaveTooFewData) {
    NoZlib zlib;
    PicturePixels image;
    const QByteArray empty("\x78\x9c\x03\0\0\0\0\x01", 8);
    EXPECT_TRUE(Load(PngOf(4096, 4096, 1, kPngGrey, empty), image, zlib));
    EXPECT_EQ(image.Height(), 4096);
    EXPECT_FALSE(Load(PngOf(4096, 4097, 1, kPngGrey, empty), image, zlib));
    EXPECT_TRUE(image.IsEmpty());
    EXPECT_FALSE(Load(PngOf(4096, 4097, 8, kPngColour, empty), image, zlib));
}

// The best that deflate can do: 258 bytes from two bits.
TEST(PngParser, ALargePictureInOneColourIsShown) {
    NoZlib zlib;
    PicturePixels image;
    const QByteArray rows = qCompress(QByteArray(4097 * (4096 / 8 + 1), '\0'), 9).sliced(4);
    EXPECT_TRUE(Load(PngOf(4096, 4097, 1, kPngGrey, rows), image, zlib));
    EXPECT_EQ(image.Height(), 4097);
}

TEST(PngLimits, CountPixelsRowsAndWhatTheDataCanFill) {
    const auto isAffordable = [](const PngHeader& header, std::size_t compressed) {
        return IsPngAffordable(header, PngInflatedSize(header).value_or(0), compressed);
    };
    // An 8K screen, an album cover and the largest size, each in one colour.
    EXPECT_TRUE(isAffordable({7680, 4320, 8, kPngColourAlpha, 0}, 7680 * 4320 * 4 / 1000));
    EXPECT_TRUE(isAffordable({6000, 6000, 8, kPngColour, 0}, 6000 * 6000 * 3 / 1000));
    EXPECT_TRUE(isAffordable({8192, 8192, 16, kPngColourAlpha, 1}, 8192 * 8192 * 8 / 1000));
    EXPECT_FALSE(isAffordable({8192, 8193, 1, kPngGrey, 0}, 1U << 20));
    // Two rows of 8 bytes per pixel are in memory.
    EXPECT_TRUE(isAffordable({(1 << 19) - 1, 128, 16, kPngColourAlpha, 0}, 1U << 20));
    EXPECT_FALSE(isAffordable({1 << 20, 64, 16, kPngColourAlpha, 0}, 1U << 20));
    EXPECT_FALSE(isAffordable({7680, 4320, 8, kPngColour, 0}, 7680 * 4320 * 3 / 1040));
}

// Counts its calls and refuses all data.
struct RefusingZlib : ZlibLibrary {
    bool Has(const char* routine) override { return std::string(routine) == "uncompress"; }
    int Uncompress(std::span<std::uint8_t> /*target*/, std::size_t& /*written*/,
                   std::span<const std::uint8_t> /*source*/) override {
        ++calls;
        return -3;
    }
    std::uint32_t Crc32(std::uint32_t start, std::span<const std::uint8_t> /*bytes*/) override {
        return start;
    }
    int calls = 0;
};

// The library inflates in one piece: 8 bytes per pixel in addition to the 4 of the picture.
TEST(PngLimits, TheLibraryIsNotCalledWhereItsDataDoNotFitBesideThePixels) {
    PicturePixels image;
    const QByteArray damaged(400'000, '\x7');
    for (const auto& [width, calls] : {std::pair(4800, 1), std::pair(4900, 0)}) {
        RefusingZlib zlib;
        EXPECT_FALSE(Load(PngOf(width, 4800, 16, kPngColourAlpha, damaged), image, zlib));
        EXPECT_EQ(zlib.calls, calls) << width;
    }
}

} // namespace
