// The menus that no key reaches: what their rows write, and the way back to the first menu.
#include "interaction/menu.h"

#include "support/error_of.h"
#include "support/jukebox.h"

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace {

QString ConfigIni(const Jukebox& box) {
    QFile file(box.Home(u"config.ini"_s));
    file.open(QIODevice::ReadOnly);
    return QString::fromUtf8(file.readAll());
}

// A row of the second menu: the choice taken, and the line it writes.
struct WritingRow {
    int row;
    int choice;
    const char* oldKey;
    const char* line;
};

class SecondMenu : public testing::TestWithParam<WritingRow> {};

TEST_P(SecondMenu, ARowWritesItsChoiceUnderItsOwnSpelling) {
    const WritingRow& row = GetParam();
    Jukebox box;
    // With an empty list the frame would draw the zone a second time.
    box.Track(u"a.mp3"_s);
    box.SetKey(u"pathconfig.ini"_s, box.Music(), u"Order"_s, u"alpha"_s);
    box.RemoveKey(u"config.ini"_s, u"Main"_s, QString::fromLatin1(row.oldKey));
    box.Start();
    box.form.menu.CommandCurrentMenu = 2;
    box.form.menu.CommandCurrentId = row.row;
    box.form.menu.CommandChoice(2, row.row) = row.choice;
    const QString before = ConfigIni(box);
    const qsizetype logged = box.Log().size();
    ValiderCommand(box.form);
    const QString line = QString::fromLatin1(row.line);
    EXPECT_EQ(ConfigIni(box).count(line), 1) << row.line;
    EXPECT_EQ(ConfigIni(box).remove(line).remove(u'\r').remove(u'\n'),
              QString(before).remove(u'\r').remove(u'\n'))
        << "nothing else is written";
    const QStringList log = box.Log().mid(logged);
    EXPECT_EQ(log.first(), u" : ValiderCommand"_s);
    EXPECT_EQ(log.count(u" : Creation de la liste des fichiers (CreateList)"_s), row.row == 3 ? 1 : 0);
    EXPECT_EQ(log.count(u" : DrawZoneList"_s), 1);
    EXPECT_EQ(log.count(u" : DrawCommand"_s), 2) << "one of them by DrawZoneList";
    EXPECT_EQ(log.count(u" : RedrawJukebox"_s), 1);
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(Rows, SecondMenu, testing::Values(
    WritingRow{1, 1, "ManageCoin",          "ManageCoin=true"},
    WritingRow{2, 2, "PlayTransitionSound", "PlayTransitionSound=false"},
    WritingRow{3, 2, "DefaultOrder",        "Defaultorder=playcount"},
    WritingRow{4, 2, "ShowFolderCover",     "Showfoldercover=false"},
    WritingRow{5, 2, "ShowFileCover",       "Showfilecover=false"},
    WritingRow{6, 2, "ShowCover",           "Showcover=false"},
    WritingRow{7, 1, "ShowBigCover",        "Showbigcover=true"},
    WritingRow{8, 2, "ShowMp3CoverTag",     "Showmp3covertag=false"},
    WritingRow{9, 2, "ShowTrackNum",        "Showtracknum=false"}));
// clang-format on

void Choose(Form_Main& form, int row, int choice) {
    form.menu.CommandCurrentMenu = 2;
    form.menu.CommandCurrentId = row;
    form.menu.CommandChoice(2, row) = choice;
    ValiderCommand(form);
}

TEST(SecondMenuState, CoinsAndSoundsHoldAtOnceAndCreditsAreKept) {
    Jukebox box;
    box.Start();
    box.form.coins.Credits = 4;
    Choose(box.form, 1, 1);
    EXPECT_EQ(box.form.settings.ManageCoin, u"true"_s);
    EXPECT_EQ(box.form.coins.Credits, 4);
    Choose(box.form, 2, 2);
    EXPECT_EQ(box.form.settings.PlayTransitionSound, u"false"_s);
}

// A list uses the order of its folder or the default order as it was read at start-up.
TEST(SecondMenuState, ANewDefaultOrderHoldsFromTheNextStart) {
    Jukebox box;
    box.Start();
    Choose(box.form, 3, 2);
    EXPECT_EQ(box.form.library.Order, u"alpha"_s);
    EXPECT_EQ(box.form.settings.DefaultOrder, u"alpha"_s);
}

TEST(SecondMenuState, AFoldersDrawingTakesTheNewSettingAtOnce) {
    Jukebox box;
    box.Start();
    ASSERT_EQ(box.form.settings.ShowTrackNum, u"true"_s);
    Choose(box.form, 9, 2);
    EXPECT_EQ(box.form.settings.ShowTrackNum, u"false"_s);
}

TEST(ChangeMenu, BackLeadsToTheRowFromWhichTheFirstMenuWasLeft) {
    Jukebox box;
    box.Start();
    Form_Main& form = box.form;
    form.menu.CommandCurrentMenu = 2;
    form.menu.CommandCurrentId = 10;
    ValiderCommand(form);
    EXPECT_EQ(form.menu.CommandCurrentMenu, 1);
    EXPECT_EQ(form.menu.CommandCurrentId, 1) << "the first menu has not been left yet";
    // Adds a row to the first menu that leads to the second one.
    form.menu.CommandAction(1, 4) = u"changecommandcurrentid"_s;
    form.menu.CommandParam(1, 4) = u"2"_s;
    form.menu.CommandCurrentId = 4;
    ValiderCommand(form);
    EXPECT_EQ(form.menu.CommandCurrentMenu, 2);
    EXPECT_EQ(form.menu.CommandCurrentId, 1) << "only the first menu's row is restored";
    form.menu.CommandCurrentId = 10;
    ValiderCommand(form);
    EXPECT_EQ(form.menu.CommandCurrentMenu, 1);
    EXPECT_EQ(form.menu.CommandCurrentId, 4);
}

TEST(ChangeMenu, AWordThatIsNotKnownDoesNothing) {
    Jukebox box;
    box.Start();
    box.form.menu.CommandCurrentMenu = 3;
    box.form.menu.CommandCurrentId = 1;
    const QString before = ConfigIni(box);
    const qsizetype logged = box.Log().size();
    ValiderCommand(box.form);
    EXPECT_EQ(box.Log().mid(logged), QStringList{u" : ValiderCommand"_s});
    EXPECT_EQ(ConfigIni(box), before);
}

TEST(ChangeMenu, ATargetThatIsNoNumberIsError13) {
    Jukebox box;
    box.Start();
    box.form.menu.CommandCurrentMenu = 2;
    box.form.menu.CommandCurrentId = 10;
    box.form.menu.CommandParam(2, 10) = u"first"_s;
    EXPECT_EQ(ErrorOf([&] { ValiderCommand(box.form); }), kTypeMismatch);
    EXPECT_EQ(box.form.menu.CommandCurrentMenu, 2);
}

} // namespace
