// Text files: encodings and lines.
#include "core/run_time_error.h"
#include "core/text_file.h"

#include <gtest/gtest.h>

namespace {

TEST(DecodeText, ReadsUtf8WithAndWithoutByteOrderMark) {
    EXPECT_EQ(DecodeText("\xC3\xA9"), QStringLiteral("é"));
    EXPECT_EQ(DecodeText("\xEF\xBB\xBF\xC3\xA9"), QStringLiteral("é"));
}

TEST(DecodeText, ReadsInvalidUtf8AsWindows1252) {
    EXPECT_EQ(DecodeText("\xE9 \x80\x92"), QString::fromUtf8("é €’"));
    EXPECT_EQ(DecodeText("cut \xC3"), QString::fromUtf8("cut Ã"));
    EXPECT_EQ(DecodeText(QByteArray("\xFF\x81", 2)), QString(QChar(0xFF)) + QChar(0x81));
}

TEST(LineReader, CutsAtLfAndCrLf) {
    LineReader lines(QStringLiteral("a\r\nb\n\nc"), QStringLiteral("p"));
    EXPECT_EQ(lines.Next(), QStringLiteral("a"));
    EXPECT_EQ(lines.Next(), QStringLiteral("b"));
    EXPECT_EQ(lines.Next(), QString());
    EXPECT_EQ(lines.Next(), QStringLiteral("c"));
}

TEST(LineReader, PastTheEndRaises62WithPathAndLine) {
    LineReader lines(QStringLiteral("a\n"), QStringLiteral("/p/x.vtxpl"));
    lines.Next();
    try {
        lines.Next();
        FAIL();
    } catch (const RunTimeError& error) {
        EXPECT_EQ(error.number, kInputPastEnd);
        EXPECT_EQ(error.detail, QStringLiteral("/p/x.vtxpl, line 2"));
    }
}

TEST(LineReader, AnEmptyFileHasNoLine) {
    LineReader lines{QString(), QString()};
    EXPECT_THROW(lines.Next(), RunTimeError);
}

} // namespace
