// The two pages of tracks: titles from names, boxes, summaries, labels, the page itself.
#include "rendering/track_zone.h"

#include "support/jukebox.h"

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace {

// A text as it was drawn: its box as "left,top,width,height" and its font size.
struct Drawn {
    QString text;
    QString box;
    int size = 0;
};

bool operator==(const Drawn& a, const Drawn& b) {
    return a.text == b.text && a.box == b.box && a.size == b.size;
}

void PrintTo(const Drawn& drawn, std::ostream* out) {
    *out << drawn.text.toStdString() << " at " << drawn.box.toStdString() << ", " << drawn.size;
}

// Here each element of a slot has its own colour, so that the log shows which is which.
const QString kTitle = u"1,1,1"_s;
const QString kArtist = u"2,2,2"_s;
const QString kTitleHilight = u"3,3,3"_s;
const QString kArtistHilight = u"4,4,4"_s;
const QString kNumber = u"5,5,5"_s;
const QString kNumberHilight = u"6,6,6"_s;
const QString kLabel = u"7,7,7"_s;
const QString kLabelHilight = u"8,8,8"_s;

class TrackZone : public testing::Test {
protected:
    void SetUp() override {
        const QString zone = u"zonelist"_s;
        box.SetTheme(zone, u"ZoneListPisteTitreTitreFontColor"_s, kTitle);
        box.SetTheme(zone, u"ZoneListPisteTitreInterpreteFontColor"_s, kArtist);
        box.SetTheme(zone, u"ZoneListPisteTitreTitreFontColorHilight"_s, kTitleHilight);
        box.SetTheme(zone, u"ZoneListPisteTitreInterpreteFontColorHilight"_s, kArtistHilight);
        box.SetTheme(zone, u"ZoneListPisteNumPisteFontColor"_s, kNumber);
        box.SetTheme(zone, u"ZoneListPisteNumPisteFontColorHilight"_s, kNumberHilight);
        box.SetTheme(zone, u"ZoneListPisteNumSaisieFontColor"_s, kLabel);
        box.SetTheme(zone, u"ZoneListPisteNumSaisieFontColorHilight"_s, kLabelHilight);
    }

    // Returns the texts drawn in a colour since the start, in order.
    std::vector<Drawn> DrawnIn(const QString& colour) const {
        std::vector<Drawn> result;
        constexpr int kBehindText = 11;
        for (const QString& line : box.DrawnTexts()) {
            QStringList parts = line.split(u',');
            const QStringList rest = parts.mid(parts.size() - kBehindText);
            if (rest.mid(6, 3).join(u',') == colour) {
                EXPECT_EQ(rest.mid(9).join(u','), u"center,center"_s) << line.toStdString();
                EXPECT_EQ(rest[4], u"Vantorix Test"_s) << line.toStdString();
                parts.resize(parts.size() - kBehindText);
                result.push_back({parts.join(u','), rest.mid(0, 4).join(u','), rest[5].toInt()});
            }
        }
        return result;
    }
    QStringList TextsIn(const QString& colour) const {
        QStringList texts;
        for (const Drawn& drawn : DrawnIn(colour)) {
            texts += drawn.text;
        }
        return texts;
    }

    Jukebox box;
};

// --- Titles out of names -------------------------------------------------------------------------

struct NameRow {
    const char* name;
    const char* title;
    const char* artist;
    const char* number;
};

class TrackZoneNames : public TrackZone, public testing::WithParamInterface<NameRow> {};

QStringList NoneIfEmpty(const char* text) {
    return *text == '\0' ? QStringList() : QStringList{QString::fromUtf8(text)};
}

// Deliberate D-16: ".wav" and endings in capitals are not removed.
TEST_P(TrackZoneNames, TheNameTellsTitleArtistAndNumber) {
    const NameRow& row = GetParam();
    box.Track(QString::fromUtf8(row.name));
    box.Start();
    for (const QString& look : {kTitle, kTitleHilight}) {
        EXPECT_EQ(TextsIn(look), QStringList{QString::fromUtf8(row.title)}) << row.name;
    }
    for (const QString& look : {kArtist, kArtistHilight}) {
        EXPECT_EQ(TextsIn(look), NoneIfEmpty(row.artist)) << row.name;
    }
    for (const QString& look : {kNumber, kNumberHilight}) {
        EXPECT_EQ(TextsIn(look), NoneIfEmpty(row.number)) << row.name;
    }
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(Names, TrackZoneNames, testing::Values(
    NameRow{"Song.mp3",                     "SONG",          "",            ""},
    NameRow{"Late_Night_Song.flac",         "LATE NIGHT SONG", "",          ""},
    NameRow{"Some Artist - A Song.mp3",     "A SONG",        "SOME ARTIST", ""},
    NameRow{"Artist-Song.wma",              "SONG",          "ARTIST",      ""},
    NameRow{"03 - Artist - Song.mp3",       "SONG",          "ARTIST",      "3"},
    NameRow{"A - B - C.mp3",                "C",             "B",           ""},
    NameRow{"A - B - C - D.mp3",            "C - D",         "B",           ""},
    NameRow{"07.mp3",                       "07",            "",            ""},
    NameRow{"07 - Song.mp3",                "SONG",          "",            "7"},
    NameRow{"0 - Song.mp3",                 "SONG",          "",            ""},
    NameRow{"2.5 - Song.mp3",               "SONG",          "",            "2.5"},
    NameRow{"1e2 - Song.mp3",               "SONG",          "",            "100"},
    NameRow{"+4 - Song.mp3",                "SONG",          "",            "4"},
    NameRow{"-5 - Song.mp3",                "SONG",          "5",           ""},
    NameRow{"7th - Song.mp3",               "SONG",          "7TH",         ""},
    NameRow{"Song - 12.mp3",                "12",            "SONG",        ""},
    NameRow{"x--y.mp3",                     "Y",             "",            ""},
    NameRow{"a.mp3.mp3.flac",               "A",             "",            ""},
    NameRow{"b.flac.mp3",                   "B",             "",            ""},
    NameRow{"c.mp4.vtxpl",                  "C",             "",            ""},
    NameRow{"Song.wav",                     "SONG.WAV",      "",            ""},
    NameRow{"Song.MP3",                     "SONG.MP3",      "",            ""},
    NameRow{"Song.mp44",                    "SONG4",         "",            ""},
    NameRow{"03 - Evening Mix.vtxpl",       "EVENING MIX",   "03",          ""},
    NameRow{"Pi\xC3\xA8""ce - \xC3\x89t\xC3\xA9.mp3", "\xC3\x89T\xC3\x89", "PI\xC3\x88""CE", ""}));
// clang-format on

TEST_F(TrackZone, ANumberNeedsTheSettingAndIsDrawnBesideTheTitle) {
    box.Track(u"03 - Artist - Song.mp3"_s);
    box.Start();
    EXPECT_EQ(DrawnIn(kNumber), std::vector<Drawn>({{u"3"_s, u"31,9,24,20"_s, 9}}));
    EXPECT_EQ(DrawnIn(kTitle), std::vector<Drawn>({{u"SONG"_s, u"59,-2,158,28"_s, 9}}));

    box.SetKey(u"config.ini"_s, u"Main"_s, u"ShowTrackNum"_s, u"false"_s);
    box.Start();
    EXPECT_EQ(DrawnIn(kNumber), std::vector<Drawn>());
    EXPECT_EQ(DrawnIn(kTitle), std::vector<Drawn>({{u"SONG"_s, u"30,-2,187,28"_s, 9}}));
}

// --- Positions of the lines ----------------------------------------------------------------------

TEST_F(TrackZone, APlainTitleTakesTheCoversRoom) {
    box.Track(u"Song.mp3"_s);
    box.Start();
    EXPECT_EQ(DrawnIn(kTitle), std::vector<Drawn>({{u"SONG"_s, u"30,5,187,28"_s, 9}}));
    EXPECT_EQ(DrawnIn(kTitleHilight), std::vector<Drawn>({{u"SONG"_s, u"30,5,187,28"_s, 9}}));
}

TEST_F(TrackZone, TwoLinesStandALineApartInEachLooksOwnSize) {
    box.SetTheme(u"zonelist"_s, u"ZoneListPisteTitreTitreFontSizeHilight"_s, u"11"_s);
    box.SetTheme(u"zonelist"_s, u"ZoneListPisteTitreInterpreteFontSizeHilight"_s, u"7"_s);
    box.Track(u"Artist - Song.mp3"_s);
    box.Start();
    EXPECT_EQ(DrawnIn(kTitle), std::vector<Drawn>({{u"SONG"_s, u"30,-2,187,28"_s, 9}}));
    EXPECT_EQ(DrawnIn(kArtist), std::vector<Drawn>({{u"ARTIST"_s, u"30,12,187,28"_s, 9}}));
    EXPECT_EQ(DrawnIn(kTitleHilight), std::vector<Drawn>({{u"SONG"_s, u"30,-3,187,28"_s, 11}}));
    EXPECT_EQ(DrawnIn(kArtistHilight), std::vector<Drawn>({{u"ARTIST"_s, u"30,13,187,28"_s, 7}}));
}

TEST_F(TrackZone, ATitleThatDoesNotFitBreaksIntoTwo) {
    box.SetTheme(u"zonelist"_s, u"ZoneListPisteTitreTitreFontSizeHilight"_s, u"6"_s);
    // 27 characters of six pixels exceed the 158 pixels of the title's box, but not the 187 pixels of the
    // line.
    box.Track(u"Artist - Dancing In Moonlight Tonigh.mp3"_s);
    box.Start();
    EXPECT_EQ(DrawnIn(kTitle), std::vector<Drawn>({{u"DANCING IN MOONLIGHT"_s, u"30,-6,187,28"_s, 9},
                                                   {u"TONIGH"_s, u"30,5,187,28"_s, 9}}));
    EXPECT_EQ(DrawnIn(kArtist), std::vector<Drawn>({{u"ARTIST"_s, u"30,16,187,28"_s, 9}}));
    EXPECT_EQ(DrawnIn(kTitleHilight), std::vector<Drawn>({{u"DANCING IN MOONLIGHT"_s, u"30,-3,187,28"_s, 6},
                                                          {u"TONIGH"_s, u"30,5,187,28"_s, 6}}));
    EXPECT_EQ(DrawnIn(kArtistHilight), std::vector<Drawn>({{u"ARTIST"_s, u"30,13,187,28"_s, 9}}));
}

TEST_F(TrackZone, ATitleOfExactlyTheBoxsWidthStaysOnOneLine) {
    box.SetTheme(u"zonelistGauche1"_s, u"ZoneListPisteTitreW"_s, u"162"_s); // 27 characters
    box.Track(u"Artist - Dancing In Moonlight Tonigh.mp3"_s);
    box.Start();
    EXPECT_EQ(TextsIn(kTitle), QStringList{u"DANCING IN MOONLIGHT TONIGH"_s});
}

struct BreakRow {
    const char* title;
    const char* first;
    const char* second;
};

class TrackZoneBreaks : public TrackZone, public testing::WithParamInterface<BreakRow> {};

// 26 characters fit.
TEST_P(TrackZoneBreaks, TheTitleBreaksAtTheLastBlankOfWhatFits) {
    box.Track(u"Artist - %1.mp3"_s.arg(QString::fromLatin1(GetParam().title)));
    box.Start();
    EXPECT_EQ(TextsIn(kTitle),
              QStringList({QString::fromLatin1(GetParam().first), QString::fromLatin1(GetParam().second)}));
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(Titles, TrackZoneBreaks, testing::Values(
    // The second word ends where the room ends, but still moves to the second line.
    BreakRow{"ABCDEFGHIJKL MNOPQRSTUVWXY Z",        "ABCDEFGHIJKL",              "MNOPQRSTUVWXY Z"},
    // The blank itself is the last character that fits.
    BreakRow{"ABCDEFGHIJKL MNOPQRSTUVWX YZ",        "ABCDEFGHIJKL MNOPQRSTUVWX", "YZ"},
    // The second line is shortened when it is drawn, not here.
    BreakRow{"A BCDEFGHIJKLMNOPQRSTUVWXYZABCDEFGHIJKLMNOPQRSTUV", "A", "BCDEFGHIJKLMNOPQRSTUVWXYZABCDEFGHIJKLMNOPQRSTUV"}));
// clang-format on

TEST_F(TrackZone, OneWordTooWideBesideAnArtistEndsTheProgram) {
    box.Track(u"Artist - Abcdefghijklmnopqrstuvwxyza.mp3"_s); // 27 characters
    const auto stop = StopOf([&] { box.Start(); });
    ASSERT_TRUE(stop);
    EXPECT_EQ(stop->error.number, 5);
    EXPECT_EQ(stop->routine, u"DrawZoneList"_s);
}

TEST_F(TrackZone, OneWordTooWideWithoutAnArtistIsShortened) {
    box.Track(u"Abcdefghijklmnopqrstuvwxyzabcdefgh.mp3"_s);
    EXPECT_FALSE(StopOf([&] { box.Start(); }));
    EXPECT_EQ(TextsIn(kTitle).size(), 1);
}

// --- Big titles ----------------------------------------------------------------------------------

class TrackZoneBigTitles : public TrackZone {
protected:
    void SetUp() override {
        TrackZone::SetUp();
        box.SetTheme(u"zonelist"_s, u"ZoneListPisteTitreTitreFontSizeHilight"_s, u"10"_s);
    }
    void StartWith(const QString& setting) {
        box.SetKey(u"pathconfig.ini"_s, box.Music(), u"ShowBigtitle"_s, setting);
        box.Start();
    }
};

TEST_F(TrackZoneBigTitles, AShortTitleAloneIsTwiceAsLarge) {
    box.Track(u"Seventy.mp3"_s);
    StartWith(u"true"_s);
    EXPECT_EQ(DrawnIn(kTitle), std::vector<Drawn>({{u"SEVENTY"_s, u"30,5,187,28"_s, 18}}));
    EXPECT_EQ(DrawnIn(kTitleHilight), std::vector<Drawn>({{u"SEVENTY"_s, u"30,5,187,28"_s, 20}}));
}

TEST_F(TrackZoneBigTitles, EightCharactersAreNotShort) {
    box.Track(u"Eighteen.mp3"_s);
    StartWith(u"true"_s);
    EXPECT_EQ(DrawnIn(kTitle), std::vector<Drawn>({{u"EIGHTEEN"_s, u"30,5,187,28"_s, 9}}));
}

TEST_F(TrackZoneBigTitles, AnArtistKeepsTheTitleSmall) {
    box.Track(u"Abba - Ring.mp3"_s);
    StartWith(u"true"_s);
    EXPECT_EQ(DrawnIn(kTitle).at(0).size, 9);
}

TEST_F(TrackZoneBigTitles, TheSettingCountsInAnyCaseAndForItsFolderAlone) {
    box.Track(u"Song.mp3"_s);
    StartWith(u"TRUE"_s);
    EXPECT_EQ(DrawnIn(kTitle).at(0).size, 18);
    StartWith(u"yes"_s);
    EXPECT_EQ(DrawnIn(kTitle).at(0).size, 9);
    box.RemoveKey(u"pathconfig.ini"_s, box.Music(), u"ShowBigtitle"_s);
    box.SetKey(u"config.ini"_s, u"Main"_s, u"ShowBigtitle"_s, u"true"_s);
    box.Start();
    EXPECT_EQ(DrawnIn(kTitle).at(0).size, 9);
}

// --- Folders -------------------------------------------------------------------------------------

struct FolderRow {
    const char* folder;
    std::vector<const char*> inside;
    const char* title;
    const char* second;
};

class TrackZoneFolders : public TrackZone, public testing::WithParamInterface<FolderRow> {};

TEST_P(TrackZoneFolders, TheSecondLineTellsWhatAFolderHolds) {
    const FolderRow& row = GetParam();
    const QString folder = QString::fromUtf8(row.folder);
    box.Folder(folder);
    for (const char* name : row.inside) {
        box.Folder(folder + u'/' + QString::fromUtf8(name));
    }
    box.Track(folder + u"/not counted.mp3"_s);
    box.Start();
    EXPECT_EQ(TextsIn(kTitle), QStringList{QString::fromUtf8(row.title)});
    EXPECT_EQ(TextsIn(kArtist), NoneIfEmpty(row.second));
    EXPECT_EQ(TextsIn(kArtistHilight), NoneIfEmpty(row.second));
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(Folders, TrackZoneFolders, testing::Values(
    FolderRow{"Rock",        {},                              "ROCK",  ""},
    FolderRow{"Rock",        {"Rock - Rock"},                 "ROCK",  "ROCK"},
    FolderRow{"Rock",        {"rock"},                        "ROCK",  "ROCK"},
    FolderRow{"Rock",        {"Rock - Best Of"},              "ROCK",  "BEST OF"},
    FolderRow{"Rock",        {"Best_Of-Rock"},                "ROCK",  "BEST_OF-"},
    FolderRow{"Rock",        {"-Live"},                       "ROCK",  "LIVE"},
    FolderRow{"Rock",        {"Rock Rock - Live in Rockland"}, "ROCK", "LIVE IN LAND"},
    FolderRow{"Rock",        {"Live"},                        "ROCK",  "LIVE"},
    FolderRow{"a---b",       {"- b"},                         "- B",   "B"},   // leading dashes are removed
    FolderRow{"a---b",       {"- b - - b"},                   "- B",   "B"},
    FolderRow{"Rock",        {"One", "Two"},                  "ROCK",  "2 ALBUMS"},
    FolderRow{"Rock",        {"One", "Two", "Three"},         "ROCK",  "3 ALBUMS"},
    FolderRow{"Rock",        {"One", ".hidden"},              "ROCK",  "ONE"},
    FolderRow{"Abba - Gold", {"One", "Two"},                  "GOLD",  "ABBA"},
    FolderRow{"03 - Rock",   {"One", "Two"},                  "ROCK",  "03"},
    FolderRow{"Rock.mp3",    {"One", "Two"},                  "ROCK",  "2 ALBUMS"}));
// clang-format on

// --- Labels --------------------------------------------------------------------------------------

TEST_F(TrackZone, ThePageLetterStandsWhereverTheLabelAsksForIt) {
    box.SetTheme(u"zonelist"_s, u"ZoneListNbTracksParColonne"_s, u"1"_s);
    box.SetTheme(u"zonelistGauche1"_s, u"ZoneListPisteNumSaisieLibele"_s, u"[AP][AP]"_s);
    for (const char* name : {"a", "b", "c", "d", "e", "f"}) {
        box.Track(QString::fromLatin1(name) + u".mp3"_s);
    }
    box.Start();
    EXPECT_EQ(DrawnIn(kLabel),
              std::vector<Drawn>({{u"AA"_s, u"6,5,22,14"_s, 9}, {u"B1"_s, u"230,5,22,14"_s, 9}}));
    box.form.library.CurrentPage = 2;
    DrawZoneList(box.form);
    EXPECT_EQ(TextsIn(kLabel).mid(2), QStringList({u"EE"_s, u"F1"_s}));
    EXPECT_EQ(TextsIn(kLabelHilight).mid(2), QStringList({u"EE"_s, u"F1"_s}));
}

TEST_F(TrackZone, AnEmptyLabelIsFilledAtItsFirstDrawing) {
    box.SetTheme(u"zonelist"_s, u"ZoneListNbTracksParColonne"_s, u"3"_s);
    box.RemoveTheme(u"zonelistGauche1"_s, u"ZoneListPisteNumSaisieLibele"_s);
    box.SetTheme(u"zonelistDroite3"_s, u"ZoneListPisteNumSaisieLibele"_s, u"  "_s);
    for (const char* name : {"a", "b", "c", "d", "e"}) {
        box.Track(QString::fromLatin1(name) + u".mp3"_s);
    }
    box.Start();
    EXPECT_EQ(TextsIn(kLabel), QStringList({u"A0"_s, u"A2"_s, u"A3"_s, u"B1"_s, u"B2"_s}));
    EXPECT_EQ(box.form.slots.ZoneListPisteNumSaisieLibele(1, 1), u"A0"_s);
    EXPECT_EQ(box.form.slots.ZoneListPisteNumSaisieLibele(2, 3), QString()); // not drawn yet

    box.Track(u"f.mp3"_s);
    box.Start();
    EXPECT_EQ(TextsIn(kLabel).constLast(), u"B2"_s);
    EXPECT_EQ(box.form.slots.ZoneListPisteNumSaisieLibele(2, 3), u"B2"_s);
}

class TrackZoneManyPages : public TrackZone {
protected:
    // Starts with pages of two slots and this many tracks.
    void StartWith(int tracks) {
        box.SetTheme(u"zonelist"_s, u"ZoneListNbTracksParColonne"_s, u"1"_s);
        for (int track = 0; track < tracks; ++track) {
            box.Track(u"%1.mp3"_s.arg(1000 + track));
        }
        box.Start();
    }
    std::optional<ProgramStop> StopAtPage(int page) {
        box.form.library.CurrentPage = page;
        return StopOf([&] { DrawZoneList(box.form); });
    }
};

TEST_F(TrackZoneManyPages, TheLeftSlotOfPage95HasTheLastLetterThereIs) {
    StartWith(191);
    EXPECT_FALSE(StopAtPage(95));
    EXPECT_EQ(TextsIn(kLabel).constLast(), u"\u00FF1"_s);
}

// Code 131 is a letter of Windows-1252, which older cabinets use, not a control character.
TEST_F(TrackZoneManyPages, BehindTheLettersOfAsciiComeThoseOfOlderCabinets) {
    StartWith(68);
    EXPECT_FALSE(StopAtPage(33));
    EXPECT_EQ(TextsIn(kLabel).last(2), QStringList({u"\u01921"_s, u"\u201E1"_s}));
}

// Deliberate D-33.
TEST_F(TrackZoneManyPages, TheRightSlotOfPage95EndsTheProgram) {
    StartWith(192);
    const auto stop = StopAtPage(95);
    ASSERT_TRUE(stop);
    EXPECT_EQ(stop->error.number, 5);
    EXPECT_EQ(stop->routine, u"DrawZoneList"_s);
}

TEST_F(TrackZoneManyPages, TheLetterIsMadeEvenWhereTheLabelShowsNone) {
    box.SetTheme(u"zonelistGauche1"_s, u"ZoneListPisteNumSaisieLibele"_s, u"x"_s);
    StartWith(193);
    ASSERT_TRUE(StopAtPage(96));
    EXPECT_EQ(StopAtPage(96)->error.number, 5);
}

// --- The page ------------------------------------------------------------------------------------

TEST_F(TrackZone, ThePageIsFilledFromTheListAndTheRestIsCleared) {
    box.SetTheme(u"zonelist"_s, u"ZoneListNbTracksParColonne"_s, u"2"_s);
    for (const char* name : {"a", "b", "c", "d", "e"}) {
        box.Track(QString::fromLatin1(name) + u".mp3"_s);
    }
    box.Start();
    EXPECT_EQ(box.form.library.NbPages, 2);
    EXPECT_EQ(box.form.library.InfoPath(0), box.Music(u"a.mp3"_s));
    EXPECT_EQ(box.form.library.InfoTitre(3), u"d.mp3"_s);
    EXPECT_EQ(box.form.library.InfoType(3), u"file"_s);

    box.form.library.InfoPath(4) = box.form.library.InfoType(4) = box.form.library.InfoTitre(4) = u"stale"_s;
    box.form.library.InfoPath(5) = u"beyond the page"_s;
    box.form.library.CurrentPage = 1;
    DrawZoneList(box.form);
    EXPECT_EQ(box.form.library.InfoTitre(0), u"e.mp3"_s);
    EXPECT_EQ(box.form.library.NumTrack, 5); // one past the page's last entry
    for (int slot = 1; slot <= 4; ++slot) {
        EXPECT_EQ(box.form.library.InfoPath(slot) + box.form.library.InfoType(slot) +
                      box.form.library.InfoTitre(slot),
                  QString())
            << slot;
    }
    EXPECT_EQ(box.form.library.InfoPath(5), u"beyond the page"_s);
    EXPECT_EQ(TextsIn(kTitle).mid(4), QStringList{u"E"_s});
}

TEST_F(TrackZone, PagesAreCountedInFullAndRest) {
    box.SetTheme(u"zonelist"_s, u"ZoneListNbTracksParColonne"_s, u"6"_s);
    box.Start();
    EXPECT_EQ(box.form.library.NbPages, 0);
    for (int track = 0; track < 12; ++track) {
        box.Track(u"%1.mp3"_s.arg(track));
    }
    box.Start();
    EXPECT_EQ(box.form.library.NbPages, 1);
    box.Track(u"12.mp3"_s);
    box.Start();
    EXPECT_EQ(box.form.library.NbPages, 2);
}

TEST_F(TrackZone, TheMenuIsDrawnBeforeThePage) {
    box.Track(u"Song.mp3"_s);
    box.Start();
    const QStringList log = box.Log();
    const qsizetype page = log.indexOf(u" : DrawZoneList"_s);
    EXPECT_EQ(log.value(page + 1), u" : DrawCommand"_s);
    EXPECT_EQ(log.count(u" : DrawZoneList"_s), 1);
    EXPECT_EQ(log.count(u" : RedrawJukebox"_s), 1);
    EXPECT_LT(page, log.indexOf(u" : RedrawJukebox"_s));
}

struct RowsRow {
    int rows;
    int error;
};

class TrackZoneRows : public TrackZone, public testing::WithParamInterface<RowsRow> {};

TEST_P(TrackZoneRows, ACountOfRowsThatLeavesTheArraysEndsTheProgram) {
    box.SetTheme(u"zonelist"_s, u"ZoneListNbTracksParColonne"_s, QString::number(GetParam().rows));
    const auto stop = StopOf([&] { box.Start(); });
    ASSERT_TRUE(stop);
    EXPECT_EQ(stop->error.number, GetParam().error);
}

// Twice 16384 exceeds 16 bits before any array is accessed.
INSTANTIATE_TEST_SUITE_P(Counts, TrackZoneRows,
                         testing::Values(RowsRow{0, 11}, RowsRow{1501, 9}, RowsRow{16384, 6}));

TEST_F(TrackZone, ARowWithoutGeometryHasNoRoomForItsLabel) {
    box.SetTheme(u"zonelist"_s, u"ZoneListNbTracksParColonne"_s, u"11"_s);
    for (int track = 0; track < 10; ++track) {
        box.Track(u"%1.mp3"_s.arg(track));
    }
    EXPECT_FALSE(StopOf([&] { box.Start(); }));
    box.Track(u"x.mp3"_s);
    const auto stop = StopOf([&] { box.Start(); });
    ASSERT_TRUE(stop);
    EXPECT_EQ(stop->error.number, 5);
    EXPECT_EQ(stop->routine, u"DrawText"_s);
}

// --- The zone's corner ---------------------------------------------------------------------------

TEST_F(TrackZone, TheZonesCornerIsAddedToEveryText) {
    box.SetTheme(u"zonelist"_s, u"ZoneListX"_s, u"7"_s);
    box.SetTheme(u"zonelist"_s, u"ZoneListY"_s, u"8"_s);
    box.Track(u"03 - Artist - Song.mp3"_s);
    box.Start();
    EXPECT_EQ(DrawnIn(kNumber).at(0).box, u"38,17,24,20"_s);
    EXPECT_EQ(DrawnIn(kLabel).at(0).box, u"13,13,22,14"_s);
    EXPECT_EQ(DrawnIn(kTitle).at(0).box, u"66,6,158,28"_s);
    EXPECT_EQ(DrawnIn(kArtist).at(0).box, u"66,20,158,28"_s);
}

TEST_F(TrackZone, ABoxThatLeaves16BitsWithTheCornerEndsTheProgram) {
    box.SetTheme(u"zonelist"_s, u"ZoneListX"_s, u"32762"_s);
    box.Track(u"Song.mp3"_s);
    const auto stop = StopOf([&] { box.Start(); });
    ASSERT_TRUE(stop);
    EXPECT_EQ(stop->error.number, 6);
}

// Returns a slot of the left column of a cache without its label's box, which would differ between two slots
// with the same title.
QImage SlotOf(const Surface& cache, int row) {
    QImage slot = cache.picture.copy(4, 3 + 33 * (row - 1), 216, 32);
    for (int y = 2; y < 2 + 14; ++y) {
        for (int x = 2; x < 2 + 22; ++x) {
            slot.setPixel(x, y, 0xFF000000);
        }
    }
    return slot;
}

class VideoMark : public TrackZone {
protected:
    // Whether one of two tracks with the same displayed title has a mark that the other one lacks.
    bool OneIsMarked() {
        EXPECT_EQ(SlotOf(box.form.frame.Picture_Cache, 1) == SlotOf(box.form.frame.Picture_Cache, 2),
                  SlotOf(box.form.frame.Picture_CacheHilight, 1) ==
                      SlotOf(box.form.frame.Picture_CacheHilight, 2));
        return SlotOf(box.form.frame.Picture_Cache, 1) != SlotOf(box.form.frame.Picture_Cache, 2);
    }
};

TEST_F(VideoMark, AVideoIsMarked) {
    box.Track(u"Song.avi"_s);
    box.Track(u"Song.flac"_s);
    box.Start();
    ASSERT_EQ(TextsIn(kTitle), QStringList({u"SONG"_s, u"SONG"_s}));
    EXPECT_TRUE(OneIsMarked());
}

TEST_F(VideoMark, TwoTracksAreNotMarked) {
    box.Track(u"Song.flac"_s);
    box.Track(u"Song.mp3"_s);
    box.Start();
    ASSERT_EQ(TextsIn(kTitle), QStringList({u"SONG"_s, u"SONG"_s}));
    EXPECT_FALSE(OneIsMarked());
}

TEST_F(VideoMark, ATrackBesideAVideoOfItsNameIsMarkedByTheNameWithoutThreeLetters) {
    box.Track(u"Song.flac"_s); // the name without its last three letters ends in "f"
    box.Track(u"Song.wma"_s);
    box.Track(u"Song.MP4"_s); // not listed
    box.Start();
    ASSERT_EQ(TextsIn(kTitle), QStringList({u"SONG"_s, u"SONG"_s}));
    EXPECT_TRUE(OneIsMarked());
}

// Deliberate D-17: the comparison of three letters with "mp44" never succeeds.
TEST_F(VideoMark, AnMp44HasNoMark) {
    box.Track(u"Song4.mp3"_s);
    box.Track(u"Song.mp44"_s); // is displayed as SONG4 too
    box.Start();
    ASSERT_EQ(TextsIn(kTitle), QStringList({u"SONG4"_s, u"SONG4"_s}));
    EXPECT_FALSE(OneIsMarked());
}

TEST_F(VideoMark, AFolderIsNeverMarked) {
    box.Folder(u"Song.avi"_s);
    box.Track(u"Song.mp3"_s);
    box.Start();
    ASSERT_EQ(TextsIn(kTitle), QStringList({u"SONG"_s, u"SONG"_s}));
    EXPECT_FALSE(OneIsMarked());
}

// Deliberate D-18: the zone's corner moves the slot but not its video mark.
TEST_F(VideoMark, TheMarkStaysWhereTheZonesCornerWouldMoveIt) {
    box.SetTheme(u"zonelist"_s, u"ZoneListX"_s, u"7"_s);
    box.SetTheme(u"zonelist"_s, u"ZoneListY"_s, u"40"_s);
    box.Track(u"Song.flac"_s);
    box.Start();
    const QImage unmarked = box.form.frame.Picture_Cache.picture;
    box.Track(u"Song.avi"_s);
    QFile::remove(box.Music(u"Song.flac"_s));
    box.Start();
    ASSERT_EQ(TextsIn(kTitle), QStringList{u"SONG"_s});
    const QImage marked = box.form.frame.Picture_Cache.picture;
    EXPECT_NE(marked.copy(4, 3, 216, 32), unmarked.copy(4, 3, 216, 32));
    QImage rest = marked;
    for (int y = 3; y < 3 + 32; ++y) {
        for (int x = 4; x < 4 + 216; ++x) {
            rest.setPixel(x, y, unmarked.pixel(x, y));
        }
    }
    EXPECT_EQ(rest, unmarked);
}

} // namespace
