// Text files: encodings and lines.
#include "core/run_time_error.h"
#include "core/text_file.h"

#include <gtest/gtest.h>

namespace {

TEST(DecodeLine, ReadsUtf8) {
    EXPECT_EQ(DecodeLine("\xC3\xA9"), QStringLiteral("é"));
}

TEST(LineReader, SkipsAByteOrderMark) {
    LineReader lines("\xEF\xBB\xBF\xC3\xA9\r\n", QString());
    EXPECT_EQ(lines.Next(), "\xC3\xA9");
}

TEST(DecodeLine, ReadsInvalidUtf8AsWindows1252) {
    EXPECT_EQ(DecodeLine("\xE9 \x80\x92"), QString::fromUtf8("é €’"));
    EXPECT_EQ(DecodeLine("cut \xC3"), QString::fromUtf8("cut Ã"));
    EXPECT_EQ(DecodeLine(QByteArray("\xFF\x81", 2)), QString(QChar(0xFF)) + QChar(0x81));
}

TEST(LineReader, CutsAtLfAndCrLf) {
    LineReader lines("a\r\nb\n\nc", QStringLiteral("p"));
    EXPECT_EQ(lines.Next(), "a");
    EXPECT_EQ(lines.Next(), "b");
    EXPECT_EQ(lines.Next(), "");
    EXPECT_EQ(lines.Next(), "c");
}

TEST(LineReader, PastTheEndRaises62WithPathAndLine) {
    LineReader lines("a\n", QStringLiteral("/p/x.vtxpl"));
    lines.Next();
    try {
        lines.Next();
        FAIL();
    } catch (const RunTimeError& error) {
        EXPECT_EQ(error.number, kInputPastEnd);
        EXPECT_EQ(error.detail, QStringLiteral("/p/x.vtxpl, line 2: the file ends before it"));
    }
}

TEST(LineReader, AnEmptyFileHasNoLine) {
    LineReader lines{QByteArray(), QString()};
    EXPECT_THROW(lines.Next(), RunTimeError);
}

} // namespace
