// Listing a folder as a sorted list.
#include "library/create_list.h"

#include "platform/simulated/simulated_platform.h"
#include "settings/ini_files.h"
#include "settings/profile.h"
#include "shell/hand_down.h"
#include "state/form_main.h"
#include "support/error_of.h"
#include "support/home_folder.h"

#include <gtest/gtest.h>

#include <unistd.h>

namespace {

class CreateListTest : public testing::Test {
protected:
    CreateListTest() {
        form.shell.AppFolder = home.Path();
        form.settings.DefaultOrder = QStringLiteral("alpha");
        music = home.MakeFolder(QStringLiteral("music"));
    }
    void Add(const char* name) { home.Write(QStringLiteral("music/") + QString::fromUtf8(name)); }
    void AddFolder(const char* name) { home.MakeFolder(QStringLiteral("music/") + QString::fromUtf8(name)); }
    void Order(const char* order) {
        home.Write(QStringLiteral("pathconfig.ini"), '[' + music.toUtf8() + "]\r\nOrder=" + order + "\r\n");
    }
    void Counts(const QByteArray& lines) {
        home.Write(QStringLiteral("stats.ini"), "[PayingCount]\r\n" + lines);
    }
    void List() {
        PointDir1(form, music);
        CreateList(form);
    }
    // Returns the lines joined by ";", with the music folder's path written as "M".
    std::string Lines() {
        QStringList lines;
        for (const ListLine& line : form.library.List_List) {
            lines += line.Text().replace(music, QStringLiteral("M"));
        }
        return lines.join(u';').toStdString();
    }
    std::string Titles() {
        QStringList titles;
        for (const ListLine& line : form.library.List_List) {
            titles += line.title;
        }
        return titles.join(u' ').toStdString();
    }
    // Returns the texts of the log after the time stamp.
    std::string Log() {
        QStringList texts;
        for (const QString& line :
             QString::fromUtf8(home.Read(QStringLiteral("vantorix.log"))).split(QStringLiteral("\r\n"))) {
            texts += line.mid(19).replace(music, QStringLiteral("M"));
        }
        return texts.join(u'\n').toStdString();
    }
    // Returns the number of the error that stops the program, 0 when there is none.
    int StopOf() {
        try {
            CreateList(form);
        } catch (const ProgramStop& stop) {
            EXPECT_EQ(stop.routine, QStringLiteral("CreateList"));
            detail = stop.error.detail;
            return stop.error.number;
        }
        return 0;
    }

