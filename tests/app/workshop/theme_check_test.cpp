// Tests of the theme check: every planted mistake is reported with its file, section and key.
#include "app/workshop/theme_check.h"

#include "app/workshop/planted_theme.h"

#include <gtest/gtest.h>

#include <sys/stat.h>

namespace {

// A mistake, and the finding that must report it.
struct Mistake {
    const char* name;
    void (*plant)(PlantedTheme& theme);
    Level level;
    // The end of the finding's path, and parts of its text.
    const char16_t* file;
    std::vector<const char16_t*> words;
};

std::ostream& operator<<(std::ostream& out, const Mistake& mistake) {
    return out << mistake.name;
}

QString All(const std::vector<Finding>& findings) {
    QString all;
    for (const Finding& finding : findings) {
        all +=
            QStringLiteral("%1 %2 %3\n").arg(static_cast<int>(finding.level)).arg(finding.path, finding.text);
    }
    return all;
}

bool Reports(const Finding& finding, const Mistake& mistake) {
    const auto holds = [&](const char16_t* word) { return finding.text.contains(QString::fromUtf16(word)); };
    return finding.level == mistake.level && finding.subject == Subject::kTheme &&
           !finding.advice.isEmpty() && finding.path.endsWith(u'/' + QString::fromUtf16(mistake.file)) &&
           std::all_of(mistake.words.begin(), mistake.words.end(), holds);
}

void SetKey(PlantedTheme& theme, const char* section, const char* key, const char* value) {
    theme.Set(QString::fromLatin1(section), QString::fromLatin1(key), QString::fromLatin1(value));
}

void Replace(PlantedTheme& theme, const char16_t* before, const char16_t* after) {
    theme.SetIni(theme.Ini().replace(QString::fromUtf16(before), QString::fromUtf16(after)));
}

QImage Blank(int width, int height) {
    QImage picture(width, height, QImage::Format_ARGB32);
    picture.fill(Qt::transparent);
    return picture;
}

constexpr auto kIni = u"theme.ini";

#define PLANT [](PlantedTheme & theme)

// clang-format off
const Mistake kMistakes[] = {
    // Keys.
    {"MissingNumber", PLANT { theme.RemoveKey(QStringLiteral("BlockMain"), QStringLiteral("BlockMainRemainX")); },
     Level::kError, kIni, {u"[BlockMain] BlockMainRemainX", u"missing"}},
    {"InvalidNumber", PLANT { SetKey(theme, "zonelistGauche3", "ZoneListPisteCoverW", "wide"); },
     Level::kError, kIni, {u"[zonelistGauche3] ZoneListPisteCoverW", u"\"wide\" is not a whole number"}},
    {"NumberBeyond16Bits", PLANT { SetKey(theme, "horitontal", "BlockMainX", "40000"); },
     Level::kError, kIni, {u"[horitontal] BlockMainX", u"40000", u"outside -32768 to 32767"}},
    {"NumberWithDecimals", PLANT { SetKey(theme, "BlockMain", "BlockMainRemainX", "76.4"); },
     Level::kWarning, kIni, {u"[BlockMain] BlockMainRemainX", u"\"76.4\" is read as 76"}},
    {"MissingSection", PLANT { Replace(theme, u"[zonelistDroite10]", u"; [zonelistDroite10]"); },
     Level::kError, kIni, {u"[zonelistDroite10]: the section is missing"}},
    {"SpelledHorizontal", PLANT { Replace(theme, u"[horitontal]", u"[horizontal]"); },
     Level::kError, kIni, {u"[horitontal]: the section is missing", u"BlockMainX"}},
    {"UnknownSection", PLANT { Replace(theme, u"[vertical]", u"[Extra]\nA=1\n[vertical]"); },
     Level::kWarning, kIni, {u"[Extra]", u"nothing reads this section"}},
    {"SectionTwice", PLANT { theme.SetIni(theme.Ini() + QStringLiteral("\n[BlockMain]\nBlockMainRemainX=3\n")); },
     Level::kWarning, kIni, {u"[BlockMain]", u"occurs twice"}},
    {"KeyTwice", PLANT { Replace(theme, u"[vertical]\n", u"[vertical]\nBlockMainX=1\n"); },
     Level::kWarning, kIni, {u"[vertical] BlockMainX", u"line", u"occurs twice"}},
    {"UnknownKey", PLANT { SetKey(theme, "BlockMain", "BlockMainColour", "1"); },
     Level::kNote, kIni, {u"[BlockMain] BlockMainColour", u"nothing reads this key"}},
    {"KeyInWrongSection", PLANT { SetKey(theme, "zonelist", "BlockMainRemainX", "76"); },
     Level::kWarning, kIni, {u"[zonelist] BlockMainRemainX", u"wrong section"}},
    {"KeyAboveTheSections", PLANT { theme.SetIni(QStringLiteral("Author=me\n") + theme.Ini()); },
     Level::kWarning, kIni, {u"[] Author", u"above the first section"}},
    {"LineWithoutEquals", PLANT { Replace(theme, u"BlockMainRemainY=42", u"BlockMainRemainY 42"); },
     Level::kWarning, kIni, {u"[BlockMain] BlockMainRemainY 42", u"ignored"}},
    {"ColourOfTwoNumbers", PLANT { SetKey(theme, "BlockMain", "BlockMainRemainFontColor", "255,0"); },
     Level::kError, kIni, {u"[BlockMain] BlockMainRemainFontColor", u"\"255,0\""}},
    {"ColourAbove255", PLANT { SetKey(theme, "zonelist", "ZoneListPisteTitreTitreFontColor", "300,0,0"); },
     Level::kWarning, kIni, {u"[zonelist] ZoneListPisteTitreTitreFontColor", u"limited to 255"}},
    {"EmptyFont", PLANT { SetKey(theme, "keyboard", "TitleFont", ""); },
     Level::kWarning, kIni, {u"[keyboard] TitleFont", u"no font name"}},
    {"InvalidSlotKeys", PLANT { SetKey(theme, "zonelistGauche1", "ZoneListPisteNumSaisieKeys", "33,49"); },
     Level::kWarning, kIni, {u"[zonelistGauche1] ZoneListPisteNumSaisieKeys", u"\"33,49\""}},
    {"ByteOrderMark", PLANT { theme.Write(QStringLiteral("theme.ini"), "\xEF\xBB\xBF" + theme.Read(QStringLiteral("theme.ini"))); },
     Level::kNote, kIni, {u"byte order mark"}},
    {"OldEncoding", PLANT { theme.Write(QStringLiteral("theme.ini"), "; \xE9t\xE9\n" + theme.Read(QStringLiteral("theme.ini"))); },
     Level::kNote, kIni, {u"Windows-1252"}},
    {"Utf16", PLANT { theme.Write(QStringLiteral("theme.ini"), "\xFF\xFE[\0z\0"); },
     Level::kError, kIni, {u"UTF-16"}},
    {"NoThemeFile", PLANT { theme.Remove(QStringLiteral("theme.ini")); },
     Level::kError, kIni, {u"no file theme.ini"}},
    {"MissingBoardKey", PLANT { theme.RemoveKey(QStringLiteral("keyboard"), QStringLiteral("KeyKey2-5")); },
     Level::kError, kIni, {u"[keyboard] KeyKey2-5", u"missing"}},
    {"BoardOfTooManyLines", PLANT { SetKey(theme, "keyboard", "KeyNbLines", "101"); },
     Level::kError, kIni, {u"[keyboard] KeyNbLines", u"more than 100"}},
    {"BoardKeysBeyondTheLine", PLANT { SetKey(theme, "keyboard", "KeyNbCols1", "9"); },
     Level::kNote, kIni, {u"[keyboard] KeyX1-10", u"fewer lines or columns"}},
    // Pictures.
    {"MissingPicture", PLANT { theme.Remove(QStringLiteral("command_btn.png")); },
     Level::kWarning, u"command_btn.png", {u"missing"}},
    {"MissingBar", PLANT { theme.Remove(QStringLiteral("playlist_playlisthilight.png")); },
     Level::kError, u"playlist_playlisthilight.png", {u"missing", u"locks up"}},
    {"BrokenPicture", PLANT { theme.Write(QStringLiteral("zonelist.png"), theme.Read(QStringLiteral("zonelist.png")).left(60)); },
     Level::kWarning, u"zonelist.png", {u"cannot be read"}},
    {"PictureOfAnotherKind", PLANT { QImage(theme.Path(QStringLiteral("fade.png"))).save(theme.Path(QStringLiteral("x")), "BMP"); theme.Copy(QStringLiteral("x"), QStringLiteral("fade.png")); },
     Level::kNote, u"fade.png", {u"not a PNG"}},
    {"UnequalSizes", PLANT { theme.Save(QStringLiteral("main_active_selected.png"), Blank(192, 100)); },
     Level::kWarning, u"main_active_selected.png", {u"192x100", u"main.png is 192x120"}},
    {"ZoneOfAnotherSize", PLANT { SetKey(theme, "zonelist", "ZoneListWidth", "400"); },
     Level::kWarning, kIni, {u"[zonelist] ZoneListWidth", u"448x360"}},
    {"ZoneWiderThanTheScreen", PLANT { SetKey(theme, "horitontal", "BlockMainX", "200"); },
     Level::kWarning, kIni, {u"[zonelist] ZoneList", u"448x360", u"not inside the theme as [horitontal]"}},
    {"BarOfAnotherWidth", PLANT { theme.Save(QStringLiteral("playlist_playlisthilight.png"), Blank(170, 26)); },
     Level::kWarning, u"playlist_playlisthilight.png", {u"170 wide", u"BlockPlaylistPlaylistW"}},
    {"HighBar", PLANT { theme.Save(QStringLiteral("playlist_playlisthilight.png"), Blank(180, 200)); },
     Level::kWarning, u"playlist_playlisthilight.png", {u"200 high", u"163 tracks"}},
    {"ClearPixelsInMenuRow", PLANT { theme.Paint(QStringLiteral("command_listbox.png"), [](QPainter& p) { p.fillRect(0, 0, 2, 2, Qt::transparent); }); },
     Level::kWarning, u"command_listbox.png", {u"4 pixels are transparent", u"black"}},
    {"ClearPixelsInMenuButton", PLANT { theme.Paint(QStringLiteral("command_btn_hilight.png"), [](QPainter& p) { p.fillRect(0, 0, 3, 1, Qt::transparent); }); },
     Level::kWarning, u"command_btn_hilight.png", {u"3 pixels are transparent", u"black"}},
    {"ClearPixelsInMain", PLANT { theme.Paint(QStringLiteral("main.png"), [](QPainter& p) { p.fillRect(10, 6, 5, 1, Qt::transparent); }); },
     Level::kWarning, u"main.png", {u"5 pixels are transparent", u"earlier"}},
    {"ClearPixelsInCommand", PLANT { theme.Paint(QStringLiteral("command_hilight.png"), [](QPainter& p) { p.fillRect(0, 0, 2, 1, Qt::transparent); }); },
     Level::kNote, u"command_hilight.png", {u"2 pixels are transparent", u"playlist.png"}},
    {"ClearRowOfTheQueue", PLANT { theme.Paint(QStringLiteral("playlist.png"), [](QPainter& p) { p.fillRect(10, 10, 5, 5, Qt::transparent); }); },
     Level::kWarning, u"playlist.png", {u"[BlockPlaylist] BlockPlaylistPlaylist", u"black"}},
    // Places.
    {"ButtonOutsideItsBlock", PLANT { SetKey(theme, "BlockPlaylist", "BlockPlaylistBtnSaveX", "170"); },
     Level::kWarning, kIni, {u"[BlockPlaylist] BlockPlaylistBtnSave", u"170,88 32x26", u"not inside playlist.png"}},
    {"ButtonsOverlap", PLANT { SetKey(theme, "BlockMain", "BlockMainBtnStopX", "20"); },
     Level::kWarning, kIni, {u"[BlockMain] BlockMainBtnStop", u"overlaps [BlockMain] BlockMainBtnPreview"}},
    {"SlotOutsideTheZone", PLANT { SetKey(theme, "zonelistDroite1", "ZoneListPisteHilightX", "300"); },
     Level::kWarning, kIni, {u"[zonelistDroite1] ZoneListPisteHilight", u"not inside zonelist.png"}},
    {"TitleOutsideItsSlot", PLANT { SetKey(theme, "zonelistGauche1", "ZoneListPisteTitreW", "250"); },
     Level::kWarning, kIni, {u"[zonelistGauche1] ZoneListPisteTitre", u"not inside ZoneListPisteHilight"}},
    {"SlotsOverlap", PLANT { SetKey(theme, "zonelistGauche2", "ZoneListPisteHilightY", "10"); },
     Level::kWarning, kIni, {u"[zonelistGauche2] ZoneListPisteHilight", u"overlaps [zonelistGauche1]"}},
    {"RectangleWithoutArea", PLANT { SetKey(theme, "BlockMain", "BlockMainBtnPlayH", "0"); },
     Level::kWarning, kIni, {u"[BlockMain] BlockMainBtnPlay", u"no area"}},
    {"SameKeysTwice", PLANT { SetKey(theme, "zonelistGauche2", "ZoneListPisteNumSaisieKeys", "33|49"); },
     Level::kWarning, kIni, {u"[zonelistGauche2] ZoneListPisteNumSaisieKeys", u"33|49", u"zonelistGauche1"}},
    {"TooManyRows", PLANT { SetKey(theme, "zonelist", "ZoneListNbTracksParColonne", "11"); },
     Level::kError, kIni, {u"[zonelist] ZoneListNbTracksParColonne", u"11 rows"}},
    {"EndlessPageTurn", PLANT { SetKey(theme, "zonelist", "ZoneListPageDroiteWidth", "20"); },
     Level::kError, kIni, {u"[zonelist] ZoneListPageGaucheWidth", u"never ends"}},
    {"BlocksOverlapInOneOrientation", PLANT { SetKey(theme, "vertical", "BlockCommandX", "100"); SetKey(theme, "vertical", "BlockCommandY", "400"); },
     Level::kWarning, kIni, {u"[vertical] BlockCommand", u"overlaps"}},
    {"MenuPartlyBeyondTheEdge", PLANT { SetKey(theme, "horitontal", "BlockCommandX", "639"); },
     Level::kWarning, kIni, {u"[horitontal] BlockCommand", u"not inside the theme"}},
    {"MenuBeyondTheRightEdge", PLANT { SetKey(theme, "horitontal", "BlockCommandX", "640"); },
     Level::kNote, kIni, {u"[horitontal] BlockCommand", u"the menu at 640,240", u"beyond the right edge"}},
    {"MenuBeyondTheLeftEdge", PLANT { SetKey(theme, "horitontal", "BlockCommandX", "-192"); },
     Level::kWarning, kIni, {u"[horitontal] BlockCommand", u"not inside the theme"}},
    {"MenuRowWiderThanTheBlock", PLANT { theme.Save(QStringLiteral("command_listbox.png"), Blank(190, 15)); },
     Level::kWarning, u"command_listbox.png", {u"190 wide", u"room for 178"}},
    {"MenuThatScrolls", PLANT { theme.Save(QStringLiteral("command_listbox.png"), Blank(170, 40)); },
     Level::kNote, u"command_listbox.png", {u"scrolls"}},
    {"NoKeyThatAccepts", PLANT { SetKey(theme, "keyboard", "KeyKey5-3", "32"); },
     Level::kWarning, kIni, {u"[keyboard] KeyKey", u"0 keys have the code 13"}},
    {"BoardKeysOverlap", PLANT { SetKey(theme, "keyboard", "KeyX1-2", "20"); },
     Level::kWarning, kIni, {u"[keyboard] KeyX1-2", u"overlaps [keyboard] KeyX1-1"}},
    // Looks.
    {"ButtonsThatLookAlike", PLANT { theme.Copy(QStringLiteral("main_active_selected.png"), QStringLiteral("main_active_selected_hilight.png")); },
     Level::kWarning, u"main_active_selected_hilight.png", {u"[BlockMain] BlockMainBtnPreview", u"the same as in main_active_selected.png"}},
    {"SelectionThatCannotBeSeen", PLANT { theme.Copy(QStringLiteral("zonelist.png"), QStringLiteral("zonelist_hilight.png")); },
     Level::kWarning, u"zonelist_hilight.png", {u"[zonelistGauche1] ZoneListPisteHilight", u"the same as in zonelist.png"}},
    {"DrawingBesideTheButtons", PLANT { theme.Paint(QStringLiteral("main_active_selected_hilight.png"), [](QPainter& p) { p.fillRect(0, 0, 3, 3, Qt::red); }); },
     Level::kNote, u"main_active_selected_hilight.png", {u"outside the rectangles"}},
    {"PatchBehindAText", PLANT { theme.Paint(QStringLiteral("main_active_selected.png"), [](QPainter& p) { p.fillRect(20, 10, 1, 1, Qt::red); }); },
     Level::kWarning, u"main_active_selected.png", {u"[BlockMain] BlockMainInfosZoneLigne1", u"a patch"}},
    {"EmptyMark", PLANT { theme.Save(QStringLiteral("zonelist_video.png"), Blank(448, 360)); },
     Level::kWarning, u"zonelist_video.png", {u"[zonelistGauche1] ZoneListPisteHilight", u"Nothing is visible"}},
    {"MarkBesideTheSlots", PLANT { theme.Paint(QStringLiteral("zonelist_comingnext.png"), [](QPainter& p) { p.fillRect(0, 350, 4, 4, Qt::red); }); },
     Level::kNote, u"zonelist_comingnext.png", {u"never visible"}},
    {"BoardKeyThatDoesNotLightUp", PLANT { theme.Copy(QStringLiteral("keyboard.png"), QStringLiteral("keyboard_hilight.png")); },
     Level::kWarning, u"keyboard_hilight.png", {u"[keyboard] KeyX1-1", u"the same as in keyboard.png"}},
    // Texts.
    {"UnknownFont", PLANT { SetKey(theme, "BlockMain", "BlockMainRemainFont", "No Such Font"); },
     Level::kWarning, kIni, {u"[BlockMain] BlockMainRemainFont", u"\"No Such Font\""}},
    {"BrokenFont", PLANT { theme.Write(QStringLiteral("broken.ttf"), "no font"); },
     Level::kWarning, u"broken.ttf", {u"cannot be installed"}},
    {"NoRoomForDots", PLANT { SetKey(theme, "zonelistGauche4", "ZoneListPisteNumSaisieW", "17"); },
     Level::kError, kIni, {u"[zonelistGauche4] ZoneListPisteNumSaisieW", u"17 wide", u"need 18", u"ZoneListPisteNumSaisieFontSize"}},
    {"MenuTextTooWide", PLANT { SetKey(theme, "zonecommand", "BlockCommandListBoxTexteW", "40"); },
     Level::kWarning, kIni, {u"[zonecommand] BlockCommandListBoxTexteW", u"\"BIG TITLE\"", u"shortened"}},
    {"TextTooHigh", PLANT { SetKey(theme, "BlockMain", "BlockMainRemainH", "6"); },
     Level::kWarning, kIni, {u"[BlockMain] BlockMainRemainH", u"6 high"}},
    {"InvisibleSize", PLANT { SetKey(theme, "BlockMain", "BlockMainRemainFontSize", "0"); },
     Level::kWarning, kIni, {u"[BlockMain] BlockMainRemainFontSize", u"invisible"}},
    {"ThreeLinesDoNotFit", PLANT { SetKey(theme, "zonelist", "ZoneListPisteTitreTitreFontSize", "14"); },
     Level::kWarning, kIni, {u"[zonelistGauche1] ZoneListPisteTitreY", u"do not fit"}},
    {"TooLittleContrast", PLANT { SetKey(theme, "BlockMain", "BlockMainRemainFontColor", "60,60,60"); },
     Level::kWarning, kIni, {u"[BlockMain] BlockMainRemainFontColor", u"contrast to main.png", u":1"}},
    {"TooLittleContrastWhenSelected", PLANT { SetKey(theme, "zonelist", "ZoneListPisteTitreTitreFontColorHilight", "230,160,40"); },
     Level::kWarning, kIni, {u"[zonelist] ZoneListPisteTitreTitreFontColorHilight", u"zonelist_hilight.png"}},
    // Sounds and other files.
    {"MissingSound", PLANT { theme.Remove(QStringLiteral("move.mp3")); },
     Level::kError, u"move.mp3", {u"missing", u"does not load"}},
    {"BrokenSound", PLANT { theme.Write(QStringLiteral("PageTurn.mp3"), "RIFF0000WAVE"); },
     Level::kError, u"PageTurn.mp3", {u"cannot be played"}},
    {"NoPreview", PLANT { theme.Remove(QStringLiteral("preview.jpg")); },
     Level::kNote, u"preview.jpg", {u"no preview"}},
    {"BrokenPreview", PLANT { theme.Write(QStringLiteral("preview.jpg"), QByteArray(200, 'x')); },
     Level::kWarning, u"preview.jpg", {u"cannot be read"}},
    {"FileThatNothingReads", PLANT { theme.Write(QStringLiteral("mian.png"), "x"); },
     Level::kNote, u"mian.png", {u"Nothing reads this file"}},
    {"OtherUpperAndLowerCase", PLANT { theme.Copy(QStringLiteral("main.png"), QStringLiteral("Main.PNG")); theme.Remove(QStringLiteral("main.png")); },
     Level::kNote, u"Main.PNG", {u"\"main.png\""}},
};
// clang-format on

class PlantedMistake : public testing::TestWithParam<Mistake> {};

} // namespace

