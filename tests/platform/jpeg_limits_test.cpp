// Tests of a JPEG's cost as its markers give it, and of what is refused for its cost.
#include "platform/jpeg_limits.h"

#include "platform/picture_limits.h"
#include "platform/pictures/picture_loader.h"

#include <QBuffer>
#include <QByteArray>
#include <QImage>
#include <QImageWriter>

#include <gtest/gtest.h>

#include <vector>

namespace {

QByteArray Bytes(std::initializer_list<int> numbers) {
    QByteArray bytes;
    for (const int number : numbers) {
        bytes.append(static_cast<char>(number));
    }
    return bytes;
}

QByteArray Segment(int code, const QByteArray& contents) {
    const auto length = static_cast<int>(contents.size()) + 2;
    return Bytes({0xFF, code, length >> 8, length & 255}) + contents;
}

// A component's number, and its sampling across and down as two hexadecimal digits.
struct Sampling {
    int id = 1;
    int factors = 0x11;
};
using Samplings = std::vector<Sampling>;

const Samplings kGrey = {{1, 0x11}};
const Samplings kColour = {{1, 0x11}, {2, 0x11}, {3, 0x11}};
const Samplings kHalved = {{1, 0x22}, {2, 0x11}, {3, 0x11}};

constexpr int kBaseline = 0xC0;
constexpr int kProgressive = 0xC2;

// The start of a file, with one code of one bit in each table: a difference of 0, and the end of a block or
// of 16,384 and more blocks.
QByteArray Start(int frame, int width, int height, const Samplings& components) {
    QByteArray contents = Bytes({8, height >> 8, height & 255, width >> 8, width & 255});
    contents += static_cast<char>(components.size());
    for (const Sampling& component : components) {
        contents += Bytes({component.id, component.factors, 0});
    }
    const QByteArray oneCode = Bytes({1}) + QByteArray(15, '\0');
    return Bytes({0xFF, 0xD8}) + Segment(0xDB, QByteArray(1, '\0') + QByteArray(64, '\1')) +
           Segment(frame, contents) + Segment(0xC4, Bytes({0}) + oneCode + Bytes({0})) +
           Segment(0xC4, Bytes({0x10}) + oneCode + Bytes({frame == kProgressive ? 0xE0 : 0}));
}

// A scan's header; `step` holds the previous bit position and the scan's own.
QByteArray Scan(const std::vector<int>& components, int first, int last, int step) {
    QByteArray contents = Bytes({static_cast<int>(components.size())});
    for (const int id : components) {
        contents += Bytes({id, 0});
    }
    return Segment(0xDA, contents + Bytes({first, last, step}));
}

QByteArray End() {
    return Bytes({0xFF, 0xD9});
}

std::span<const std::uint8_t> SpanOf(const QByteArray& bytes) {
    return {reinterpret_cast<const std::uint8_t*>(bytes.constData()), static_cast<std::size_t>(bytes.size())};
}

JpegCost Cost(const QByteArray& file) {
    return CostOfJpeg(SpanOf(file));
}

bool IsAffordable(const QByteArray& file) {
    const std::int64_t pixels = Cost(file).pixels;
    return IsJpegAffordable(SpanOf(file), pixels * 4);
}

bool Loads(const QByteArray& file) {
    PictureLoader pictures;
    return pictures.OleLoadPicture(SpanOf(file)) != nullptr;
}

TEST(JpegCost, OneScanOfAllComponentsHoldsNoCoefficients) {
    const JpegCost cost = Cost(Start(kBaseline, 33, 17, kHalved) + Scan({1, 2, 3}, 0, 63, 0) + End());
    EXPECT_EQ(cost.pixels, 33 * 17);
    EXPECT_EQ(cost.coefficientBytes, 0);
    // 3 x 2 units of six blocks.
    EXPECT_EQ(cost.visits, 1024 + 36);
}

TEST(JpegCost, SeveralScansHoldTheCoefficientsOfWholeUnits) {
    const QByteArray start = Start(kBaseline, 33, 17, kHalved);
    const JpegCost cost = Cost(start + Scan({1}, 0, 63, 0) + Scan({2, 3}, 0, 63, 0) + End());
    EXPECT_EQ(cost.coefficientBytes, 36 * 128);
    // 5 x 3 blocks of the first component, and 6 of each other one.
    EXPECT_EQ(cost.visits, 1024 + 15 + 1024 + 12);
    EXPECT_EQ(Cost(Start(kProgressive, 8, 8, kGrey) + Scan({1}, 0, 0, 0) + End()).coefficientBytes, 128);
}

TEST(JpegCost, ARefiningScanCountsItsCoefficients) {
    const QByteArray start = Start(kProgressive, 80, 80, kGrey);
    EXPECT_EQ(Cost(start + Scan({1}, 1, 63, 0x01) + End()).visits, 1024 + 100);
    EXPECT_EQ(Cost(start + Scan({1}, 1, 63, 0x10) + End()).visits, 1024 + 100 + 100 * 63 / 8);
    // A baseline scan has no bit positions.
    EXPECT_EQ(Cost(Start(kBaseline, 80, 80, kGrey) + Scan({1}, 1, 63, 0x10) + End()).visits, 1024 + 100);
}

TEST(JpegCost, CodedDataRestartsAndOtherSegmentsCostNothing) {
    const QByteArray start = Start(kProgressive, 80, 80, kGrey);
    const QByteArray coded = Bytes({1, 2, 0xFF, 0, 0xDA, 0xFF, 0xD3, 7, 0xFF, 0xFF, 0xD7, 9});
    const QByteArray comment = Segment(0xFE, Scan({1}, 0, 0, 0));
    const QByteArray file = start + comment + Scan({1}, 0, 0, 0) + coded + Bytes({0xFF, 0xFF}) +
                            Scan({1}, 1, 5, 0) + coded + End() + Scan({1}, 6, 63, 0);
    EXPECT_EQ(Cost(file).visits, 2 * (1024 + 100));
}

TEST(JpegCost, AnyPrefixIsAnswered) {
    const QByteArray file = Start(kProgressive, 80, 80, kColour) + Scan({1, 2, 3}, 0, 0, 0) + End();
    for (qsizetype length = 0; length < file.size(); ++length) {
        EXPECT_LE(Cost(file.first(length)).visits, 1024 + 300);
    }
    EXPECT_EQ(Cost(Start(kBaseline, 80, 80, {{1, 0x10}}) + Scan({1}, 0, 63, 0)).pixels, 0);
}

// --- What is refused -----------------------------------------------------------------------------

TEST(JpegLimits, ScansTimesBlocksAreBounded) {
    QByteArray file = Start(kProgressive, 2048, 2048, kGrey) + Scan({1}, 0, 0, 0);
    // 65,536 blocks.
    for (int i = 0; i < 64; ++i) {
        file += Scan({1}, 1, 63, 0);
    }
    EXPECT_TRUE(IsAffordable(file + End()));
    EXPECT_TRUE(Loads(file + End()));
    for (int i = 0; i < 440; ++i) {
        file += Scan({1}, 1, 63, 0);
    }
    EXPECT_GT(Cost(file).visits, std::int64_t{1} << 25);
    EXPECT_FALSE(IsAffordable(file + End()));
    EXPECT_FALSE(Loads(file + End()));
}

TEST(JpegLimits, ManyScansOfABlockAreBounded) {
    const QByteArray scans = Scan({1}, 0, 63, 0).repeated(40'000);
    EXPECT_FALSE(Loads(Start(kBaseline, 8, 8, kColour) + scans + End()));
}

TEST(JpegLimits, RefiningScansAreBounded) {
    QByteArray file = Start(kProgressive, 2048, 2048, kGrey) + Scan({1}, 0, 0, 0) + Scan({1}, 1, 63, 1);
    for (int i = 0; i < 100; ++i) {
        file += Scan({1}, 1, 63, 0x10);
    }
    EXPECT_FALSE(Loads(file + End()));
}

TEST(JpegLimits, LargePicturesMustBeFilledByTheirData) {
    const auto file = [](int width, int height, int bytes) {
        return Start(kBaseline, width, height, kColour) + Scan({1, 2, 3}, 0, 63, 0) +
               QByteArray(bytes, '\0') + End();
    };
    EXPECT_TRUE(IsAffordable(file(4096, 4096, 0)));
    EXPECT_FALSE(IsAffordable(file(4096, 4104, 0)));
    EXPECT_FALSE(Loads(file(4096, 4104, 0)));
    EXPECT_TRUE(IsAffordable(file(4096, 4104, 4096 * 4104 / 512)));
    EXPECT_TRUE(IsAffordable(file(8192, 8192, 8192 * 8192 / 512)));
}

TEST(JpegLimits, CoefficientsCountAsMemory) {
    const auto file = [](int size, const Samplings& components) {
        return Start(kProgressive, size, size, components) + Scan({1, 2, 3}, 0, 0, 0) +
               QByteArray(200'000, '\0') + End();
    };
    EXPECT_TRUE(IsAffordable(file(5248, kColour)));
    EXPECT_FALSE(IsAffordable(file(5264, kColour)));
    EXPECT_TRUE(IsAffordable(file(6272, kHalved)));
    EXPECT_FALSE(IsAffordable(file(6304, kHalved)));
    // It takes less when it is decoded at a fraction of its size.
    EXPECT_TRUE(IsJpegAffordable(SpanOf(file(6304, kHalved)), 1'000'000));
    EXPECT_LE(Cost(file(6272, kHalved)).coefficientBytes + std::int64_t{6272} * 6272 * 4, kMostDecodingBytes);
}

// Pictures as encoders write them, including plain areas, which have the fewest bytes.
TEST(JpegLimits, EncodedPicturesAreAffordable) {
    QImage image(5000, 4000, QImage::Format_RGB32);
    image.fill(0xFF336699);
    for (const bool isProgressive : {false, true}) {
        QByteArray file;
        QBuffer buffer(&file);
        QImageWriter writer(&buffer, "jpeg");
        writer.setQuality(1);
        writer.setOptimizedWrite(true);
        writer.setProgressiveScanWrite(isProgressive);
        ASSERT_TRUE(writer.write(image));
        EXPECT_EQ(Cost(file).pixels, 20'000'000);
        EXPECT_EQ(Cost(file).coefficientBytes > 0, isProgressive);
        EXPECT_TRUE(IsAffordable(file)) << Cost(file).visits;
        EXPECT_TRUE(Loads(file));
    }
}

} // namespace
