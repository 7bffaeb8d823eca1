// Matching names with wildcards.
#include "library/file_pattern.h"

#include <gtest/gtest.h>

namespace {

bool Matches(const char* pattern, const char* name) {
    return FilePattern(QString::fromUtf8(pattern)).Matches(QString::fromUtf8(name));
}

TEST(FilePattern, AnEndingWhateverItsCase) {
    EXPECT_TRUE(Matches("*.mp3", "a.mp3"));
    EXPECT_TRUE(Matches("*.mp3", "A.MP3"));
    EXPECT_TRUE(Matches("*.MP3", "a.b.Mp3"));
    EXPECT_TRUE(Matches("*.mp3", ".mp3"));
    EXPECT_FALSE(Matches("*.mp3", "mp3"));
    EXPECT_FALSE(Matches("*.mp3", "a.mp34"));
    EXPECT_FALSE(Matches("*.mp3", "a.mp"));
    EXPECT_TRUE(Matches("*.\xC3\xA9", "x.\xC3\x89"));
}

TEST(FilePattern, AnyOfSeveral) {
    EXPECT_TRUE(Matches("*.mp3;*.wma;*.flac", "a.flac"));
    EXPECT_FALSE(Matches("*.mp3;*.wma;*.flac", "a.wav"));
    EXPECT_TRUE(Matches(";;*.mp3;", "a.mp3"));
    EXPECT_FALSE(Matches(";;*.mp3;", "a.wma"));
    EXPECT_FALSE(Matches("*.mp44", "a.mp4"));
    EXPECT_TRUE(Matches("*.mp44", "a.mp44"));
}

TEST(FilePattern, EveryNameForNoPatternAndForAllFiles) {
    EXPECT_TRUE(Matches("", "anything"));
    EXPECT_TRUE(Matches("*.*", "no dot"));
    EXPECT_TRUE(Matches("*", ""));
}

TEST(FilePattern, WildcardsInside) {
    EXPECT_TRUE(Matches("a*c?.t*t", "abbccX.text"));
    EXPECT_TRUE(Matches("a*b*c", "aXbYbZc"));
    EXPECT_FALSE(Matches("a*b*c", "aXbYbZ"));
    EXPECT_TRUE(Matches("?x", "yX"));
    EXPECT_FALSE(Matches("?x", "x"));
    EXPECT_TRUE(Matches("song.mp3", "Song.mp3"));
    EXPECT_FALSE(Matches("song.mp3", "Song.mp3x"));
    EXPECT_TRUE(Matches("a**", "a"));
}

TEST(FilePattern, ManyStarsTakeNoTime) {
    const QString name(250, u'a');
    EXPECT_FALSE(FilePattern(QStringLiteral("*a").repeated(100) + u'b').Matches(name));
}

} // namespace
