// Tests of the installed compression library, and of a machine without one.
#include "platform/posix/dlopened_zlib.h"

#include <gtest/gtest.h>

#include <QByteArray>

#include <array>
#include <vector>

namespace {

std::span<const std::uint8_t> SpanOf(const QByteArray& bytes) {
    return {reinterpret_cast<const std::uint8_t*>(bytes.constData()), static_cast<std::size_t>(bytes.size())};
}

TEST(DlopenedZlib, HasTheRoutinesAndNoOthers) {
    DlopenedZlib zlib;
    EXPECT_TRUE(zlib.Has("uncompress"));
    EXPECT_TRUE(zlib.Has("crc32"));
    EXPECT_FALSE(zlib.Has("no_such_routine"));
}

TEST(DlopenedZlib, Inflates) {
    DlopenedZlib zlib;
    const QByteArray text(5000, 'x');
    const QByteArray packed = qCompress(text).mid(4);
    std::vector<std::uint8_t> target(6000);
    std::size_t written = 0;
    EXPECT_EQ(zlib.Uncompress(target, written, SpanOf(packed)), 0);
    EXPECT_EQ(written, 5000U);
    EXPECT_EQ(target[4999], 'x');
    EXPECT_EQ(target[5000], 0);
}

TEST(DlopenedZlib, TellsWhenTheTargetIsTooSmallOrTheDataAreDamaged) {
    DlopenedZlib zlib;
    QByteArray packed = qCompress(QByteArray(5000, 'x')).mid(4);
    std::array<std::uint8_t, 100> target{};
    std::size_t written = 0;
    EXPECT_NE(zlib.Uncompress(target, written, SpanOf(packed)), 0);
    EXPECT_LE(written, target.size());
    packed[0] = '\0';
    EXPECT_NE(zlib.Uncompress(target, written, SpanOf(packed)), 0);
    EXPECT_NE(zlib.Uncompress({}, written, {}), 0);
}

TEST(DlopenedZlib, ChecksumsGoOnFromTheOneBefore) {
    DlopenedZlib zlib;
    const QByteArray text = QByteArrayLiteral("123456789");
    EXPECT_EQ(zlib.Crc32(0, SpanOf(text)), 0xCBF43926U);
    EXPECT_EQ(zlib.Crc32(zlib.Crc32(0, SpanOf(text.left(4))), SpanOf(text.mid(4))), 0xCBF43926U);
    EXPECT_EQ(zlib.Crc32(7, {}), 7U);
}

TEST(DlopenedZlib, WithoutTheLibraryNothingIsThereAndNothingFailsHard) {
    DlopenedZlib zlib("libno-such-library.so.1");
    EXPECT_FALSE(zlib.Has("uncompress"));
    EXPECT_FALSE(zlib.Has("crc32"));
    std::array<std::uint8_t, 10> target{};
    std::size_t written = 7;
    EXPECT_NE(zlib.Uncompress(target, written, {}), 0);
    EXPECT_EQ(written, 0U);
    EXPECT_EQ(zlib.Crc32(5, target), 5U);
}

} // namespace