TEST_P(PlantedMistake, IsReportedWithFileSectionAndKey) {
    PlantedTheme theme;
    GetParam().plant(theme);
    const std::vector<Finding> findings = theme.Check();
    const auto found = std::find_if(findings.begin(), findings.end(),
                                    [](const Finding& finding) { return Reports(finding, GetParam()); });
    EXPECT_NE(found, findings.end()) << All(findings).toStdString();
}

INSTANTIATE_TEST_SUITE_P(, PlantedMistake, testing::ValuesIn(kMistakes),
                         [](const auto& each) { return std::string(each.param.name); });

// The test font has a few letters less than most fonts.
TEST(ThemeCheckTest, AGoodThemeHasNoFaults) {
    const std::vector<Finding> findings = PlantedTheme().Check();
    ASSERT_EQ(findings.size(), 1) << All(findings).toStdString();
    EXPECT_EQ(findings.front().level, Level::kNote);
    EXPECT_TRUE(findings.front().text.contains(QStringLiteral("lacks \"ÆÝŒ\"")));
}

TEST(ThemeCheckTest, AllFaultsAreReportedAtOnceTheWorstFirst) {
    PlantedTheme theme;
    SetKey(theme, "zonelist", "ZoneListX", "no");
    SetKey(theme, "BlockMain", "BlockMainRemainX", "no");
    SetKey(theme, "keyboard", "TitleX", "no");
    theme.Remove(QStringLiteral("move.mp3"));
    theme.Remove(QStringLiteral("wait.png"));
    const std::vector<Finding> findings = theme.Check();
    const auto count = [&](Level level) {
        return std::count_if(findings.begin(), findings.end(),
                             [&](const Finding& f) { return f.level == level; });
    };
    EXPECT_EQ(count(Level::kError), 4) << All(findings).toStdString();
    EXPECT_EQ(count(Level::kWarning), 1);
    ASSERT_FALSE(findings.empty());
    EXPECT_EQ(findings.front().level, Level::kError);
    EXPECT_EQ(findings.back().level, Level::kNote);
}

