// Inflate: every kind of block, every kind of damage, and the ends of both ranges.
#include "imaging/png/inflate.h"

#include "imaging/png/huffman_code.h"

#include "imaging/picture_test_support.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using Bytes = std::vector<std::uint8_t>;

// Writes bits as RFC 1951 packs them: numbers with the lowest bit first, codes with the highest bit first.
class BitWriter {
public:
    BitWriter& Number(unsigned value, int bits) {
        for (int i = 0; i < bits; ++i) {
            Bit(value >> i & 1U);
        }
        return *this;
    }
    BitWriter& Code(unsigned value, int bits) {
        for (int i = bits - 1; i >= 0; --i) {
            Bit(value >> i & 1U);
        }
        return *this;
    }
    // A literal of the fixed code, below 144.
    BitWriter& Literal(unsigned value) { return Code(0x30 + value, 8); }
    // Leaves the rest of the byte empty.
    BitWriter& ToByte() {
        while (used_ % 8 != 0) {
            Bit(0);
        }
        return *this;
    }
    Bytes Stream() const { return bytes_; }

private:
    void Bit(unsigned bit) {
        if (used_ % 8 == 0) {
            bytes_.push_back(0);
        }
        bytes_.back() = static_cast<std::uint8_t>(bytes_.back() | bit << used_ % 8);
        ++used_;
    }

    Bytes bytes_ = {0x78, 0x9C};
    int used_ = 16;
};

constexpr unsigned kStored = 0;
constexpr unsigned kFixed = 1;
constexpr unsigned kDynamic = 2;

BitWriter Block(unsigned type, bool isLast = true) {
    BitWriter writer;
    writer.Number(isLast ? 1 : 0, 1).Number(type, 2);
    return writer;
}

Bytes Compressed(const Bytes& bytes, int level) {
    const QByteArray packed = qCompress(bytes.data(), static_cast<qsizetype>(bytes.size()), level);
    return {packed.begin() + 4, packed.end()};
}

// Text with many repetitions, alternating with noise.
Bytes Sample(std::size_t size) {
    Bytes bytes(size);
    std::uint32_t state = 1;
    for (std::size_t i = 0; i < size; ++i) {
        state = state * 1664525 + 1013904223;
        bytes[i] = static_cast<std::uint8_t>(i / 700 % 3 == 0 ? state >> 24 : "jukebox jukebox juke"[i % 20]);
    }
    return bytes;
}

std::optional<Bytes> InflatePieces(const Bytes& source, std::size_t most) {
    Bytes made;
    const bool isDone = InflateInPieces(source, most, [&made](std::span<const std::uint8_t> piece) {
        made.insert(made.end(), piece.begin(), piece.end());
        return true;
    });
    return isDone ? std::optional(made) : std::nullopt;
}

// Inflates in one piece and checks that inflating in pieces gives the same bytes.
std::optional<Bytes> InflateAll(const Bytes& source, std::size_t room) {
    std::optional<Bytes> target(room);
    const auto made = Inflate(source, *target);
    if (made) {
        target->resize(*made);
    } else {
        target.reset();
    }
    EXPECT_EQ(InflatePieces(source, room), target);
    return target;
}

std::optional<std::string> InflateText(const BitWriter& writer, std::size_t room = 100) {
    const auto bytes = InflateAll(writer.Stream(), room);
    return bytes ? std::optional(std::string(bytes->begin(), bytes->end())) : std::nullopt;
}

// A code without extra bits at the end of a byte leaves the most bits that the reader can hold.
TEST(BitReader, GoesOnQuicklyBehindALookThatTookNothing) {
    Bytes bytes(40);
    std::iota(bytes.begin(), bytes.end(), std::uint8_t{1});
    BitReader reader(bytes);
    reader.Peek();
    ASSERT_TRUE(reader.Drop(0));
    for (std::uint8_t first = 1; reader.HasWords(); first += 5) {
        const std::uint64_t bits = reader.QuickPeek();
        for (unsigned i = 0; i < 5; ++i) {
            ASSERT_EQ(bits >> (8 * i) & 255U, first + i);
        }
        reader.QuickDrop(40);
    }
}

