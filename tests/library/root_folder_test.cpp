// The folder "/" as music folder and application folder: no path has a double separator.
#include "core/run_time_error.h"
#include "library/create_list.h"
#include "library/folder_names.h"
#include "platform/simulated/simulated_platform.h"
#include "playback/play_counts.h"
#include "playback/playlist_file.h"
#include "rendering/covers.h"
#include "shell/hand_down.h"
#include "state/form_main.h"
#include "state/log.h"
#include "state/paths.h"
#include "support/home_folder.h"
#include "support/rooted_files.h"

#include <gtest/gtest.h>

#include <QBuffer>
#include <QImage>

using namespace Qt::Literals::StringLiterals;

namespace {

QByteArray Picture() {
    QImage picture(8, 8, QImage::Format_RGB32);
    picture.fill(qRgb(10, 20, 30));
    QBuffer file;
    file.open(QIODevice::WriteOnly);
    picture.save(&file, "JPG");
    return file.data();
}

// Both the music folder and the application folder are "/".
class RootFolderTest : public testing::Test {
protected:
    RootFolderTest() : form(PortsWith(files), HandDown()) {
        form.shell.AppFolder = u"/"_s;
        form.settings.DefaultOrder = u"alpha"_s;
    }
    Ports PortsWith(Files& rooted) {
        const Ports ports = platform.ports();
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
                .files = rooted,
                .zlib = ports.zlib,
                .pictures = ports.pictures};
    }
    void List() {
        PointDir1(form, u"/"_s);
        CreateList(form);
    }
    QStringList Paths() const {
        QStringList paths;
        for (const ListLine& line : form.library.List_List) {
            paths += line.path;
        }
        return paths;
    }

    HomeFolder root;
    SimulatedPlatform platform;
    RootedFiles files{root.files(), root.Path()};
    Form_Main form;
};

TEST_F(RootFolderTest, TheListHasOneSeparatorInEachPath) {
    root.MakeFolder(u"rock"_s);
    root.Write(u"song.mp3"_s);
    List();
    EXPECT_EQ(form.library.Dir1.Path, u"/"_s);
    EXPECT_EQ(form.library.Dir1.List, QStringList(u"/rock"_s));
    EXPECT_EQ(Paths(), QStringList({u"/rock"_s, u"/song.mp3"_s}));
}

TEST_F(RootFolderTest, AFolderBelowIsEnteredByItsPath) {
    root.MakeFolder(u"rock"_s);
    root.Write(u"rock/song.mp3"_s);
    PointDir1(form, u"rock"_s);
    EXPECT_EQ(form.library.Dir1.Path, u"/rock"_s) << "a relative path is resolved in the application folder";
    CreateList(form);
    EXPECT_EQ(Paths(), QStringList(u"/rock/song.mp3"_s));
}

TEST_F(RootFolderTest, ItsOrderIsInTheSectionOfOneSeparator) {
    root.Write(u"a.mp3"_s);
    root.Write(u"b.mp3"_s);
    root.Write(u"pathconfig.ini"_s, "[/]\r\nOrder=playcount\r\n");
    root.Write(u"stats.ini"_s, "[PayingCount]\r\nb.mp3=2\r\n");
    List();
    EXPECT_EQ(form.library.Order, u"playcount"_s);
    EXPECT_EQ(Paths(), QStringList({u"/b.mp3"_s, u"/a.mp3"_s}));
}

TEST_F(RootFolderTest, APickCountsTheTitleAndTheFolderAndNoEmptyKey) {
    root.Write(u"song.mp3"_s);
    List();
    form.library.InfoTitre(0) = u"song.mp3"_s;
    CountPick(form, 0);
    EXPECT_EQ(root.Read(u"stats.ini"_s), "[PayingCount]\r\nsong.mp3=1\r\n/=1\r\n");
}

TEST_F(RootFolderTest, FilesAreFoundWhateverTheirCase) {
    root.Write(u"Folder.JPG"_s);
    EXPECT_EQ(FindFile(files, u"/"_s, u"folder.jpg"_s), u"/Folder.JPG"_s);
    const FolderNames names(files, u"/"_s);
    EXPECT_TRUE(names.HasFile(u"/FOLDER.jpg"_s)) << "the path is in the folder";
    EXPECT_EQ(names.FindFile(u"/folder.jpg"_s), u"/Folder.JPG"_s);
}

TEST_F(RootFolderTest, TheCoverBesideATrackIsFound) {
    root.Write(u"song.mp3"_s);
    root.Write(u"SONG.jpg"_s, Picture());
    form.library.InfoPath(0) = u"/song.mp3"_s;
    form.library.InfoType(0) = u"file"_s;
    LoadBigCover(form, 0);
    EXPECT_EQ(form.frame.CoverKind, 1);
}

TEST_F(RootFolderTest, APlaylistAndTheLogAreWrittenBelowIt) {
    root.MakeFolder(u"playlists"_s);
    form.queue.PlaylistCount = 1;
    form.queue.PlaylistPath(1) = u"/song.mp3"_s;
    form.queue.PlaylistTitre(1) = u"song.mp3"_s;
    WritePlaylistFile(form, u"mix"_s);
    EXPECT_EQ(root.Read(u"playlists/mix - 01 Jan 2000.vtxpl"_s), " 1 \r\n/song.mp3\r\nsong.mp3\r\n");
    OpenLog(form, u" : line"_s);
    EXPECT_EQ(root.Read(u"vantorix.log"_s), "2000-01-01 00:00:00 : line\r\n");
}

TEST_F(RootFolderTest, AnErrorNamesAFileByOneSeparator) {
    root.Write(u"stats.ini"_s, "[PayingCount]\r\n/=many\r\n");
    List();
    try {
        CountPick(form, 0);
        FAIL() << "a count that is not a number is an error";
    } catch (const RunTimeError& error) {
        EXPECT_TRUE(error.detail.startsWith(u"/stats.ini, [PayingCount] / (expected a number): "_s))
            << error.detail.toStdString();
    }
}

} // namespace
