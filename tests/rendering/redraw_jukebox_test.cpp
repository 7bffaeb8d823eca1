// The whole frame: its steps, repairing the cursor, scaled texts of the Main block, the selected slot.
#include "rendering/redraw_jukebox.h"

#include "rendering/track_zone.h"
#include "support/jukebox.h"

#include <gtest/gtest.h>

#include <QJsonArray>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr QRgb kAmber = qRgb(255, 184, 46); // the background of a selected slot in the test theme

class Frame : public testing::Test {
protected:
    // Starts with this many tracks on pages of two columns with this many rows each.
    void StartWith(Jukebox& box, int tracks, int rows = 10) {
        box.SetTheme(u"zonelist"_s, u"ZoneListNbTracksParColonne"_s, QString::number(rows));
        for (int track = 0; track < tracks; ++track) {
            box.Track(u"%1.mp3"_s.arg(100 + track));
        }
        box.Start();
    }
    // Returns the log lines of one more frame, with each drawn text reduced to its words.
    QStringList LogOfFrame(Jukebox& box) {
        const qsizetype before = box.Log().size();
        RedrawJukebox(box.form);
        QStringList lines = box.Log().mid(before);
        for (QString& line : lines) {
            if (line.startsWith(u" : DrawText ("_s)) {
                line = line.mid(13).section(u',', 0, 0);
            }
        }
        return lines;
    }
};

TEST_F(Frame, TheMainBlocksLinesAreDrawnBeforeAndAfterItsBoxes) {
    Jukebox box;
    box.SetKey(u"config.ini"_s, u"Main"_s, u"ManageCoin"_s, u"true"_s);
    StartWith(box, 1);
    EXPECT_EQ(LogOfFrame(box),
              QStringList({u" : RedrawJukebox"_s, u" : BlockMainRedrawInfos"_s, u"PLEASE"_s, u"INSERT COIN"_s,
                           u"0"_s, QString(), u" : BlockMainRedrawInfos"_s, u"PLEASE"_s, u"INSERT COIN"_s}));
}

TEST_F(Frame, WithoutCoinsNoCreditsAreWritten) {
    Jukebox box;
    StartWith(box, 1);
    EXPECT_EQ(LogOfFrame(box), QStringList({u" : RedrawJukebox"_s, u" : BlockMainRedrawInfos"_s, u"PLEASE"_s,
                                            u"SELECT A TRACK"_s, QString(), u" : BlockMainRedrawInfos"_s,
                                            u"PLEASE"_s, u"SELECT A TRACK"_s}));
}

TEST_F(Frame, WithoutTheMainBlockAFrameWritesNoText) {
    Jukebox box;
    box.SetKey(u"config.ini"_s, u"Main"_s, u"ShowMainZone"_s, u"false"_s);
    box.SetKey(u"config.ini"_s, u"Main"_s, u"ManageCoin"_s, u"true"_s);
    StartWith(box, 1);
    EXPECT_EQ(LogOfFrame(box), QStringList{u" : RedrawJukebox"_s});
}

TEST_F(Frame, TextsOnTheScreenAreScaledWithTheirFonts) {
    Jukebox box(QSize(1280, 720));
    box.SetKey(u"config.ini"_s, u"Main"_s, u"ManageCoin"_s, u"true"_s);
    StartWith(box, 1);
    const QStringList texts = box.DrawnTexts();
    EXPECT_TRUE(texts.contains(u"PLEASE,912,10,352,28,Vantorix Test,18,172,186,204,center,center"_s));
    EXPECT_TRUE(texts.contains(u"INSERT COIN,912,40,352,28,Vantorix Test,18,244,242,234,center,center"_s));
    EXPECT_TRUE(texts.contains(u"0,920,84,104,40,Vantorix Test,18,255,184,46,center,center"_s));
    EXPECT_TRUE(texts.contains(u",1048,84,208,40,Vantorix Test,18,244,242,234,center,center"_s));
}

