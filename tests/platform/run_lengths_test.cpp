// Tests of bitmaps with run-length coding, truncated at every byte: both depths give the same result, with
// only the file's colours.
#include "platform/pictures/picture_loader.h"

#include <QByteArray>

#include <gtest/gtest.h>

#include <cstdint>
#include <vector>

namespace {

constexpr int kWidth = 7;
constexpr int kHeight = 4;

using Indices = std::vector<std::uint8_t>;

// A part of the data that is complete or missing, and what it draws: `indices` from a position on, the lowest
// row first.
struct Token {
    QByteArray eight;
    QByteArray four;
    int x = 0;
    int row = 0;
    Indices indices;
    // The last byte is padding; without it all pixels are still there.
    bool isPadded8 = false;
    bool isPadded4 = false;
};

QByteArray Bytes(std::initializer_list<int> numbers) {
    QByteArray bytes;
    for (const int number : numbers) {
        bytes.append(static_cast<char>(number));
    }
    return bytes;
}

const std::vector<Token>& Tokens() {
    static const std::vector<Token> tokens = {
        {Bytes({3, 5}), Bytes({3, 0x55}), 0, 0, {5, 5, 5}},
        {Bytes({0, 4, 6, 7, 8, 9}), Bytes({0, 4, 0x67, 0x89}), 3, 0, {6, 7, 8, 9}},
        {Bytes({0, 0}), Bytes({0, 0}), 0, 1, {}},
        {Bytes({0, 5, 0, 1, 2, 3, 4, 0}),
         Bytes({0, 5, 0x01, 0x23, 0x40, 0}),
         0,
         1,
         {0, 1, 2, 3, 4},
         true,
         true},
        // Passes the right edge.
        {Bytes({9, 4}), Bytes({9, 0x44}), 5, 1, {4, 4}},
        {Bytes({0, 0}), Bytes({0, 0}), 0, 2, {}},
        {Bytes({1, 8}), Bytes({1, 0x8F}), 0, 2, {8}},
        {Bytes({0, 2, 2, 1}), Bytes({0, 2, 2, 1}), 3, 3, {}},
        {Bytes({0, 3, 1, 2, 3, 0}), Bytes({0, 3, 0x12, 0x30}), 3, 3, {1, 2, 3}, true, false},
        {Bytes({0, 1}), Bytes({0, 1}), 6, 3, {}},
    };
    return tokens;
}

void Put(QByteArray& bytes, std::uint32_t value, int count) {
    for (; count > 0; --count, value >>= 8) {
        bytes.append(static_cast<char>(value & 255U));
    }
}

// A bitmap of sixteen colours. Colour i is (i, 100 + i, 200 + i) in red, green and blue.
QByteArray BitmapFile(int depth, int width, int height, const QByteArray& data) {
    QByteArray file = "BM";
    Put(file, static_cast<std::uint32_t>(14 + 40 + 64 + data.size()), 4);
    Put(file, 0, 4);
    Put(file, 14 + 40 + 64, 4);
    for (const auto& [value, count] :
         {std::pair(40, 4), std::pair(width, 4), std::pair(height, 4), std::pair(1, 2), std::pair(depth, 2),
          std::pair(depth == 8 ? 1 : 2, 4), std::pair(0, 12), std::pair(16, 4), std::pair(0, 4)}) {
        Put(file, static_cast<std::uint32_t>(value), count);
    }
    for (int i = 0; i < 16; ++i) {
        file += Bytes({200 + i, 100 + i, i, 0});
    }
    return file + data;
}

// The red of every pixel, which is its index, highest row first; empty when the picture is refused.
Indices Decode(const QByteArray& file) {
    PictureLoader pictures;
    const auto picture = pictures.OleLoadPicture(
        {reinterpret_cast<const std::uint8_t*>(file.constData()), static_cast<std::size_t>(file.size())});
    Indices reds;
    for (int y = 0; picture && y < picture->height; ++y) {
        for (const std::uint8_t index : picture->Row(y)) {
            reds.push_back(picture->palette.at(std::size_t{index} * 3));
        }
    }
    return reds;
}

void Draw(const Token& token, Indices& indices) {
    std::copy(token.indices.begin(), token.indices.end(),
              indices.begin() + (kHeight - 1 - token.row) * kWidth + token.x);
}

TEST(RunLengths, CutAtEveryByteBothDepthsShowWholePartsAndRefuseHalfOnes) {
    for (const auto& [depth, part] : {std::pair(8, &Token::eight), std::pair(4, &Token::four)}) {
        QByteArray data;
        Indices drawn(kWidth * kHeight, 0);
        for (const Token& token : Tokens()) {
            const QByteArray& bytes = token.*part;
            const bool isPadded = depth == 8 ? token.isPadded8 : token.isPadded4;
            EXPECT_EQ(Decode(BitmapFile(depth, kWidth, kHeight, data)), data.isEmpty() ? Indices() : drawn)
                << depth << ' ' << data.size();
            for (qsizetype cut = 1; cut < bytes.size(); ++cut) {
                const bool isPaddingMissing = isPadded && cut == bytes.size() - 1;
                Indices expected;
                if (isPaddingMissing) {
                    expected = drawn;
                    Draw(token, expected);
                }
                const QByteArray file = BitmapFile(depth, kWidth, kHeight, data + bytes.first(cut));
                EXPECT_EQ(Decode(file), expected) << depth << ' ' << data.size() + cut;
                EXPECT_EQ(Decode(file), Decode(file));
            }
            data += bytes;
            Draw(token, drawn);
        }
        EXPECT_EQ(Decode(BitmapFile(depth, kWidth, kHeight, data)), drawn);
        // Data after the end of the picture is ignored.
        EXPECT_EQ(Decode(BitmapFile(depth, kWidth, kHeight, data + "\5")), drawn);
    }
}

TEST(RunLengths, RunsOfFourBitsAlternateBetweenTwoColours) {
    EXPECT_EQ(Decode(BitmapFile(4, 5, 1, Bytes({5, 0x12, 0, 1}))), (Indices{1, 2, 1, 2, 1}));
}

TEST(RunLengths, TheHighestRowMayComeFirst) {
    EXPECT_EQ(Decode(BitmapFile(8, 1, -2, Bytes({1, 3, 0, 0, 1, 4, 0, 1}))), (Indices{3, 4}));
    EXPECT_EQ(Decode(BitmapFile(8, 1, 2, Bytes({1, 3, 0, 0, 1, 4, 0, 1}))), (Indices{4, 3}));
}

TEST(RunLengths, AJumpEndsAtTheEdges) {
    EXPECT_EQ(Decode(BitmapFile(8, 3, 2, Bytes({0, 2, 255, 255, 1, 7, 0, 1}))), (Indices{0, 0, 7, 0, 0, 0}));
}

// The file has 16 colours; an index past them is the last one.
TEST(RunLengths, AnIndexBehindThePaletteIsTheLastColour) {
    PictureLoader pictures;
    const QByteArray file = BitmapFile(8, 2, 1, Bytes({1, 2, 1, 200, 0, 1}));
    const auto picture = pictures.OleLoadPicture(
        {reinterpret_cast<const std::uint8_t*>(file.constData()), static_cast<std::size_t>(file.size())});
    ASSERT_TRUE(picture);
    ASSERT_EQ(picture->palette.size(), 256U * 3);
    EXPECT_EQ(picture->palette[2 * 3], 2);
    EXPECT_EQ(picture->palette[200 * 3], 15);
    EXPECT_EQ(picture->palette[200 * 3 + 1], 115);
    EXPECT_EQ(picture->palette[200 * 3 + 2], 215);
}

TEST(RunLengths, APaletteThatIsCutOrTooLongIsRefused) {
    const QByteArray file = BitmapFile(8, 2, 1, Bytes({2, 2, 0, 1}));
    ASSERT_FALSE(Decode(file).empty());
    EXPECT_TRUE(Decode(file.first(14 + 40 + 63)).empty());
    QByteArray long257 = BitmapFile(8, 2, 1, QByteArray(2000, '\0'));
    long257[46] = 1;
    long257[47] = 1;
    EXPECT_TRUE(Decode(long257).empty());
}

// Up to 4096 x 4096 pixels may be missing. With more pixels there must be about one run of 255 for each 255
// pixels.
TEST(RunLengths, LargePicturesMustBeFilledByTheirData) {
    const QByteArray end = Bytes({0, 1});
    EXPECT_EQ(Decode(BitmapFile(8, 4096, 4096, end)).size(), std::size_t{1} << 24);
    EXPECT_TRUE(Decode(BitmapFile(8, 4096, 4097, end)).empty());
    EXPECT_TRUE(Decode(BitmapFile(4, 4096, 4097, end)).empty());
    // 5120 x 3300 in one colour.
    QByteArray row;
    for (int i = 0; i < 20; ++i) {
        row += Bytes({255, 9});
    }
    row += Bytes({20, 9, 0, 0});
    EXPECT_EQ(Decode(BitmapFile(8, 5120, 3300, row.repeated(3300))), Indices(std::size_t{5120} * 3300, 9));
}

} // namespace