    HomeFolder home;
    SimulatedPlatform platform;
    Form_Main form{platform.ports(), HandDown()};
    QString music;
    QString detail;
};

TEST_F(CreateListTest, AnEmptyFolderIsAnEmptyList) {
    form.library.List_List.resize(3);
    form.library.NumTrack = 9;
    List();
    EXPECT_TRUE(form.library.List_List.empty());
    EXPECT_EQ(form.library.NumTrack, 0);
}

TEST_F(CreateListTest, LinesOfTheAlphaOrder) {
    Add("Song.mp3");
    Add("Mix.vtxpl");
    AddFolder("Rock");
    List();
    EXPECT_EQ(
        Lines(),
        "M/Rock|dir|M/Rock|Rock;Mix.vtxpl|playlist|M/Mix.vtxpl|Mix.vtxpl;Song.mp3|file|M/Song.mp3|Song.mp3");
    EXPECT_EQ(form.library.NumTrack, 3);
    EXPECT_EQ(form.library.Order, QStringLiteral("alpha"));
}

// Deliberate D-48.
TEST_F(CreateListTest, FoldersStandAmongFilesWhereTheirPathSorts) {
    Add("Zappa.mp3");
    Add("(intro).mp3");
    Add("Abba.mp3");
    AddFolder("Blues");
    AddFolder("Ambient");
    List();
    EXPECT_EQ(Titles(), "(intro).mp3 Ambient Blues Abba.mp3 Zappa.mp3");
}

TEST_F(CreateListTest, OnlyTheListedKindsWhateverTheirCase) {
    for (const char* const name : {"a.mp3", "b.WMA", "c.wav", "d.avi", "e.MPG", "f.mp44", "g.Flac", "h.mp4",
                                   "i.jpg", "j.ogg", "mp3"}) {
        Add(name);
    }
    List();
    EXPECT_EQ(Titles(), "a.mp3 b.WMA c.wav d.avi e.MPG f.mp44 g.Flac");
    EXPECT_EQ(form.library.File1.Pattern,
              QStringLiteral("*.mp3;*.wma;*.wav;*.vtxpl;*.avi;*.mpg;*.mp44;*.flac"));
    EXPECT_EQ(form.library.File1.Path, music);
}

TEST_F(CreateListTest, HiddenEntriesAreNotListed) {
    Add(".hidden.mp3");
    AddFolder(".trash");
    Add("a.mp3");
    List();
    EXPECT_EQ(Titles(), "a.mp3");
}

TEST_F(CreateListTest, AnMp3BesideItsVideoIsNotShown) {
    Add("Track.mp3");
    Add("Track.avi");
    List();
    EXPECT_EQ(Titles(), "Track.avi");
    EXPECT_EQ(form.library.NumTrack, 1);
    Add("Other.mp3");
    Add("Other.mpg");
    List();
    EXPECT_EQ(Titles(), "Other.mpg Track.avi");
}

TEST_F(CreateListTest, NeitherIsShownBesideAnMp4) {
    Add("Track.mp3");
    Add("Track.mp4");
    List();
    EXPECT_EQ(Titles(), "");
    EXPECT_EQ(form.library.NumTrack, 0);
}

TEST_F(CreateListTest, TwinsAreFoundWhateverTheirCase) {
    Add("Track.MP3");
    Add("Track.avi");
    Add("Song.mp3");
    Add("SONG.AVI");
    Add(QString::fromUtf8("été.mp3").toUtf8().constData());
    Add(QString::fromUtf8("ÉTÉ.mpg").toUtf8().constData());
    List();
    EXPECT_EQ(Titles(), "ÉTÉ.mpg SONG.AVI Track.avi");
}

TEST_F(CreateListTest, OnlyAFileOfTheSameNameIsATwin) {
    Add("Track.mp3");
    AddFolder("Track.avi");
    Add("Other.wma");
    Add("Other.avi");
    Add("Long name.mp3");
    Add("name.avi");
    List();
    EXPECT_EQ(Titles(), "Track.avi Long name.mp3 name.avi Other.avi Other.wma Track.mp3");
}

TEST_F(CreateListTest, OnlyTheExactEndingIsAPlaylist) {
    Add("Mix.vtxpl");
    Add("Mix2.VTXPL");
    List();
    EXPECT_EQ(Lines(), "Mix.vtxpl|playlist|M/Mix.vtxpl|Mix.vtxpl;Mix2.VTXPL|file|M/Mix2.VTXPL|Mix2.VTXPL");
}

TEST_F(CreateListTest, AnUnknownOrderListsNothingAndCountsAll) {
    Add("a.mp3");
    AddFolder("Rock");
    Order("date");
    List();
    EXPECT_TRUE(form.library.List_List.empty());
    EXPECT_EQ(form.library.NumTrack, 2);
    EXPECT_EQ(form.library.Order, QStringLiteral("date"));
}

TEST_F(CreateListTest, TheFoldersOrderIsReadTrimmedAndComparedWithoutCase) {
    Add("a.mp3");
    form.settings.DefaultOrder = QStringLiteral("date");
    Order("Alpha  ");
    List();
    EXPECT_EQ(form.library.Order, QStringLiteral("Alpha"));
    EXPECT_EQ(Titles(), "a.mp3");
    Order("  ");
    List();
    EXPECT_EQ(form.library.Order, QStringLiteral("date")) << "blanks count as missing: the default order";
    EXPECT_EQ(Titles(), "");
}

TEST_F(CreateListTest, TheMostPlayedComeFirst) {
    Add("a.mp3");
    Add("b.mp3");
    Add("c.vtxpl");
    AddFolder("Rock");
    AddFolder("Jazz");
    Order("playcount");
    Counts("b.mp3=5\r\na.mp3=1\r\n" + music.toUtf8() + "/Rock=7\r\n");
    List();
    EXPECT_EQ(Lines(), "0999993|dir|M/Rock|Rock;0999995|file|M/b.mp3|b.mp3;0999999|file|M/a.mp3|a.mp3;"
                       "1000000|dir|M/Jazz|Jazz;1000000|playlist|M/c.vtxpl|c.vtxpl");
}

TEST_F(CreateListTest, EqualCountsSortByTypeThenPath) {
    Add("b.mp3");
    Add("a.vtxpl");
    Add("A.mp3");
    AddFolder("z");
    Order("PlayCount");
    List();
    EXPECT_EQ(Titles(), "z A.mp3 b.mp3 a.vtxpl");
}

TEST_F(CreateListTest, CountsAreFoundByNameWhateverTheirCase) {
    Add("a.mp3");
    Add("#1 = [Hit].mp3");
    Order("playcount");
    Counts("A.MP3=2\r\n");
    IniFilesOf(form).Write(form.files, home.Path(QStringLiteral("stats.ini")), QStringLiteral("PayingCount"),
                           QStringLiteral("#1 = [Hit].mp3"), QStringLiteral("3"));
    List();
    EXPECT_EQ(Lines(), "0999997|file|M/#1 = [Hit].mp3|#1 = [Hit].mp3;0999998|file|M/a.mp3|a.mp3");
}

TEST_F(CreateListTest, OddCounts) {
    for (const char* const name : {"a.mp3", "b.mp3", "c.mp3", "d.mp3"}) {
        Add(name);
    }
    Order("playcount");
    Counts("a.mp3=\r\nb.mp3=1000001\r\nc.mp3=2.5\r\nd.mp3= 1e1 \r\n");
    List();
    EXPECT_EQ(form.library.List_List.size(), 4U);
    EXPECT_EQ(Lines(), "-0000001|file|M/b.mp3|b.mp3;0999990|file|M/d.mp3|d.mp3;"
                       "0999998|file|M/c.mp3|c.mp3;1000000|file|M/a.mp3|a.mp3");
}

TEST_F(CreateListTest, ACountThatIsNoNumberStopsTheProgram) {
    Add("a.mp3");
    Order("playcount");
    Counts("a.mp3=many\r\n");
    PointDir1(form, music);
    EXPECT_EQ(StopOf(), kTypeMismatch);
    EXPECT_TRUE(detail.contains(QStringLiteral("stats.ini"))) << detail.toStdString();
    EXPECT_TRUE(detail.contains(QStringLiteral("a.mp3")));
    Order("alpha");
    EXPECT_EQ(StopOf(), 0) << "another order reads no counts";
}

TEST_F(CreateListTest, CountsCostOneLookAtTheirFile) {
    for (int i = 0; i < 50; ++i) {
        Add(QByteArray::number(i) + ".mp3");
    }
    Order("playcount");
    Counts("7.mp3=2\r\n");
    List();
    EXPECT_EQ(form.library.List_List.front().title, QStringLiteral("7.mp3"));
    Counts("9.mp3=12\r\n");
    CreateList(form);
    EXPECT_EQ(form.library.List_List.front().title, QStringLiteral("9.mp3"))
        << "each listing reads the counts as they are now";
}

TEST_F(CreateListTest, LogsTheRoutineThenFoldersThenFilesInNameOrder) {
    Add("b.mp3");
    Add("A.mp3");
    Add("Track.mp3");
    Add("Track.avi");
    AddFolder("Zoo");
    AddFolder("art");
    List();
    EXPECT_EQ(Log(), " : Creation de la liste des fichiers (CreateList)\n : M/art\n : M/Zoo\n : A.mp3\n : "
                     "b.mp3\n : Track.avi\n");
}

TEST_F(CreateListTest, ALogThatCannotBeWrittenStopsTheProgram) {
    PointDir1(form, music);
    platform.failures.Add(QStringLiteral("Append"));
    EXPECT_EQ(StopOf(), kPathFileAccess);
}

TEST_F(CreateListTest, ShowsWhatIsOnDiskNow) {
    Add("a.mp3");
    List();
    Add("b.mp3");
    AddFolder("New");
    CreateList(form);
    EXPECT_EQ(Titles(), "New a.mp3 b.mp3");
    EXPECT_EQ(form.library.Dir1.List, QStringList{music + QStringLiteral("/New")});
    EXPECT_EQ(form.library.File1.List, (QStringList{QStringLiteral("a.mp3"), QStringLiteral("b.mp3")}));
}

TEST_F(CreateListTest, AFolderThatCannotBeReadIsEmpty) {
    Add("a.mp3");
    List();
    platform.failures.Add(QStringLiteral("ListFolder"));
    CreateList(form);
    EXPECT_TRUE(form.library.List_List.empty());
    EXPECT_EQ(form.library.NumTrack, 0);
}

TEST_F(CreateListTest, NamesOfAnyBytesAreListed) {
    home.Write(QStringLiteral("music/") + TextOfPath("caf\xE9.mp3"));
    Add("pipe|and\nbreak.mp3");
    List();
    ASSERT_EQ(form.library.List_List.size(), 2U);
    EXPECT_EQ(BytesOfPath(form.library.List_List[0].title), "caf\xE9.mp3");
    EXPECT_TRUE(form.files.Identity(form.library.List_List[0].path)) << "the path still leads to the file";
    EXPECT_EQ(form.library.List_List[1].title, QStringLiteral("pipe|and\nbreak.mp3"));
    EXPECT_EQ(form.library.List_List[1].path, music + QStringLiteral("/pipe|and\nbreak.mp3"));
    EXPECT_EQ(form.library.List_List[1].type, QStringLiteral("file"));
}

TEST_F(CreateListTest, AFolderWithBracketsHasItsOwnOrder) {
    music = home.MakeFolder(QStringLiteral("Live [2004]"));
    home.Write(QStringLiteral("Live [2004]/a.mp3"));
    Order("date");
    List();
    EXPECT_EQ(form.library.Order, QStringLiteral("date"));
}

// A folder with more entries than the counter can hold.
struct CrowdedFiles : PosixFiles {
    int count = 0;

