// Extracting titles, artists and track numbers from file names.
#include "rendering/titles.h"

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace {

const QStringList kMp3 = {u".mp3"_s};

struct CleanRow {
    const char* title;
    const char* clean;
};

class CleanTitles : public testing::TestWithParam<CleanRow> {};

TEST_P(CleanTitles, UnderscoresDashesBlanksThenEndings) {
    EXPECT_EQ(CleanTitle(QString::fromUtf8(GetParam().title), {u".avi"_s, u".mp3"_s}),
              QString::fromUtf8(GetParam().clean));
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(Titles, CleanTitles, testing::Values(
    CleanRow{"",             ""},
    CleanRow{"a_b__c",       "a b c"},
    CleanRow{"a   b",        "a  b"},      // two blanks become one, in a single pass
    CleanRow{"a-b",          "a - b"},
    CleanRow{"a - b",        "a - b"},
    CleanRow{"a_-_b",        "a - b"},
    CleanRow{"a.mp3.mp3",    "a"},
    CleanRow{".amp3.avivi",  ".amp3vi"},   // an ending is removed anywhere
    CleanRow{"a.m.avip3",    "a"},         // removing one can create a later one
    CleanRow{"a.a.mp3vi",    "a.avi"},     // but not an earlier one
    CleanRow{"a.MP3",        "a.MP3"}));
// clang-format on

TEST(SplitAtDash, TheFirstDashPartsArtistAndTitle) {
    TitleParts parts{u" a  - b - c "_s, u"old"_s};
    SplitAtDash(parts);
    EXPECT_EQ(parts.Interprete, u"a"_s);
    EXPECT_EQ(parts.Titre, u"b - c"_s);
    SplitAtDash(parts);
    EXPECT_EQ(parts.Interprete, u"b"_s);
    EXPECT_EQ(parts.Titre, u"c"_s);
    SplitAtDash(parts);
    EXPECT_EQ(parts.Interprete, u"b"_s);
    EXPECT_EQ(parts.Titre, u"c"_s);
}

TEST(SplitAtDash, WithoutADashNothingIsTrimmed) {
    TitleParts parts{u" a "_s, QString()};
    SplitAtDash(parts);
    EXPECT_EQ(parts.Titre, u" a "_s);
}

struct BlockRow {
    const char* title;
    const char* shown;
    const char* artist;
};

class BlockTitles : public testing::TestWithParam<BlockRow> {};

// Deliberate D-15: a prefix is a track number by its numeric value, not by its whole text.
TEST_P(BlockTitles, AccentsAndTrackNumbersGo) {
    const TitleParts parts = BlockTitle(QString::fromUtf8(GetParam().title), kMp3);
    EXPECT_EQ(parts.Titre, QString::fromUtf8(GetParam().shown));
    EXPECT_EQ(parts.Interprete, QString::fromUtf8(GetParam().artist));
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(Titles, BlockTitles, testing::Values(
    BlockRow{"Song.mp3",               "SONG",  ""},
    BlockRow{"Été - Où.mp3",           "OU",    "ETE"},
    BlockRow{"45 - Song.mp3",          "SONG",  ""},
    BlockRow{"45 - Artist - Song.mp3", "SONG",  "ARTIST"},
    BlockRow{"999 - Song.mp3",         "SONG",  ""},
    BlockRow{"1000 - Song.mp3",        "SONG",  "1000"},
    BlockRow{"2014 - Song.mp3",        "SONG",  "2014"},
    BlockRow{"0 - Song.mp3",           "SONG",  "0"},
    BlockRow{"7th Floor - Song.mp3",   "SONG",  ""},       // the value of "7th" is 7
    BlockRow{"0.5 - Song.mp3",         "SONG",  ""},
    BlockRow{"2014 - A - Song.mp3",    "SONG",  "A"}));
// clang-format on

} // namespace
