// Counting a pick: what is counted, in how many writes, and the effect of a bad count.
#include "playback/play_counts.h"

#include "shell/hand_down.h"
#include "support/error_of.h"
#include "support/failing_files.h"
#include "support/jukebox.h"

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace {

class CountPickTest : public testing::Test {
protected:
    // A separate form, so that its file operations can be counted.
    CountPickTest() : form(PortsWith(files), HandDown()) { form.shell.AppFolder = home.Path(); }

    Ports PortsWith(Files& counted) {
        Ports ports = platform.ports();
        return {.audio = ports.audio,
                .graphs = ports.graphs,
                .MSComm1 = ports.MSComm1,
                .display = ports.display,
                .windows = ports.windows,
                .fonts = ports.fonts,
                .clock = ports.clock,
                .pump = ports.pump,
                .dialogs = ports.dialogs,
                .messageBox = ports.messageBox,
                .files = counted,
                .zlib = ports.zlib,
                .pictures = ports.pictures};
    }
    void Pick(const QString& title, const QString& folder) {
        form.library.InfoTitre(0) = title;
        form.library.Dir1.Path = folder;
        CountPick(form, 0);
    }
    QByteArray Counts() { return home.Read(u"stats.ini"_s); }

    HomeFolder home;
    SimulatedPlatform platform;
    FailingFiles files{home.files()};
    Form_Main form;
};

TEST_F(CountPickTest, TheTitleTheFolderAndEachFolderAboveItAreCounted) {
    Pick(u"Song.mp3"_s, u"/music/rock/best of"_s);
    EXPECT_EQ(Counts(),
              "[PayingCount]\r\nSong.mp3=1\r\n/music/rock/best of=1\r\n/music/rock=1\r\n/music=1\r\n");
    Pick(u"Other.mp3"_s, u"/music/rock"_s);
    EXPECT_EQ(Counts(),
              "[PayingCount]\r\nSong.mp3=1\r\n/music/rock/best of=1\r\n/music/rock=2\r\n/music=2\r\n"
              "Other.mp3=1\r\n");
}

TEST_F(CountPickTest, AFolderAtTheRootIsCountedAloneAndTheRootItselfOnlyWhenItIsShown) {
    Pick(u"a"_s, u"/music"_s);
    EXPECT_EQ(Counts(), "[PayingCount]\r\na=1\r\n/music=1\r\n");
    Pick(u"a"_s, u"/"_s);
    EXPECT_EQ(Counts(), "[PayingCount]\r\na=2\r\n/music=1\r\n/=1\r\n") << "no key is empty";
}

TEST_F(CountPickTest, APickInADeepFolderCostsOneWrite) {
    QString folder;
    for (int level = 0; level < 100; ++level) {
        folder += u"/level %1"_s.arg(level);
    }
    Pick(u"Song.mp3"_s, folder);
    EXPECT_EQ(files.Calls("Write"), 1);
    EXPECT_EQ(files.Calls("Rename"), 1);
    EXPECT_EQ(Counts().count("\r\n"), 102);
    Pick(u"Song.mp3"_s, folder);
    EXPECT_EQ(files.Calls("Write"), 2);
    EXPECT_EQ(Counts().count("=2\r\n"), 101);
}

TEST_F(CountPickTest, ACountThatIsNoNumberIsError13AndWhatCameBeforeItIsKept) {
    home.Write(u"stats.ini"_s, "[PayingCount]\nSong.mp3=4\n/music=many\n/=1\n");
    EXPECT_EQ(ErrorOf([&] { Pick(u"Song.mp3"_s, u"/music/rock"_s); }), kTypeMismatch);
    EXPECT_EQ(Counts(), "[PayingCount]\nSong.mp3=5\n/music=many\n/=1\n/music/rock=1\n");
}

TEST_F(CountPickTest, ABadFirstCountMakesNoFileAnew) {
    home.Write(u"stats.ini"_s, "[PayingCount]\nSong.mp3=many\n");
    EXPECT_EQ(ErrorOf([&] { Pick(u"Song.mp3"_s, u"/music"_s); }), kTypeMismatch);
    EXPECT_EQ(files.Calls("Write"), 0);
}

TEST_F(CountPickTest, ABlankCountIsNone) {
    home.Write(u"stats.ini"_s, "[PayingCount]\nSong.mp3=  \n");
    Pick(u"Song.mp3"_s, u"/music"_s);
    EXPECT_EQ(Counts(), "[PayingCount]\nSong.mp3=  1\n/music=1\n");
}

// The text of a key ends at a line feed, so two folders of the same path can share one key.
TEST_F(CountPickTest, FoldersThatAreOneKeyAreCountedOneAfterTheOther) {
    Pick(u"a"_s, u"/music/x\ny/z"_s);
    EXPECT_EQ(Counts(), "[PayingCount]\r\na=1\r\n/music/x=2\r\n/music=1\r\n");
}

TEST_F(CountPickTest, AFileThatCannotBeWrittenLosesTheCountSilently) {
    home.Write(u"stats.ini"_s, "[PayingCount]\na=1\n");
    files.Fail("Rename");
    Pick(u"a"_s, u"/music"_s);
    files.FailNothing();
    EXPECT_EQ(Counts(), "[PayingCount]\na=1\n");
    Pick(u"a"_s, u"/music"_s);
    EXPECT_EQ(Counts(), "[PayingCount]\na=2\n/music=1\n");
}

TEST_F(CountPickTest, TitlesOfAnyLettersAreCountedInTheFilesOwnEncoding) {
    home.Write(u"stats.ini"_s, "[PayingCount]\r\nCaf\xE9.mp3=2\r\n");
    Pick(u"Café.mp3"_s, u"/m"_s);
    EXPECT_EQ(Counts(), "[PayingCount]\r\nCaf\xE9.mp3=3\r\n/m=1\r\n");
    Pick(u"日.mp3"_s, u"/m"_s);
    EXPECT_EQ(Counts(), "[PayingCount]\r\nCaf\xC3\xA9.mp3=3\r\n/m=2\r\n\xE6\x97\xA5.mp3=1\r\n");
}

} // namespace
