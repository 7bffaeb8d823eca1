// Converting paths to text and back without losing a byte, and splitting paths.
#include "core/path_text.h"

#include <gtest/gtest.h>

#include <random>

namespace {

TEST(PathText, ValidUtf8ReadsAsText) {
    EXPECT_EQ(TextOfPath("/m/\xC3\x89t\xC3\xA9 \xF0\x9F\x8E\xB5.mp3"), QString::fromUtf8("/m/Été 🎵.mp3"));
}

TEST(PathText, InvalidBytesSurvive) {
    const QByteArray odd("/m/\xE9t\xE9.mp3\xFF\xC3");
    EXPECT_EQ(BytesOfPath(TextOfPath(odd)), odd);
    EXPECT_EQ(TextOfPath(odd)[3], QChar(0xDCE9));
}

TEST(PathText, EncodedSurrogatesAndOverlongFormsSurvive) {
    for (const char* bytes :
         {"\xED\xB3\xA9", "\xC0\xAF", "\xE0\x80\xAF", "\xF4\x90\x80\x80", "\xED\xA0\x80\xED\xB0\x80"}) {
        EXPECT_EQ(BytesOfPath(TextOfPath(bytes)), QByteArray(bytes));
    }
}

TEST(PathText, RandomBytesSurvive) {
    std::mt19937 random(1);
    for (int round = 0; round < 20000; ++round) {
        QByteArray bytes(static_cast<qsizetype>(random() % 12), '\0');
        for (char& byte : bytes) {
            byte = static_cast<char>(random() % 4 == 0 ? 'a' : random() % 256);
        }
        ASSERT_EQ(BytesOfPath(TextOfPath(bytes)), bytes) << bytes.toHex().toStdString();
    }
}

TEST(PathText, AFolderAndANameHaveOneSeparatorBetweenThem) {
    EXPECT_EQ(PathIn(QStringLiteral("/music"), QStringLiteral("a.mp3")), QStringLiteral("/music/a.mp3"));
    EXPECT_EQ(PathIn(QStringLiteral("/"), QStringLiteral("a.mp3")), QStringLiteral("/a.mp3"));
    EXPECT_EQ(PathIn(QStringLiteral("/"), QStringLiteral("themes/default")),
              QStringLiteral("/themes/default"));
}

TEST(PathText, TheFolderOfAPathHasNoSeparatorAtItsEndButTheRoot) {
    EXPECT_EQ(FolderOfPath(QStringLiteral("/music/rock")), QStringLiteral("/music"));
    EXPECT_EQ(FolderOfPath(QStringLiteral("/music")), QStringLiteral("/"));
    EXPECT_EQ(FolderOfPath(QStringLiteral("/")), QStringLiteral("/"));
    EXPECT_EQ(FolderOfPath(QStringLiteral("music")), QString());
    EXPECT_EQ(FolderOfPath(QString()), QString());
}

TEST(PathText, TheNameOfAPathFollowsItsLastSeparator) {
    EXPECT_EQ(NameOfPath(QStringLiteral("/music/rock")), QStringLiteral("rock"));
    EXPECT_EQ(NameOfPath(QStringLiteral("/rock")), QStringLiteral("rock"));
    EXPECT_EQ(NameOfPath(QStringLiteral("rock")), QStringLiteral("rock"));
    EXPECT_EQ(NameOfPath(QStringLiteral("/")), QString());
}

} // namespace
