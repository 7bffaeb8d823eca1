// Telling encodings apart, and converting.
#include "settings/text_encoding.h"

#include <gtest/gtest.h>

namespace {

TEST(TextEncoding, IsUtf8OnlyWhenEveryByteFits) {
    EXPECT_EQ(EncodingOf(""), TextEncoding::kUtf8);
    EXPECT_EQ(EncodingOf("plain"), TextEncoding::kUtf8);
    EXPECT_EQ(EncodingOf("\xC3\xA9"), TextEncoding::kUtf8);
    EXPECT_EQ(EncodingOf("\xC3\xA9 \xE9"), TextEncoding::kWindows1252);
    EXPECT_EQ(EncodingOf("\xC3"), TextEncoding::kWindows1252);
    EXPECT_EQ(EncodingOf("\xC0\x80"), TextEncoding::kWindows1252) << "an overlong form";
    EXPECT_EQ(EncodingOf("\xED\xA0\x80"), TextEncoding::kWindows1252) << "half of a surrogate pair";
    EXPECT_EQ(EncodingOf("\xED\xB2\x80 \xED\xB3\xBF"), TextEncoding::kUtf8) << "bytes of file names";
    EXPECT_EQ(EncodingOf("\xED\xB2\x80 \xE9"), TextEncoding::kWindows1252);
}

TEST(TextEncoding, EveryByteOfWindows1252ComesBack) {
    for (int byte = 0; byte < 256; ++byte) {
        const QByteArray bytes(1, static_cast<char>(byte));
        const QString text = DecodeAs(TextEncoding::kWindows1252, bytes);
        ASSERT_EQ(text.size(), 1);
        EXPECT_EQ(EncodeAs(TextEncoding::kWindows1252, text), bytes) << byte;
    }
    EXPECT_EQ(DecodeAs(TextEncoding::kWindows1252, "\x80\x99"), QString::fromUtf8("€™"));
}

TEST(TextEncoding, Windows1252HasNoPlaceForOtherCharacters) {
    EXPECT_EQ(EncodeAs(TextEncoding::kWindows1252, QString::fromUtf8("日")), std::nullopt);
    EXPECT_EQ(EncodeAs(TextEncoding::kWindows1252, QString(QChar(0x80))), std::nullopt)
        << "0x80 is the byte of another character";
}

TEST(TextEncoding, Utf8KeepsTheBytesOfFileNames) {
    QString text = QString::fromUtf8("é𝄞");
    for (char16_t code = 0xDC80; code <= 0xDCFF; ++code) {
        text += QChar(code);
    }
    const auto bytes = EncodeAs(TextEncoding::kUtf8, text);
    ASSERT_TRUE(bytes);
    EXPECT_EQ(EncodingOf(*bytes), TextEncoding::kUtf8);
    EXPECT_EQ(DecodeAs(TextEncoding::kUtf8, *bytes), text);
}

TEST(TextEncoding, OtherHalvesOfPairsAreReplaced) {
    EXPECT_EQ(EncodeAs(TextEncoding::kUtf8, QString(QChar(0xD800)) + u'x'), "?x");
    EXPECT_EQ(EncodeAs(TextEncoding::kUtf8, QString(QChar(0xDC10))), "?");
}

} // namespace