TEST(ThemeCheckTest, ALoudSoundIsReported) {
    PlantedTheme theme;
    // A square wave of full scale; the name decides nothing about the format.
    QByteArray wave("RIFF\0\0\0\0WAVEfmt \x10\0\0\0\x01\0\x02\0\x44\xAC\0\0\x10\xB1\x02\0\x04\0\x10\0data",
                    40);
    const int frames = 22050;
    const int bytes = frames * 4;
    wave += QByteArray(reinterpret_cast<const char*>(&bytes), 4);
    for (int frame = 0; frame < frames; ++frame) {
        wave += frame / 50 % 2 == 0 ? QByteArray("\xFF\x7F\xFF\x7F", 4) : QByteArray("\x01\x80\x01\x80", 4);
    }
    theme.Write(QStringLiteral("insertcoin.mp3"), wave);
    const QString all = All(theme.Check());
    EXPECT_TRUE(all.contains(QStringLiteral("insertcoin.mp3 The sound is"))) << all.toStdString();
}

TEST(ThemeCheckTest, AFolderThatIsNoThemeIsReported) {
    HomeFolder folder;
    const std::vector<Finding> empty = CheckTheme(folder.Path());
    ASSERT_EQ(empty.size(), 1);
    EXPECT_TRUE(empty.front().text.contains(QStringLiteral("no file theme.ini")));
    const std::vector<Finding> missing = CheckTheme(folder.Path(QStringLiteral("nothing")));
    ASSERT_EQ(missing.size(), 1);
    EXPECT_TRUE(missing.front().text.contains(QStringLiteral("no folder")));
    const std::vector<Finding> file = CheckTheme(folder.Write(QStringLiteral("file")));
    ASSERT_EQ(file.size(), 1);
    EXPECT_EQ(file.front().level, Level::kError);
}

