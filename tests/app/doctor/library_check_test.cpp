// Tests of the checks of a library that need many files, a theme of their own or a folder that vanishes.
#include "app/doctor/deep_check.h"
#include "app/doctor/findings_of.h"
#include "app/doctor/library_check.h"
#include "app/doctor/progress.h"
#include "app/doctor/still_files.h"
#include "app/doctor/theme_check.h"
#include "support/jukebox.h"

#include <gtest/gtest.h>

#include <unistd.h>

namespace {

// A jukebox whose theme is loaded, and what is found in its music folder.
LibrarySummary Check(Jukebox& jukebox, FindingsOf& found, bool isDeep = false) {
    Progress progress;
    jukebox.Start();
    return CheckLibrary(jukebox.form, found.report, {jukebox.Music(), true, isDeep}, progress);
}

} // namespace

TEST(LibraryCheckTest, AFolderWithMoreEntriesThanCanBeCounted) {
    Jukebox jukebox;
    jukebox.Folder(QStringLiteral("crowd"));
    jukebox.Track(QStringLiteral("crowd/0.mp3"));
    const QByteArray first = jukebox.Music(QStringLiteral("crowd/0.mp3")).toUtf8();
    for (int i = 1; i < 32768; ++i) {
        ASSERT_EQ(::link(first.constData(),
                         jukebox.Music(QStringLiteral("crowd/%1.mp3").arg(i)).toUtf8().constData()),
                  0);
    }
    FindingsOf found;
    Check(jukebox, found);
    EXPECT_EQ(found.Count("error", "The program stops when this folder is opened: error 6"), 1);
}

TEST(LibraryCheckTest, TheNarrowestSlotDecidesAboutATitle) {
    Jukebox jukebox;
    jukebox.Track(QStringLiteral("Band - Wonderful.mp3"));
    {
        FindingsOf found;
        Check(jukebox, found);
        EXPECT_EQ(found.Count("error", "wider than the narrowest box"), 0);
    }
    // The track is shown in the first slot, where it still fits.
    jukebox.SetTheme(QStringLiteral("zonelistDroite2"), QStringLiteral("ZoneListPisteTitreW"),
                     QStringLiteral("30"));
    FindingsOf found;
    ASSERT_TRUE(CheckThemeOfHome(jukebox.form, found.report));
    Progress progress;
    CheckLibrary(jukebox.form, found.report, {jukebox.Music(), true, false}, progress);
    EXPECT_EQ(found.Count("error", "wider than the narrowest box of the theme \"default\" (30 pixels)"), 1);
}

TEST(LibraryCheckTest, AWordThatIsTooWideDoesNotStopATitleWithoutASecondLine) {
    Jukebox jukebox;
    jukebox.Track(QString(60, u'W') + QStringLiteral(".mp3"));
    FindingsOf found;
    Check(jukebox, found);
    EXPECT_EQ(found.Count("error", ""), 0);
}

TEST(LibraryCheckTest, ATagThatIsNotReadIsANote) {
    Jukebox jukebox;
    jukebox.SetKey(QStringLiteral("config.ini"), QStringLiteral("Main"), QStringLiteral("ShowMp3CoverTag"),
                   QStringLiteral("false"));
    jukebox.platform.realFiles.Write(jukebox.Music(QStringLiteral("a.mp3")),
                                     QByteArray("ID3\3\0\0\0\0\0\2", 10) + QByteArray(100, 'x'), false);
    FindingsOf found;
    Check(jukebox, found);
    EXPECT_EQ(found.Count("note", "would stop when this track is shown"), 1);
    EXPECT_EQ(found.Count("error", ""), 0);
}

TEST(LibraryCheckTest, CoversThatAreSwitchedOffAreNotes) {
    Jukebox jukebox;
    for (const char* const key : {"ShowCover", "ShowBigCover"}) {
        jukebox.SetKey(QStringLiteral("config.ini"), QStringLiteral("Main"), QString::fromLatin1(key),
                       QStringLiteral("false"));
    }
    jukebox.Folder(QStringLiteral("a"));
    for (const char* const name : {"a/folder.jpg", "a/bigcover.jpg", "a/x.jpg", "a/x.mp3"}) {
        jukebox.platform.realFiles.Write(jukebox.Music(QString::fromLatin1(name)), "\xff\xd8", false);
    }
    FindingsOf found;
    Check(jukebox, found);
    EXPECT_EQ(found.Count("note", "covers of folders are switched off"), 1);
    EXPECT_EQ(found.Count("note", "A bigcover is used where"), 1);
    EXPECT_EQ(found.Count("note", "covers next to tracks are switched off"), 1);
}

