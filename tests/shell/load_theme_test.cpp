// Loading a theme: the order of its steps, errors with file, section and key, fonts, pictures and sounds.
#include "shell/load_theme.h"

#include "support/jukebox.h"

#include <QJsonArray>
#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace {

class LoadThemeTest : public testing::Test {
protected:
    // Returns the log from one line to another, both included.
    QStringList LogBetween(const QString& first, const QString& last) const {
        const QStringList log = box.Log();
        const qsizetype from = log.indexOf(first);
        return from < 0 ? QStringList() : log.mid(from, log.indexOf(last, from) - from + 1);
    }
    QList<QJsonArray> CallsOf(const QString& operation) const {
        QList<QJsonArray> found;
        for (const QJsonArray& call : box.platform.calls.Entries()) {
            if (call[0] == operation) {
                found += call;
            }
        }
        return found;
    }

    Jukebox box;
};

TEST_F(LoadThemeTest, TheLogTellsTheStepsInTheirOrder) {
    box.Start();
    const QString folder = box.Home(u"themes/default"_s);
    EXPECT_EQ(LogBetween(u" : Chargement du theme default (LoadTheme)"_s, u" : DrawZoneList"_s),
              QStringList({u" : Chargement du theme default (LoadTheme)"_s, u" : Mode Horizontal"_s,
                           u" : Position Pistes"_s, u" : LoadThemePositionPistes"_s,
                           u" : Deplacement file1 vers "_s + folder, u" : TTF vantorix_test.ttf"_s,
                           u" : AddFontResource "_s + folder + u"/vantorix_test.ttf"_s,
                           u" : Chargement des images"_s, u" : Chargement des sons"_s,
                           u" : Creation de la liste des fichiers (CreateList)"_s, u" : DrawZoneList"_s}));
    EXPECT_EQ(box.Log().count(u" : RedrawJukebox"_s), 1);
}

TEST_F(LoadThemeTest, EveryOrientationButHorizontalIsVertical) {
    for (const QString& word : {u"vertical"_s, u"landscape"_s, QString()}) {
        box.SetKey(u"config.ini"_s, u"Main"_s, u"Orientation"_s, word);
        box.Start();
        EXPECT_TRUE(box.Log().contains(u" : Mode Vertical"_s)) << word.toStdString();
        EXPECT_FALSE(box.Log().contains(u" : Mode Horizontal"_s)) << word.toStdString();
        EXPECT_EQ(box.form.theme.BlockMain.X, 256) << word.toStdString();
    }
}

// --- Faults --------------------------------------------------------------------------------------

struct OrderRow {
    const char* first;
    const char* later;
};

class ThemeReadingOrder : public LoadThemeTest, public testing::WithParamInterface<OrderRow> {
protected:
    // `place` is "section key".
    void Remove(const char* place) {
        const QStringList words = QString::fromLatin1(place).split(u' ');
        box.RemoveTheme(words[0], words[1]);
    }
};