// Scaled by 1.25: sizes and positions are rounded half to even.
TEST_F(Frame, ScaledTextsAreRoundedHalfToEven) {
    Jukebox box(QSize(800, 450));
    StartWith(box, 1);
    // 456 x 1.25 = 570, 20 x 1.25 = 25, 176 x 1.25 = 220, 14 x 1.25 = 17.5, 9 x 1.25 = 11.25.
    EXPECT_TRUE(box.DrawnTexts().contains(
        u"SELECT A TRACK,570,25,220,18,Vantorix Test,11,244,242,234,center,center"_s));
    // 524 x 1.25 = 655, 42 x 1.25 = 52.5.
    EXPECT_TRUE(box.DrawnTexts().contains(u",655,52,130,25,Vantorix Test,11,244,242,234,center,center"_s));
}

// --- The cursor ----------------------------------------------------------------------------------

struct CursorRow {
    float x;
    float y;
    float repairedX;
    float repairedY;
    int slot;
};

class CursorRepair : public Frame, public testing::WithParamInterface<CursorRow> {};

// Seven tracks on a page of two columns of five rows: the right column holds two.
TEST_P(CursorRepair, TheCursorWalksBackToTheLastEntry) {
    Jukebox box;
    StartWith(box, 7, 5);
    box.form.cursor.SelX = GetParam().x;
    box.form.cursor.SelY = GetParam().y;
    RedrawJukebox(box.form);
    EXPECT_EQ(box.form.cursor.SelX, GetParam().repairedX);
    EXPECT_EQ(box.form.cursor.SelY, GetParam().repairedY);
    EXPECT_EQ(box.form.library.NumTrack, GetParam().slot);
    EXPECT_EQ(box.form.library.CurrentPage, 0);
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(Places, CursorRepair, testing::Values(
    CursorRow{ 1,  1, 1, 1, 0},
    CursorRow{ 1,  5, 1, 5, 4},
    CursorRow{ 2,  2, 2, 2, 6},
    CursorRow{ 2,  3, 2, 2, 6},
    CursorRow{ 2,  5, 2, 2, 6},
    CursorRow{ 0,  3, 1, 3, 2},
    CursorRow{-4, -4, 1, 1, 0},
    CursorRow{ 2,  0, 2, 1, 5}));
// clang-format on

TEST_F(Frame, TheWalkGoesFromTheRightColumnIntoTheLeft) {
    Jukebox box;
    StartWith(box, 23, 10);
    box.form.library.CurrentPage = 1; // three entries
    DrawZoneList(box.form);
    box.form.cursor.SelX = 2;
    box.form.cursor.SelY = 4;
    RedrawJukebox(box.form);
    EXPECT_EQ(box.form.cursor.SelX, 1);
    EXPECT_EQ(box.form.cursor.SelY, 3);
    EXPECT_EQ(box.form.library.NumTrack, 2);
    EXPECT_EQ(box.form.library.CurrentPage, 1);
}

TEST_F(Frame, AnEmptyPageBehindTheLastGivesWayToTheFirst) {
    Jukebox box;
    StartWith(box, 5, 2);
    box.form.library.CurrentPage = 2;
    box.form.cursor.SelX = 2;
    box.form.cursor.SelY = 2;
    DrawZoneList(box.form);
    ASSERT_EQ(box.form.library.InfoPath(0), QString());
    const qsizetype before = box.Log().count(u" : DrawZoneList"_s);
    RedrawJukebox(box.form);
    EXPECT_EQ(box.form.library.CurrentPage, 0);
    EXPECT_EQ(box.form.cursor.SelX, 1);
    EXPECT_EQ(box.form.cursor.SelY, 1);
    EXPECT_EQ(box.form.library.InfoTitre(0), u"100.mp3"_s);
    EXPECT_EQ(box.form.library.NumTrack, 4); // the value that painting the page left
    EXPECT_EQ(box.Log().count(u" : DrawZoneList"_s), before + 1);
}

TEST_F(Frame, AnEmptyFolderLeavesTheCursorAtTheEndOfPageZero) {
    Jukebox box;
    StartWith(box, 0, 5);
    EXPECT_EQ(box.form.library.CurrentPage, 0);
    EXPECT_EQ(box.form.library.NbPages, 0);
    EXPECT_EQ(box.form.cursor.SelX, 2);
    EXPECT_EQ(box.form.cursor.SelY, 5);
    EXPECT_EQ(box.form.library.NumTrack, 0);
    // Repairing the first frame painted the page a second time.
    EXPECT_EQ(box.Log().count(u" : DrawZoneList"_s), 2);
}

TEST_F(Frame, OnlyAnotherSlotUnderTheCursorEndsTheIdleTime) {
    Jukebox box;
    StartWith(box, 3);
    box.form.shell.IdleTicks = 40;
    RedrawJukebox(box.form);
    EXPECT_EQ(box.form.shell.IdleTicks, 40);
    box.form.cursor.SelY = 3;
    RedrawJukebox(box.form);
    EXPECT_EQ(box.form.shell.IdleTicks, 1);
    EXPECT_EQ(box.form.frame.LastDrawnSlot, 2);
}

// --- The remaining time --------------------------------------------------------------------------

struct RemainRow {
    double length;
    const char* remain;
};

class FrameRemain : public Frame, public testing::WithParamInterface<RemainRow> {};

TEST_P(FrameRemain, MinutesAreCutAndSecondsRounded) {
    Jukebox box;
    StartWith(box, 1);
    box.form.player.IsPlaying = -1;
    box.form.player.TrackLengthSeconds = GetParam().length;
    RedrawJukebox(box.form);
    EXPECT_EQ(box.form.player.Remain, QString::fromLatin1(GetParam().remain));
    EXPECT_EQ(box.form.player.TrackPositionSeconds, 0);
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(Lengths, FrameRemain, testing::Values(
    RemainRow{   0,    "00:00"},
    RemainRow{  59.4,  "00:59"},
    RemainRow{  59.5,  "00:60"},
    RemainRow{  60,    "01:00"},
    RemainRow{ 200.5,  "03:21"},
    RemainRow{6000,    "100:00"}));
// clang-format on

TEST_F(Frame, WithNothingPlayingTheRemainingTimeIsEmptied) {
    Jukebox box;
    StartWith(box, 1);
    box.form.player.Remain = u"01:00"_s;
    RedrawJukebox(box.form);
    EXPECT_EQ(box.form.player.Remain, QString());
}

// --- The selected slot ---------------------------------------------------------------------------

// Deliberate D-14: the zone's corner is added unscaled to the scaled slot.
TEST_F(Frame, TheSelectedSlotStandsAtItsScaledPlacePlusTheUnscaledCorner) {
    Jukebox box(QSize(1280, 720));
    box.SetTheme(u"zonelist"_s, u"ZoneListX"_s, u"10"_s);
    box.SetTheme(u"zonelist"_s, u"ZoneListY"_s, u"20"_s);
    StartWith(box, 1);
    ASSERT_EQ(box.form.frame.ZoneScaleX, 2.0);
    QRect amber;
    for (int y = 0; y < 720; ++y) {
        for (int x = 0; x < 896; ++x) {
            amber = box.form.frame.Picture_Main.picture.pixel(x, y) == kAmber
                        ? amber.united(QRect(x, y, 1, 1))
                        : amber;
        }
    }
    // The slot's rectangle is (4, 3, 216, 32); its background is amber up to the edges.
    EXPECT_EQ(amber, QRect(4 * 2 + 10, 3 * 2 + 20, 216 * 2, 32 * 2));
}

TEST_F(Frame, OnlyTheListZoneShowsASelectedSlot) {
    Jukebox box;
    StartWith(box, 1);
    ASSERT_EQ(box.form.frame.Picture_Main.picture.pixel(150, 5), kAmber);
    box.form.cursor.ActiveZone = u"main"_s;
    RedrawJukebox(box.form);
    EXPECT_NE(box.form.frame.Picture_Main.picture.pixel(150, 5), kAmber);
    box.form.cursor.ActiveZone = u"list"_s;
    box.form.settings.TactileMode = u"true"_s;
    RedrawJukebox(box.form);
    EXPECT_NE(box.form.frame.Picture_Main.picture.pixel(150, 5), kAmber);
}

// Half of 5 and half of 341 are rounded after the zone's corner is added, as for the slots: 2.5 + 1 and 170.5
// + 1 become 4 and 172.
TEST_F(Frame, ATouchMarkIsRoundedOnceWithTheZonesCorner) {
    Jukebox box(QSize(320, 180));
    box.SetTheme(u"zonelist"_s, u"ZoneListX"_s, u"1"_s);
    box.SetTheme(u"zonelist"_s, u"ZoneListY"_s, u"1"_s);
    box.SetTheme(u"zonelist"_s, u"ZoneListNavigationBackx"_s, u"5"_s);
    box.SetTheme(u"zonelist"_s, u"ZoneListNavigationBackY"_s, u"341"_s);
    box.SetTheme(u"zonelist"_s, u"ZoneListNavigationBackWidth"_s, u"50"_s);
    box.SetTheme(u"zonelist"_s, u"ZoneListNavigationBackHeight"_s, u"10"_s);
    StartWith(box, 1);
    ASSERT_EQ(box.form.frame.ZoneScaleX, 0.5);
    box.form.settings.TactileMode = u"true"_s;
    RedrawJukebox(box.form);
    const QImage without = box.form.frame.Picture_Main.picture.copy();
    box.form.library.DirLevel = 1;
    RedrawJukebox(box.form);
    QRect mark;
    for (int y = 0; y < 180; ++y) {
        for (int x = 0; x < 320; ++x) {
            const bool same = box.form.frame.Picture_Main.picture.pixel(x, y) == without.pixel(x, y);
            mark = same ? mark : mark.united(QRect(x, y, 1, 1));
        }
    }
    EXPECT_EQ(mark, QRect(4, 172, 25, 5));
}

// Without "main.png" the focused look has no size to copy; a size of 0 means the picture's own size.
TEST_F(Frame, WithoutTheMainPictureItsFocusedLookKeepsItsOwnSize) {
    Jukebox box(QSize(960, 480));
    QFile::remove(box.Home(u"themes/default/main.png"_s));
    box.SetKey(u"config.ini"_s, u"Main"_s, u"PositionWidth"_s, u"960"_s);
    box.SetKey(u"config.ini"_s, u"Main"_s, u"PositionHeight"_s, u"480"_s);
    StartWith(box, 1);
    ASSERT_EQ(box.form.frame.ZoneScaleX, 2.0);
    box.form.settings.ActiveMainZone = u"false"_s;
    box.form.cursor.ActiveZone = u"main"_s;
    RedrawJukebox(box.form);
    const QImage look(box.Home(u"themes/default/main_active_selected.png"_s));
    const QRect part(0, 60, 64, 20);
    EXPECT_EQ(box.form.frame.Picture_Main.picture.copy(part.translated(896, 0)),
              look.convertToFormat(QImage::Format_RGB32).copy(part));
}

// --- The big cover -------------------------------------------------------------------------------

constexpr QRgb kRed = qRgb(200, 0, 0);
// On the background of the menu's first row.
constexpr QPoint kInMenu(530, 255);

class BigCover : public Frame {
protected:
    void SetUp() override {
        StartWith(box, 1);
        menu_ = At(kInMenu);
        box.form.settings.ShowBigCover = u"true"_s;
        box.form.frame.CoverKind = 2;
        Resize(box.form.frame.Picture_TmpCover, 10, 10);
        box.form.frame.Picture_TmpCover.picture.fill(kRed);
    }
    QRgb At(const QPoint& place) const { return box.form.frame.Picture_Main.picture.pixel(place); }
    void Redraw(int idleTicks) {
        box.form.shell.IdleTicks = idleTicks;
        RedrawJukebox(box.form);
    }
    bool ShowsMenu() const { return At(kInMenu) == menu_; }

    Jukebox box;

private:
    QRgb menu_ = 0;
};

TEST_F(BigCover, ItFillsTheMenusBlockButForTenPixelsAtEachSide) {
    Redraw(19);
    QRect red;
    for (int y = 0; y < 360; ++y) {
        for (int x = 0; x < 640; ++x) {
            red = At(QPoint(x, y)) == kRed ? red.united(QRect(x, y, 1, 1)) : red;
        }
    }
    EXPECT_EQ(red, QRect(448 + 10, 240 + 10, 192 - 20, 120 - 20));
}

TEST_F(BigCover, TheMenuComesBackOneTickAfterTheCoverHasGone) {
    box.form.frame.Picture_Command.picture.fill(qRgb(0, 90, 0));
    Redraw(20);
    EXPECT_NE(At(kInMenu), kRed);
    EXPECT_NE(At(kInMenu), qRgb(0, 90, 0));
    Redraw(21);
    EXPECT_EQ(At(kInMenu), qRgb(0, 90, 0));
}

TEST_F(BigCover, ACoverFromAFileIsDrawnWhole) {
    const PicturePorts ports{box.form.files, box.form.zlib, box.form.pump, box.form.pictures};
    ASSERT_TRUE(
        box.form.frame.ImgCover.LoadPicture_File(ports, box.Home(u"themes/default/zonelist_hilight.png"_s)));
    box.form.frame.CoverKind = 1;
    Redraw(1);
    EXPECT_FALSE(ShowsMenu());
    EXPECT_EQ(At(QPoint(458 + 60, 250 + 4)), kAmber);
}

TEST_F(BigCover, WithoutACoverTheMenuStays) {
    box.form.frame.CoverKind = 0;
    Redraw(1);
    EXPECT_TRUE(ShowsMenu());
}

TEST_F(BigCover, TheMenuStaysInTouchModeInAnotherZoneAndWithoutTheSetting) {
    box.form.settings.TactileMode = u"true"_s;
    Redraw(1);
    EXPECT_TRUE(ShowsMenu());
    box.form.settings.TactileMode = u"false"_s;
    box.form.cursor.ActiveZone = u"main"_s;
    Redraw(1);
    EXPECT_TRUE(ShowsMenu());
    box.form.cursor.ActiveZone = u"list"_s;
    box.form.settings.ShowBigCover = u"false"_s;
    Redraw(1);
    EXPECT_TRUE(ShowsMenu());
    box.form.settings.ShowBigCover = u"true"_s;
    Redraw(1);
    EXPECT_FALSE(ShowsMenu());
}

// --- Pointers ------------------------------------------------------------------------------------

TEST_F(Frame, EveryFrameGivesThreeObjectsTheirPointer) {
    Jukebox box;
    StartWith(box, 1);
    for (const auto& [mode, pointer] :
         {std::pair{u"false"_s, 99}, std::pair{u"true"_s, 0}, std::pair{u"no"_s, 0}}) {
        box.form.settings.TactileMode = mode;
        box.platform.calls.Clear();
        RedrawJukebox(box.form);
        QStringList objects;
        for (const QJsonArray& call : box.platform.calls.Entries()) {
            if (call[0] == u"MousePointer"_s && call[2] == pointer) {
                objects += call[1].toString();
            }
        }
        EXPECT_EQ(objects.size(), 3) << mode.toStdString();
        EXPECT_TRUE(objects.contains(u"Picture_Main"_s) && objects.contains(u"Picture_MainVideo"_s));
    }
}

} // namespace