TEST(LibraryCheckTest, TitlesOfPlaylistsAreMeasured) {
    Jukebox jukebox;
    jukebox.platform.realFiles.Write(
        jukebox.Home(QStringLiteral("playlists/%1 - 01 Jan 2000.vtxpl").arg(QString(60, u'W'))), " 0 \r\n",
        false);
    jukebox.platform.realFiles.Write(
        jukebox.Home(QStringLiteral("playlists/My - %1.vtxpl").arg(QString(60, u'W'))), " 0 \r\n", false);
    jukebox.Start();
    FindingsOf found;
    CheckPlaylistTitles(jukebox.form, found.report);
    EXPECT_EQ(found.Count("error", "wider than the narrowest box"), 1);
}

TEST(LibraryCheckTest, AFolderThatIsGoneIsAnErrorAndNoCrash) {
    Jukebox jukebox;
    jukebox.Start();
    QDir(jukebox.Music()).removeRecursively();
    FindingsOf found;
    Progress progress;
    const LibrarySummary summary =
        CheckLibrary(jukebox.form, found.report, {jukebox.Music(), true, false}, progress);
    EXPECT_EQ(found.Count("error", "cannot be read"), 1);
    EXPECT_EQ(summary.files, 0);
}

TEST(LibraryCheckTest, AThemeThatDoesNotLoad) {
    Jukebox jukebox;
    jukebox.form.settings.Theme = QStringLiteral("gone");
    FindingsOf gone;
    EXPECT_FALSE(CheckThemeOfHome(jukebox.form, gone.report));
    EXPECT_EQ(gone.Count("error", "there is no theme \"gone\""), 1);
    jukebox.RemoveTheme(QStringLiteral("zonelist"), QStringLiteral("ZoneListWidth"));
    jukebox.form.settings.Theme = QStringLiteral("default");
    FindingsOf broken;
    EXPECT_FALSE(CheckThemeOfHome(jukebox.form, broken.report));
    EXPECT_EQ(broken.Count("error", "ZoneListWidth"), 1);
}

TEST(LibraryCheckTest, FilesAreOpenedWithoutHarm) {
    HomeFolder folder;
    std::vector<MediaFile> files;
    for (const char* const name : {"a.mp3", "b.avi", "gone.mp3"}) {
        files.push_back({folder.Path(QString::fromLatin1(name)), QByteArray(name).endsWith("avi")});
    }
    folder.Write(QStringLiteral("a.mp3"), "no sound");
    folder.Write(QStringLiteral("b.avi"), "no picture");
    FindingsOf found;
    Progress progress;
    CheckOpening(files, found.report, progress);
    EXPECT_EQ(found.Count("warning", "a.mp3"), 1);
    EXPECT_EQ(found.Count("error", "b.avi"), 1);
    EXPECT_EQ(found.Count("warning", "gone.mp3"), 1);
}

TEST(StillFilesTest, NothingIsWritten) {
    HomeFolder home;
    home.Write(QStringLiteral("a"), "1");
    StillFiles files(home.files());
    const QString path = home.Path(QStringLiteral("a"));
    EXPECT_TRUE(files.Append(path, "2"));
    EXPECT_TRUE(files.Write(path, "3", true));
    EXPECT_TRUE(files.Write(home.Path(QStringLiteral("b")), "3", true));
    EXPECT_TRUE(files.Rename(path, home.Path(QStringLiteral("c"))));
    EXPECT_TRUE(files.Remove(path));
    EXPECT_TRUE(files.RemoveTree(home.Path()));
    EXPECT_TRUE(files.MakeFolder(home.Path(QStringLiteral("d"))));
    EXPECT_EQ(home.Read(QStringLiteral("a")), "1");
    EXPECT_EQ(home.Count(), 1U);
}

TEST(ProgressTest, TimeLeftGrowsWithTheRest) {
    using std::chrono::seconds;
    EXPECT_EQ(TimeLeft(seconds(10), 0, 100), QString());
    EXPECT_EQ(TimeLeft(seconds(10), 10, 100), QStringLiteral("1:30"));
    EXPECT_EQ(TimeLeft(seconds(10), 10, 1000), QStringLiteral("16:30"));
    EXPECT_EQ(TimeLeft(seconds(100), 10, 1000), QStringLiteral("2:45:00"));
    EXPECT_EQ(TimeLeft(seconds(10), 100, 100), QStringLiteral("0:00"));
}