// With two keys missing, the error names the one that is read first.
TEST_P(ThemeReadingOrder, TheFirstMissingNumberIsTold) {
    Remove(GetParam().first);
    Remove(GetParam().later);
    const auto stop = StopOf([&] { box.Start(); });
    ASSERT_TRUE(stop);
    EXPECT_EQ(stop->error.number, 13);
    const QStringList place = QString::fromLatin1(GetParam().first).split(u' ');
    const QString start = u"%1, [%2] %3 "_s.arg(box.Home(u"themes/default/theme.ini"_s), place[0], place[1]);
    EXPECT_TRUE(stop->error.detail.startsWith(start)) << stop->error.detail.toStdString();
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(Keys, ThemeReadingOrder, testing::Values(
    OrderRow{"zonelist ZoneListX",                              "zonelist ZoneListY"},
    OrderRow{"zonelist ZoneListHeight",                         "zonelist ZoneListPageGaucheX"},
    OrderRow{"zonelist ZoneListPageGaucheHeight",               "zonelist ZoneListPageDroiteX"},
    OrderRow{"zonelist ZoneListPageDroiteHeight",               "horitontal BlockMainX"},
    OrderRow{"horitontal BlockMainX",                           "horitontal BlockCommandY"},
    OrderRow{"horitontal BlockCommandY",                        "zonelist ZoneListNavigationBackx"},
    OrderRow{"zonelist ZoneListNavigationBackHeight",           "zonelist ZoneListNavigationPreviewPagex"},
    OrderRow{"zonelist ZoneListNavigationNextPageHeight",       "BlockPlaylist BlockPlaylistPlaylistX"},
    OrderRow{"BlockPlaylist BlockPlaylistPlaylistFontDecal",    "BlockPlaylist BlockPlaylistPlaylistFontSizeHilight"},
    OrderRow{"BlockPlaylist BlockPlaylistPlaylistFontDecalHilight", "BlockMain BlockMainInsertCoinX"},
    OrderRow{"BlockMain BlockMainInsertCoinFontSize",           "BlockMain BlockMainRemainX"},
    OrderRow{"BlockMain BlockMainInfosZoneLigne2H",             "BlockMain BlockMainBtnPreviewX"},
    OrderRow{"BlockMain BlockMainBtnNextH",                     "BlockPlaylist BlockPlaylistBtnDownX"},
    OrderRow{"BlockPlaylist BlockPlaylistBtnSaveH",             "zonelist ZoneListNbTracksParColonne"},
    OrderRow{"zonelist ZoneListNbTracksParColonne",             "zonelist ZoneListPisteNumSaisieFontSize"},
    OrderRow{"zonelist ZoneListPisteTitreInterpreteFontSize",   "zonelist ZoneListPisteTitreTitreFontSizeHilight"},
    OrderRow{"zonelist ZoneListPisteTitreInterpreteFontSizeHilight", "zonecommand BlockCommandListBoxTexteX"},
    OrderRow{"zonecommand BlockCommandListBoxChoiceTexteFontSizeHilight", "zonecommand BlockCommandBtnTexteX"},
    OrderRow{"zonecommand BlockCommandBtnTexteFontSizeHilight", "zonelistGauche1 ZoneListPisteNumSaisieX"},
    OrderRow{"zonelistGauche1 ZoneListPisteNumSaisieH",         "zonelistGauche1 ZoneListPisteNumPisteX"},
    OrderRow{"zonelistGauche1 ZoneListPisteNumPisteH",          "zonelistGauche1 ZoneListPisteCoverX"},
    OrderRow{"zonelistGauche1 ZoneListPisteCoverH",             "zonelistGauche1 ZoneListPisteTitreX"},
    OrderRow{"zonelistGauche1 ZoneListPisteTitreH",             "zonelistGauche1 ZoneListPisteHilightX"},
    OrderRow{"zonelistGauche1 ZoneListPisteHilightH",           "zonelistGauche2 ZoneListPisteNumSaisieX"},
    OrderRow{"zonelistGauche2 ZoneListPisteHilightH",           "zonelistGauche10 ZoneListPisteNumSaisieX"},
    OrderRow{"zonelistGauche10 ZoneListPisteHilightH",          "zonelistDroite1 ZoneListPisteNumSaisieX"},
    OrderRow{"zonelistDroite9 ZoneListPisteHilightH",           "zonelistDroite10 ZoneListPisteNumSaisieX"}));
// clang-format on

struct FaultRow {
    const char* value;
    int error;
};

class ThemeNumbers : public LoadThemeTest, public testing::WithParamInterface<FaultRow> {};

TEST_P(ThemeNumbers, AFaultyNumberEndsTheProgramAndIsTold) {
    const FaultRow& row = GetParam();
    for (const auto& [section, key] : {std::pair{u"BlockMain"_s, u"BlockMainRemainW"_s},
                                       std::pair{u"zonelistDroite10"_s, u"ZoneListPisteCoverY"_s}}) {
        Jukebox faulty;
        faulty.SetTheme(section, key, QString::fromLatin1(row.value));
        const auto stop = StopOf([&] { faulty.Start(); });
        ASSERT_TRUE(stop) << row.value;
        EXPECT_EQ(stop->error.number, row.error) << row.value;
        EXPECT_TRUE(stop->error.detail.contains(u'[' + section + u"] "_s + key))
            << stop->error.detail.toStdString();
    }
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(Values, ThemeNumbers, testing::Values(
    FaultRow{"",       13},
    FaultRow{"wide",   13},
    FaultRow{"12px",   13},
    FaultRow{"1 2",    13},
    FaultRow{"\"12\"", 13},
    FaultRow{"1,5",    13},
    FaultRow{"32768",   6},
    FaultRow{"-32769",  6},
    FaultRow{"32767.5", 6},
    FaultRow{"1e5",     6}));
// clang-format on

TEST_F(LoadThemeTest, NumbersMayBeWrittenInSeveralWays) {
    box.SetTheme(u"BlockMain"_s, u"BlockMainBtnPreviewX"_s, u"  -7 "_s);
    box.SetTheme(u"BlockMain"_s, u"BlockMainBtnPreviewY"_s, u"2.5"_s);
    box.SetTheme(u"BlockMain"_s, u"BlockMainBtnPreviewW"_s, u"3.5"_s);
    box.SetTheme(u"BlockMain"_s, u"BlockMainBtnPreviewH"_s, u"+1e1"_s);
    box.Start();
    EXPECT_EQ(box.form.theme.BlockMainBtnPreview.X, -7);
    EXPECT_EQ(box.form.theme.BlockMainBtnPreview.Y, 2);
    EXPECT_EQ(box.form.theme.BlockMainBtnPreview.W, 4);
    EXPECT_EQ(box.form.theme.BlockMainBtnPreview.H, 10);
}

TEST_F(LoadThemeTest, AFontOrAColourMayBeMissingUntilItIsNeeded) {
    box.RemoveTheme(u"zonelist"_s, u"ZoneListPisteNumSaisieFont"_s);
    box.RemoveTheme(u"zonelist"_s, u"ZoneListPisteNumSaisieFontColor"_s);
    EXPECT_FALSE(StopOf([&] { box.Start(); }));
    EXPECT_EQ(box.form.theme.ZoneListPisteNumSaisieFont.Font, QString());

    box.Track(u"Song.mp3"_s);
    const auto stop = StopOf([&] { box.Start(); });
    ASSERT_TRUE(stop);
    EXPECT_EQ(stop->routine, u"DrawText"_s);
}

// --- Assets --------------------------------------------------------------------------------------

TEST_F(LoadThemeTest, ASecondLoadMakesTheSoundsAnewAndAddsTheFontsAgain) {
    box.Start();
    const auto first = box.form.assets.SoundPageTurn;
    const auto firstPosition = box.form.assets.SoundPageTurnPosition;
    LoadTheme(box.form);
    EXPECT_NE(box.form.assets.SoundPageTurn, first);
    EXPECT_NE(box.form.assets.SoundPageTurnPosition, firstPosition);
    EXPECT_EQ(CallsOf(u"AddFontResource"_s).size(), 2);
    EXPECT_EQ(CallsOf(u"SoundCharge"_s).size(), 2);
}

TEST_F(LoadThemeTest, SoundsAreRenderedInOrderAndAllButTheFirstHaveAPosition) {
    box.Start();
    QStringList files;
    for (const QJsonArray& call : box.platform.calls.Entries()) {
        if (call[1] == u"RenderFile"_s) {
            files += call[0].toString() + u' ' + call[2].toString().section(u'/', -1);
        }
    }
    EXPECT_EQ(files, QStringList({u"SoundCharge charge.mp3"_s, u"SoundInsertCoin insertcoin.mp3"_s,
                                  u"SoundMove move.mp3"_s, u"SoundNoCredit NoCredit.mp3"_s,
                                  u"SoundPageTurn PageTurn.mp3"_s}));
    EXPECT_TRUE(box.form.assets.SoundCharge && box.form.assets.SoundInsertCoinPosition &&
                box.form.assets.SoundMovePosition && box.form.assets.SoundNoCreditPosition &&
                box.form.assets.SoundPageTurnPosition);
}

TEST_F(LoadThemeTest, APictureThatHasGoneDoesNotEndASecondLoad) {
    box.Start();
    const int width = box.form.frame.Picture_Main.Width();
    QFile::remove(box.Home(u"themes/default/fade.png"_s));
    EXPECT_FALSE(StopOf([&] { LoadTheme(box.form); }));
    EXPECT_EQ(box.form.frame.Picture_Main.Width(), width);
}

TEST_F(LoadThemeTest, ASecondLoadForgetsTheLabelsThatWereFilledIn) {
    box.RemoveTheme(u"zonelistGauche1"_s, u"ZoneListPisteNumSaisieLibele"_s);
    box.Track(u"Song.mp3"_s);
    box.Start();
    ASSERT_EQ(box.form.slots.ZoneListPisteNumSaisieLibele(1, 1), u"A0"_s);
    QFile::remove(box.Music(u"Song.mp3"_s));
    LoadTheme(box.form);
    EXPECT_EQ(box.form.slots.ZoneListPisteNumSaisieLibele(1, 1), QString());
}

TEST_F(LoadThemeTest, TheFirstFrameIsDrawnWithoutARememberedSlot) {
    box.Track(u"Song.mp3"_s);
    box.Start();
    box.form.shell.IdleTicks = 50;
    LoadTheme(box.form);
    EXPECT_EQ(box.form.shell.IdleTicks, 1); // the frame found a slot that it had not shown before
    EXPECT_EQ(box.form.frame.LastDrawnSlot, 0);
}

TEST_F(LoadThemeTest, HalftoneIsForTheCachesAlwaysAndForTheScreenWhenItIsScaled) {
    box.Start();
    EXPECT_EQ(box.form.frame.Picture_Main.stretchMode, kStretchFast);
    for (const Surface* cache : {&box.form.frame.Picture_Cache, &box.form.frame.Picture_CacheHilight,
                                 &box.form.frame.Picture_CacheTmp, &box.form.frame.Picture_CacheTmp2}) {
        EXPECT_EQ(cache->stretchMode, kStretchHalftone);
    }
    Jukebox scaled(QSize(1280, 720));
    scaled.Start();
    EXPECT_EQ(scaled.form.frame.Picture_Main.stretchMode, kStretchHalftone);
}

// Deliberate D-07: the value sets the width; the height stays as the previous load left it.
TEST_F(LoadThemeTest, AValueForTheVideoHeightLeavesTheHeightOfTheLoadBefore) {
    box.Start();
    ASSERT_EQ(box.form.frame.Picture_MainVideo.Height, 360);
    box.form.settings.VideoPositionHeight = u"400"_s;
    LoadTheme(box.form);
    EXPECT_EQ(box.form.frame.Picture_MainVideo.Width, 400);
    EXPECT_EQ(box.form.frame.Picture_MainVideo.Height, 360);
}

TEST_F(LoadThemeTest, TheDragOffsetOfTheQueueStartsAtZero) {
    box.Start();
    box.form.touch.TouchScrollOffset = 30;
    LoadTheme(box.form);
    EXPECT_EQ(box.form.touch.TouchScrollOffset, 0);
}

} // namespace
