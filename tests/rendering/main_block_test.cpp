// The Main block's information lines.
#include "rendering/main_block.h"
#include "support/error_of.h"
#include "support/jukebox.h"

#include <gtest/gtest.h>

namespace {

class MainBlockTest : public testing::Test {
protected:
    MainBlockTest() {
        jukebox.Start();
        form.queue.PlaylistCount = 1;
        form.queue.PlaylistCurrent = 1;
        form.queue.PlaylistTitre(1) = QStringLiteral("Mix.vtxpl");
        form.frame.InfosBlink = 0;
    }

    // Returns the text of the second line in a state of the lines.
    QString SecondLine(const char* state) {
        form.frame.BlockMainInfos = QString::fromLatin1(state);
        form.frame.InfosTicks = 1;
        BlockMainRedrawInfos(form);
        return jukebox.DrawnTexts().last().section(u',', 0, 0);
    }

    // Returns the state after a call at an age of this many ticks.
    QString StateAfter(const char* state, int ticks) {
        form.frame.BlockMainInfos = QString::fromLatin1(state);
        form.frame.InfosTicks = ticks;
        BlockMainRedrawInfos(form);
        return form.frame.BlockMainInfos;
    }

    Jukebox jukebox;
    Form_Main& form = jukebox.form;
};

// Deliberate D-19.
TEST_F(MainBlockTest, APlaylistKeepsItsEndingWhileItIsCalledNowPlaying) {
    EXPECT_EQ(SecondLine("nowplaying"), QStringLiteral("MIX.VTXPL"));
}

TEST_F(MainBlockTest, APlaylistLosesItsEndingInTheOtherStates) {
    EXPECT_EQ(SecondLine("addtoplaylist"), QStringLiteral("MIX"));
}

// ".avi" is removed before ".mp3", so one that appears after that stays.
TEST_F(MainBlockTest, TheEndingsGoInTheirOrder) {
    form.queue.PlaylistTitre(1) = QStringLiteral("x.a.mp3vi");
    EXPECT_EQ(SecondLine("addtoplaylist"), QStringLiteral("X.AVI"));
}

TEST_F(MainBlockTest, ATrackNumberInFrontAndAYearBothGiveWayToTheSong) {
    form.queue.PlaylistTitre(1) = QStringLiteral("45 - Song.mp3");
    EXPECT_EQ(SecondLine("nowplaying"), QStringLiteral("SONG"));
    form.queue.PlaylistTitre(1) = QStringLiteral("2014 - Song.mp3");
    EXPECT_EQ(SecondLine("nowplaying"), QStringLiteral("SONG"));
}

TEST_F(MainBlockTest, AfterMoreThan15TicksACoinIsFollowedByTheTrackToSelect) {
    form.settings.ManageCoin = QStringLiteral("true");
    form.queue.PlaylistCount = 0;
    form.coins.Credits = 1;
    EXPECT_EQ(StateAfter("insertcoin", 15), QStringLiteral("insertcoin"));
    EXPECT_EQ(StateAfter("insertcoin", 16), QStringLiteral("selecttrack"));
    EXPECT_EQ(form.frame.InfosTicks, 1);
}

TEST_F(MainBlockTest, WithoutACreditTheWishForACoinStaysAndGrowsOld) {
    form.settings.ManageCoin = QStringLiteral("true");
    form.queue.PlaylistCount = 0;
    EXPECT_EQ(StateAfter("insertcoin", 16), QStringLiteral("insertcoin"));
    EXPECT_EQ(form.frame.InfosTicks, 16);
}

TEST_F(MainBlockTest, AnAddedTrackIsToldForExactlyTenTicks) {
    for (const int ticks : {9, 11, 99}) {
        EXPECT_EQ(StateAfter("addtoplaylist", ticks), QStringLiteral("addtoplaylist")) << ticks;
    }
    EXPECT_EQ(StateAfter("addtoplaylist", 10), QStringLiteral("nowplaying"));
}

TEST_F(MainBlockTest, FreeTracksNeedNoCoinAtOnce) {
    form.frame.InfosTicks = 7;
    form.frame.BlockMainInfos = QStringLiteral("insertcoin");
    const qsizetype drawn = jukebox.DrawnTexts().size();
    BlockMainRedrawInfos(form);
    EXPECT_EQ(form.frame.BlockMainInfos, QStringLiteral("selecttrack"));
    EXPECT_EQ(form.frame.InfosTicks, 7);
    EXPECT_EQ(jukebox.DrawnTexts().size(), drawn);
}

TEST_F(MainBlockTest, AHiddenMainZoneNeitherDrawsNorLogsNorChanges) {
    form.settings.ShowMainZone = QStringLiteral("false");
    const qsizetype lines = jukebox.Log().size();
    const QImage before = form.frame.Picture_Main.picture.copy();
    EXPECT_EQ(StateAfter("nowplaying", 99), QStringLiteral("nowplaying"));
    EXPECT_EQ(jukebox.Log().size(), lines);
    EXPECT_EQ(form.frame.Picture_Main.picture, before);
}

TEST_F(MainBlockTest, AnUnknownStateIsLoggedAndDrawsNothing) {
    const qsizetype drawn = jukebox.DrawnTexts().size();
    EXPECT_EQ(StateAfter("nonsense", 99), QStringLiteral("nonsense"));
    EXPECT_EQ(jukebox.Log().last(), QStringLiteral(" : BlockMainRedrawInfos"));
    EXPECT_EQ(jukebox.DrawnTexts().size(), drawn);
}

TEST_F(MainBlockTest, TheSecondLineIsBlankInOnePhaseOfThree) {
    form.frame.BlockMainInfos = QStringLiteral("selecttrack");
    for (const int blink : {0, 1, 2}) {
        form.frame.InfosBlink = blink;
        const qsizetype drawn = jukebox.DrawnTexts().size();
        BlockMainRedrawInfos(form);
        EXPECT_EQ(jukebox.DrawnTexts().size() - drawn, blink == 1 ? 1 : 2) << blink;
    }
}

TEST_F(MainBlockTest, TheLastEntryOfAllIsErrorNineWhenTheNextOneIsAsked) {
    form.queue.PlaylistCurrent = 1000;
    form.frame.BlockMainInfos = QStringLiteral("nextplaying");
    EXPECT_EQ(ErrorOf([&] { BlockMainRedrawInfos(form); }), kSubscriptOutOfRange);
}

struct LeavesRow {
    const char* state;
    int ticks; // the last tick in this state
    const char* withQueue;
    const char* withCredit;
    const char* withNothing; // no queue and no credit, coins required
};

// clang-format off
constexpr LeavesRow kLeaves[] = {
    {"btnpreview",  10, "nowplaying",  "selecttrack", "insertcoin"},
    {"btnstop",     10, "nowplaying",  "selecttrack", "insertcoin"},
    {"btnplay",     10, "nowplaying",  "selecttrack", "insertcoin"},
    {"btnpause",    10, "nowplaying",  "selecttrack", "insertcoin"},
    {"btnnext",     10, "nowplaying",  "selecttrack", "insertcoin"},
    {"btndown",     10, "nowplaying",  "selecttrack", "insertcoin"},
    {"btnup",       10, "nowplaying",  "selecttrack", "insertcoin"},
    {"btnremove",   10, "nowplaying",  "selecttrack", "insertcoin"},
    {"btnload",     10, "nowplaying",  "selecttrack", "insertcoin"},
    {"btnsave",     10, "nowplaying",  "selecttrack", "insertcoin"},
    {"insertcoin",  15, "nowplaying",  "selecttrack", "insertcoin"},
    {"currentpath", 15, "insertcoin",  "selecttrack", "insertcoin"},
    {"charging",     5, "nowplaying",  "nowplaying",  "nowplaying"},
    {"nowplaying",  30, "nextplaying", "selecttrack", "insertcoin"},
    {"nextplaying", 10, "insertcoin",  "selecttrack", "insertcoin"},
};
// clang-format on

class MainBlockLeaves : public MainBlockTest, public testing::WithParamInterface<LeavesRow> {};

TEST_P(MainBlockLeaves, EachStateHasItsTimeAndItsSuccessors) {
    const LeavesRow& row = GetParam();
    form.settings.ManageCoin = QStringLiteral("true");
    form.queue.PlaylistCount = 2;
    EXPECT_EQ(StateAfter(row.state, row.ticks), QLatin1StringView(row.state));
    EXPECT_EQ(StateAfter(row.state, row.ticks + 1), QLatin1StringView(row.withQueue));
    form.queue.PlaylistCount = 0;
    EXPECT_EQ(StateAfter(row.state, row.ticks + 1), QLatin1StringView(row.withNothing));
    form.coins.Credits = 1;
    EXPECT_EQ(StateAfter(row.state, row.ticks + 1), QLatin1StringView(row.withCredit));
}

INSTANTIATE_TEST_SUITE_P(States, MainBlockLeaves, testing::ValuesIn(kLeaves),
                         [](const testing::TestParamInfo<LeavesRow>& row) { return row.param.state; });

TEST_F(MainBlockTest, TheWishToSelectATrackNeverLeaves) {
    EXPECT_EQ(StateAfter("selecttrack", 99), QStringLiteral("selecttrack"));
}

} // namespace