    std::optional<std::vector<FolderEntry>> ListFolder(const QString&) override {
        std::vector<FolderEntry> entries;
        for (int i = 0; i < count; ++i) {
            entries.push_back({QString::number(i) + QStringLiteral(".mp3"), i % 2 == 0});
        }
        return entries;
    }
};

TEST_F(CreateListTest, MoreThan32767EntriesStopTheProgram) {
    CrowdedFiles crowded;
    Ports ports = platform.ports();
    Form_Main crowdedForm({ports.audio, ports.graphs, ports.MSComm1, ports.display, ports.windows,
                           ports.fonts, ports.clock, ports.pump, ports.dialogs, ports.messageBox, crowded,
                           ports.zlib, ports.pictures},
                          HandDown());
    crowdedForm.shell.AppFolder = home.Path();
    crowdedForm.settings.DefaultOrder = QStringLiteral("alpha");
    crowded.count = 32767;
    PointDir1(crowdedForm, music);
    CreateList(crowdedForm);
    EXPECT_EQ(crowdedForm.library.NumTrack, 32767);
    EXPECT_EQ(crowdedForm.library.List_List.size(), 32767U);
    crowded.count = 32768;
    try {
        CreateList(crowdedForm);
        FAIL();
    } catch (const ProgramStop& stop) {
        EXPECT_EQ(stop.error.number, kOverflow);
    }
    EXPECT_EQ(home.Read(QStringLiteral("vantorix.log")).count('\n'), 2 + 32767 + 32768)
        << "the lines up to the error are logged";
}

class PointTest : public CreateListTest {};

TEST_F(PointTest, AFolderListHasFullPathsInNameOrder) {
    AddFolder("b");
    AddFolder("A");
    AddFolder(".hidden");
    Add("file.mp3");
    PointDir1(form, music);
    EXPECT_EQ(form.library.Dir1.Path, music);
    EXPECT_EQ(form.library.Dir1.List,
              (QStringList{music + QStringLiteral("/A"), music + QStringLiteral("/b")}));
    PointDir2(form, music + QStringLiteral("/A"));
    EXPECT_EQ(form.library.Dir2.Path, music + QStringLiteral("/A"));
    EXPECT_TRUE(form.library.Dir2.List.isEmpty());
    EXPECT_EQ(form.library.Dir1.Path, music) << "the other list is unchanged";
}

TEST_F(PointTest, AFileListHasTheNamesThatMatch) {
    Add("b.TTF");
    Add("a.ttf");
    Add("c.mp3");
    AddFolder("d.ttf");
    form.library.File1.Pattern = QStringLiteral("*.mp3");
    PointFile1(form, music);
    EXPECT_EQ(form.library.File1.List, QStringList{QStringLiteral("c.mp3")});
    SetFile1Pattern(form, QStringLiteral("*.ttf"));
    EXPECT_EQ(form.library.File1.List, (QStringList{QStringLiteral("a.ttf"), QStringLiteral("b.TTF")}));
    EXPECT_EQ(form.library.File1.Path, music);
}

TEST_F(PointTest, SeparatorsAtTheEndAreCut) {
    PointDir1(form, music + QStringLiteral("//"));
    EXPECT_EQ(form.library.Dir1.Path, music);
    PointDir1(form, QStringLiteral("/"));
    EXPECT_EQ(form.library.Dir1.Path, QStringLiteral("/"));
    EXPECT_TRUE(form.library.Dir1.List.contains(QStringLiteral("/usr")))
        << "no second separator below the root";
}

TEST_F(PointTest, ARelativePathCountsFromTheApplicationFolderFirst) {
    PointDir1(form, QStringLiteral("music"));
    EXPECT_EQ(form.library.Dir1.Path, music);
    PointFile1(form, QStringLiteral("music/"));
    EXPECT_EQ(form.library.File1.Path, music);
}

TEST_F(PointTest, ElseFromTheWorkingDirectory) {
    const QByteArray before = form.files.RealPath(QStringLiteral(".")).toUtf8();
    home.MakeFolder(QStringLiteral("work"));
    home.MakeFolder(QStringLiteral("work/there"));
    ASSERT_EQ(::chdir(home.Path(QStringLiteral("work")).toUtf8().constData()), 0);
    PointDir1(form, QStringLiteral("there"));
    EXPECT_EQ(form.library.Dir1.Path, form.files.RealPath(home.Path(QStringLiteral("work/there"))));
    ASSERT_EQ(::chdir(before.constData()), 0);
}

TEST_F(PointTest, NoFolderIsError76WithThePath) {
    Add("a.mp3");
    PointDir1(form, music);
    for (const QString& path : {QString(), QStringLiteral("/no/such"), QStringLiteral("no such"),
                                music + QStringLiteral("/a.mp3"), QStringLiteral("a\0b")}) {
        EXPECT_EQ(ErrorOf([&] { PointDir1(form, path); }), kPathNotFound) << path.toStdString();
        EXPECT_EQ(ErrorOf([&] { PointDir2(form, path); }), kPathNotFound);
        EXPECT_EQ(ErrorOf([&] { PointFile1(form, path); }), kPathNotFound);
    }
    EXPECT_EQ(form.library.Dir1.Path, music) << "after an error the list is unchanged";
    try {
        PointDir1(form, QStringLiteral("/no/such"));
        FAIL();
    } catch (const RunTimeError& error) {
        EXPECT_EQ(error.detail, QStringLiteral("/no/such: there is no such folder"));
    }
}

TEST_F(PointTest, AnUnreadableFolderIsAnEmptyList) {
    AddFolder("Rock");
    platform.failures.Add(QStringLiteral("ListFolder"));
    PointDir1(form, music);
    EXPECT_EQ(form.library.Dir1.Path, music);
    EXPECT_TRUE(form.library.Dir1.List.isEmpty());
}

} // namespace