// Reading a fifo would block until somebody writes to it.
TEST(ThemeCheckTest, FifosAreNotOpened) {
    PlantedTheme theme;
    for (const char* name : {"theme.ini", "main.png", "move.mp3", "preview.jpg"}) {
        theme.Remove(QString::fromLatin1(name));
        ASSERT_EQ(mkfifo(BytesOfPath(theme.Path(QString::fromLatin1(name))).constData(), 0600), 0);
    }
    const std::vector<Finding> findings = theme.Check();
    ASSERT_FALSE(findings.empty());
    EXPECT_EQ(findings.front().level, Level::kError);
    theme.Remove(QStringLiteral("theme.ini"));
    theme.SetIni(PlantedTheme().Ini());
    const QString all = All(theme.Check());
    EXPECT_TRUE(all.contains(QStringLiteral("main.png The picture is missing"))) << all.toStdString();
    EXPECT_TRUE(all.contains(QStringLiteral("move.mp3 The sound cannot be played")));
}

TEST(ThemeCheckTest, PicturesOfTooManyPixelsAreReported) {
    PlantedTheme theme;
    QImage huge(8000, 8000, QImage::Format_Grayscale8);
    huge.fill(90);
    theme.Save(QStringLiteral("fade.png"), huge);
    theme.Copy(QStringLiteral("fade.png"), QStringLiteral("wait.png"));
    const QString all = All(theme.Check());
    EXPECT_TRUE(all.contains(QStringLiteral("wait.png The picture has 8000x8000 pixels")))
        << all.toStdString();
}