// Every piece starts and ends in the middle of a code.
TEST(Inflate, ManyPiecesHoldWhatOneHolds) {
    for (std::size_t period = 3; period < 60; ++period) {
        Bytes bytes = Sample(900'000);
        for (std::size_t i = period; i < bytes.size(); ++i) {
            bytes[i] =
                static_cast<std::uint8_t>(i % (period * 7) < period * 5 ? bytes[i - period] : bytes[i]);
        }
        EXPECT_TRUE(InflateAll(Compressed(bytes, 6), bytes.size()) == bytes) << period;
    }
}

TEST(Inflate, ReadsWhatTheLibraryWritesAtEveryLevel) {
    for (const std::size_t size : {1U, 2U, 100U, 70'000U, 300'000U}) {
        for (const int level : {0, 1, 6, 9}) {
            const Bytes bytes = Sample(size);
            EXPECT_EQ(InflateAll(Compressed(bytes, level), size + 10), bytes)
                << size << " at level " << level;
        }
    }
}

TEST(Inflate, PiecesAreCutAtTheRoomThatIsWanted) {
    const Bytes bytes = Sample(1'000'000);
    const Bytes source = Compressed(bytes, 6);
    for (const std::size_t room : {0U, 1U, 262'143U, 262'144U, 262'145U, 491'520U, 600'000U, 999'999U}) {
        EXPECT_EQ(InflateAll(source, room), Bytes(bytes.begin(), bytes.begin() + room)) << room;
    }
}

TEST(Inflate, PiecesEndWhenNoMoreAreWanted) {
    int pieces = 0;
    EXPECT_FALSE(InflateInPieces(Compressed(Sample(2'000'000), 6), 2'000'000, [&pieces](auto /*piece*/) {
        ++pieces;
        return pieces < 3;
    }));
    EXPECT_EQ(pieces, 3);
}

TEST(Inflate, AFixedBlockHoldsLiteralsAndRepeats) {
    // "abc", then length 7 from distance 3.
    BitWriter writer = Block(kFixed);
    writer.Literal('a').Literal('b').Literal('c').Code(261 - 256, 7).Code(2, 5).Code(0, 7);
    EXPECT_EQ(InflateText(writer), "abcabcabca");
}

TEST(Inflate, ADistanceOfOneRepeatsOneByte) {
    BitWriter writer = Block(kFixed);
    writer.Literal('x').Code(262 - 256, 7).Code(0, 5).Code(0, 7);
    EXPECT_EQ(InflateText(writer), "xxxxxxxxx");
}

TEST(Inflate, Code285IsALengthOf258WithoutExtraBits) {
    BitWriter writer = Block(kFixed);
    writer.Literal('x').Code(0xC0 + 285 - 280, 8).Code(0, 5).Literal('y').Code(0, 7);
    EXPECT_EQ(InflateText(writer, 300), std::string(259, 'x') + "y");
}

TEST(Inflate, SeveralBlocksFollowOneAnother) {
    BitWriter writer = Block(kFixed, false);
    writer.Literal('a').Code(0, 7).Number(0, 1).Number(kStored, 2).ToByte();
    writer.Number(2, 16).Number(0xFFFD, 16).Number('b', 8).Number('c', 8);
    writer.Number(1, 1).Number(kFixed, 2).Literal('d').Code(0, 7);
    EXPECT_EQ(InflateText(writer), "abcd");
}

TEST(Inflate, AnEmptyStoredBlockIsNothing) {
    BitWriter writer = Block(kStored);
    writer.ToByte().Number(0, 16).Number(0xFFFF, 16);
    EXPECT_EQ(InflateText(writer), "");
}

TEST(Inflate, StopsWhenTheTargetIsFull) {
    const Bytes bytes = Sample(5000);
    for (const int level : {0, 9}) {
        for (const std::size_t room : {0U, 1U, 4999U, 5000U}) {
            EXPECT_EQ(InflateAll(Compressed(bytes, level), room), Bytes(bytes.begin(), bytes.begin() + room));
        }
    }
}

TEST(Inflate, DamageBehindAFullTargetIsNotSeen) {
    BitWriter writer = Block(kFixed);
    writer.Literal('a').Literal('b').Code(261 - 256, 7).Code(31, 5);
    EXPECT_EQ(InflateText(writer, 2), "ab");
    EXPECT_EQ(InflateText(writer, 3), std::nullopt);
}

// Deliberate D-36.
TEST(Inflate, TheChecksumAtTheEndIsNotLookedAt) {
    Bytes packed = Compressed(Sample(100), 9);
    packed.back() = static_cast<std::uint8_t>(packed.back() ^ 1);
    EXPECT_EQ(InflateAll(packed, 100), Sample(100));
    packed.resize(packed.size() - 4);
    EXPECT_EQ(InflateAll(packed, 100), Sample(100));
}

TEST(Inflate, TheHeaderIsSkippedUnread) {
    Bytes packed = Compressed(Sample(100), 9);
    packed[0] = 0xFF;
    packed[1] = 0xFF;
    EXPECT_EQ(InflateAll(packed, 100), Sample(100));
}

TEST(Inflate, FailsWhereverTheDataAreCut) {
    const Bytes bytes = Sample(3000);
    for (const int level : {0, 1, 9}) {
        const Bytes whole = Compressed(bytes, level);
        // Without the last byte before the checksum, the stream has no end.
        for (std::size_t size = 0; size + 5 <= whole.size(); ++size) {
            EXPECT_EQ(
                InflateAll(Bytes(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(size)), 4000),
                std::nullopt)
                << size << " of " << whole.size() << " at level " << level;
        }
    }
}

TEST(Inflate, BlockTypeThreeIsAnError) {
    EXPECT_EQ(InflateText(Block(3)), std::nullopt);
}

TEST(Inflate, AStoredBlockNeedsItsComplement) {
    BitWriter writer = Block(kStored);
    writer.ToByte().Number(1, 16).Number(0xFFFF, 16).Number('a', 8);
    EXPECT_EQ(InflateText(writer), std::nullopt);
}

TEST(Inflate, AStoredBlockPastTheEndIsAnError) {
    BitWriter writer = Block(kStored);
    writer.ToByte().Number(5, 16).Number(0xFFFA, 16).Number('a', 8);
    EXPECT_EQ(InflateText(writer), std::nullopt);
}

TEST(Inflate, ADistanceBeforeTheFirstByteIsAnError) {
    BitWriter writer = Block(kFixed);
    writer.Literal('a').Code(257 - 256, 7).Code(1, 5).Code(0, 7);
    EXPECT_EQ(InflateText(writer), std::nullopt);
}

TEST(Inflate, LengthsAndDistancesWithoutMeaningAreErrors) {
    for (const unsigned length : {286U, 287U}) {
        BitWriter writer = Block(kFixed);
        writer.Literal('a').Code(0xC0 + length - 280, 8).Code(0, 5).Code(0, 7);
        EXPECT_EQ(InflateText(writer), std::nullopt) << length;
    }
    for (const unsigned distance : {30U, 31U}) {
        BitWriter writer = Block(kFixed);
        writer.Literal('a').Code(1, 7).Code(distance, 5).Number(0, 13).Code(0, 7);
        EXPECT_EQ(InflateText(writer), std::nullopt) << distance;
    }
}

// Starts a dynamic block whose code length code has two bits each for the symbols 0, 1, 2 and 18.
BitWriter DynamicBlock(unsigned literals, unsigned distances) {
    BitWriter writer = Block(kDynamic);
    writer.Number(literals - 257, 5).Number(distances - 1, 5).Number(18 - 4, 4);
    // The order is 16, 17, 18, 0, 8, 7, 9, 6, 10, 5, 11, 4, 12, 3, 13, 2, 14, 1.
    for (const unsigned length : {0, 0, 2, 2, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 2, 0, 2}) {
        writer.Number(length, 3);
    }
    return writer;
}
constexpr unsigned kLength0 = 0;
constexpr unsigned kLength1 = 1;
constexpr unsigned kLength2 = 2;
constexpr unsigned kZeros = 3;

void Zeros(BitWriter& writer, unsigned count) {
    for (; count >= 11; count -= std::min(count, 138U)) {
        writer.Code(kZeros, 2).Number(std::min(count, 138U) - 11, 7);
    }
    for (; count > 0; --count) {
        writer.Code(kLength0, 2);
    }
}

TEST(Inflate, ADynamicBlockWithOneDistanceCodeOfOneBit) {
    BitWriter writer = DynamicBlock(258, 1);
    Zeros(writer, 'a');
    writer.Code(kLength1, 2);
    Zeros(writer, 255 - 'a');
    writer.Code(kLength2, 2).Code(kLength2, 2);
    writer.Code(kLength1, 2);
    // 'a' is 0, the end 10, length 3 is 11; distance 1 is 0.
    BitWriter good = writer;
    good.Code(0, 1).Code(3, 2).Code(0, 1).Code(2, 2);
    EXPECT_EQ(InflateText(good), "aaaa");
    BitWriter unknownDistance = writer;
    unknownDistance.Code(0, 1).Code(3, 2).Code(1, 1).Code(2, 2).Number(0, 16);
    EXPECT_EQ(InflateText(unknownDistance), std::nullopt);
}

TEST(Inflate, ADynamicBlockWithoutDistancesHoldsLiterals) {
    BitWriter writer = DynamicBlock(257, 1);
    Zeros(writer, 'a');
    writer.Code(kLength1, 2);
    Zeros(writer, 255 - 'a');
    writer.Code(kLength1, 2).Code(kLength0, 2);
    writer.Code(0, 1).Code(0, 1).Code(1, 1);
    EXPECT_EQ(InflateText(writer), "aa");
}

TEST(Inflate, ACodeWithTooManySymbolsIsAnError) {
    BitWriter writer = DynamicBlock(257, 1);
    Zeros(writer, 'a');
    writer.Code(kLength1, 2).Code(kLength1, 2);
    Zeros(writer, 254 - 'a');
    writer.Code(kLength1, 2).Code(kLength1, 2);
    writer.Number(0, 32);
    EXPECT_EQ(InflateText(writer), std::nullopt);
}

TEST(Inflate, ACodeWithUnusedPlacesIsAnError) {
    BitWriter writer = DynamicBlock(257, 1);
    Zeros(writer, 'a');
    writer.Code(kLength2, 2);
    Zeros(writer, 255 - 'a');
    writer.Code(kLength1, 2).Code(kLength1, 2);
    writer.Code(0, 1);
    EXPECT_EQ(InflateText(writer), std::nullopt);
}

TEST(Inflate, ABlockWithoutAnEndSymbolIsAnError) {
    BitWriter writer = DynamicBlock(257, 1);
    Zeros(writer, 'a');
    writer.Code(kLength1, 2).Code(kLength1, 2);
    Zeros(writer, 255 - 'a');
    writer.Code(kLength1, 2);
    writer.Code(0, 1).Number(0, 32);
    EXPECT_EQ(InflateText(writer, 1), std::nullopt);
}

TEST(Inflate, RunsOfLengthsPastTheirCountAreErrors) {
    BitWriter writer = DynamicBlock(257, 1);
    writer.Code(kZeros, 2).Number(127, 7).Code(kZeros, 2).Number(127, 7).Number(0, 32);
    EXPECT_EQ(InflateText(writer), std::nullopt);
}

TEST(Inflate, TooManyLengthsOrDistancesAreErrors) {
    EXPECT_EQ(InflateText(DynamicBlock(287, 1).Number(0, 32)), std::nullopt);
    EXPECT_EQ(InflateText(DynamicBlock(257, 31).Number(0, 32)), std::nullopt);
}

TEST(Inflate, ARepeatOfNoLengthIsAnError) {
    BitWriter writer = Block(kDynamic);
    // Codes of one bit each for 16 and 0. The first length repeats the one before it, which does not exist.
    writer.Number(0, 5).Number(0, 5).Number(0, 4).Number(1, 3).Number(0, 3).Number(0, 3).Number(1, 3);
    writer.Code(1, 1).Number(0, 32);
    EXPECT_EQ(InflateText(writer), std::nullopt);
}

TEST(Inflate, AnyOneChangedByteNeitherCrashesNorOverruns) {
    const Bytes whole = Compressed(Sample(2000), 9);
    for (std::size_t i = 0; i < whole.size(); ++i) {
        for (const int change : {1, 2, 4, 8, 16, 32, 64, 128, 255}) {
            Bytes changed = whole;
            changed[i] = static_cast<std::uint8_t>(changed[i] ^ change);
            const auto made = InflateAll(changed, 2500);
            EXPECT_LE(made ? made->size() : 0, 2500U);
        }
    }
}

} // namespace
