// Playlist files: valid counts, broken files, and saving that fails.
#include "playback/playlist_file.h"

#include "support/error_of.h"
#include "support/jukebox.h"

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace {

class PlaylistFile : public testing::Test {
protected:
    PlaylistFile() {
        box.Track(u"a.mp3"_s);
        form.queue.PlaylistCount = 7;
        form.queue.PlaylistTitre(1) = u"before"_s;
    }
    // Reads a file with these bytes, after replacing "M" by the music folder. Returns the number of the
    // error, 0 when there is none.
    int Read(QByteArray bytes) {
        bytes.replace("M/", box.Music().toUtf8() + '/');
        const QString path = box.Home(u"playlists/p.vtxpl"_s);
        box.form.files.Write(path, bytes, false);
        try {
            ReadPlaylistFile(form, path);
        } catch (const RunTimeError& error) {
            detail = error.detail;
            return error.number;
        }
        return 0;
    }
    void FillQueue() {
        form.queue.PlaylistCount = 2;
        form.queue.PlaylistPath(1) = u"/m/one.mp3"_s;
        form.queue.PlaylistTitre(1) = u"One"_s;
        form.queue.PlaylistPath(2) = TextOfPath("/m/caf\xE9.mp3");
        form.queue.PlaylistTitre(2) = u"Été\r\nlive"_s;
    }
    QByteArray Saved(const QString& name) {
        return form.files.ReadWhole(box.Home(u"playlists/"_s + name), 1 << 20).value_or("(missing)");
    }

    Jukebox box;
    Form_Main& form = box.form;
    QString detail;
};

// The first line of a playlist and its effect.
struct CountRow {
    const char* line;
    int error;
    int entries;
};

class PlaylistCountLine : public PlaylistFile, public testing::WithParamInterface<CountRow> {};

TEST_P(PlaylistCountLine, IsA16BitNumber) {
    const CountRow& row = GetParam();
    EXPECT_EQ(Read(row.line + QByteArray("\r\nM/a.mp3\r\nA\r\nM/a.mp3\r\nB\r\nM/a.mp3\r\nC\r\n")), row.error);
    EXPECT_EQ(form.queue.PlaylistCount, row.entries) << row.line;
    EXPECT_EQ(detail.contains(u"line 1"_s), row.error != 0) << detail.toStdString();
}

// A line that cannot be converted leaves the old queue; lines after the announced entries are not read.
// clang-format off
INSTANTIATE_TEST_SUITE_P(Lines, PlaylistCountLine, testing::Values(
    CountRow{" 2 ",     0,             2},
    CountRow{"2",       0,             2},
    CountRow{"\xEF\xBB\xBF 1 ", 0,     1},
    CountRow{"1.5",     0,             2},
    CountRow{"2.5",     0,             2},
    CountRow{"3e0",     0,             3},
    CountRow{"0",       0,             0},
    CountRow{"-2",      0,             0},
    CountRow{"",        kTypeMismatch, 7},
    CountRow{"two",     kTypeMismatch, 7},
    CountRow{"2 songs", kTypeMismatch, 7},
    CountRow{"32768",   kOverflow,     7}));
// clang-format on

TEST_F(PlaylistFile, AnEmptyFileIsError62AndLeavesTheQueue) {
    EXPECT_EQ(Read(""), kInputPastEnd);
    EXPECT_EQ(form.queue.PlaylistCount, 7);
    EXPECT_EQ(form.queue.PlaylistTitre(1), u"before"_s);
}

TEST_F(PlaylistFile, AFileThatEndsTooEarlyKeepsWhatWasRead) {
    EXPECT_EQ(Read("2\nM/a.mp3\nA\nM/a.mp3\n"), kInputPastEnd);
    EXPECT_TRUE(detail.contains(u"line 5"_s)) << detail.toStdString();
    EXPECT_EQ(form.queue.PlaylistCount, 1);
    EXPECT_EQ(form.queue.PlaylistTitre(1), u"A"_s);
}

TEST_F(PlaylistFile, EntriesThatNameNoFileArePassedOver) {
    box.Folder(u"folder.mp3"_s);
    EXPECT_EQ(Read("5\nM/gone.mp3\nGone\n\nno path\nM/folder.mp3\nFolder\n  M/a.mp3 \n A \nM/A.MP3\nOther\n"),
              0);
    EXPECT_EQ(form.queue.PlaylistCount, 1);
    EXPECT_EQ(form.queue.PlaylistPath(1), box.Music(u"a.mp3"_s));
    EXPECT_EQ(form.queue.PlaylistTitre(1), u"A"_s);
    EXPECT_EQ(form.queue.PlaylistCredits(1), 0);
}

TEST_F(PlaylistFile, TheThousandAndFirstEntryIsError9) {
    QByteArray lines;
    for (int i = 0; i < 1001; ++i) {
        lines += "M/a.mp3\nA\n";
    }
    EXPECT_EQ(Read("1000\n" + lines), 0);
    EXPECT_EQ(form.queue.PlaylistCount, 1000);
    EXPECT_EQ(Read("1001\n" + lines), kSubscriptOutOfRange);
    EXPECT_EQ(form.queue.PlaylistCount, 1001);
}

TEST_F(PlaylistFile, AFileThatCannotBeReadIsError75) {
    box.platform.failures.Add(u"ReadWhole"_s);
    EXPECT_EQ(Read("1\nM/a.mp3\nA\n"), kPathFileAccess);
    EXPECT_EQ(form.queue.PlaylistCount, 7);
}

TEST_F(PlaylistFile, PathsKeepTheirBytesAndTitlesTheirLine) {
    FillQueue();
    WritePlaylistFile(form, u"Mix"_s);
    EXPECT_EQ(Saved(u"Mix - 01 Jan 2000.vtxpl"_s),
              " 2 \r\n/m/one.mp3\r\nOne\r\n/m/caf\xE9.mp3\r\n\xC3\x89t\xC3\xA9  live\r\n");
}

TEST_F(PlaylistFile, ASaveThatFailsLeavesTheOldFile) {
    FillQueue();
    WritePlaylistFile(form, u"Mix"_s);
    const QByteArray before = Saved(u"Mix - 01 Jan 2000.vtxpl"_s);
    form.queue.PlaylistCount = 1;
    box.platform.failures.Add(u"Rename"_s);
    EXPECT_EQ(ErrorOf([&] { WritePlaylistFile(form, u"Mix"_s); }), kPathFileAccess);
    EXPECT_EQ(Saved(u"Mix - 01 Jan 2000.vtxpl"_s), before);
}

TEST_F(PlaylistFile, NamesThatTheFileSystemRefusesAreError75) {
    FillQueue();
    for (const QString& name : {u"a/b"_s, u"../b"_s, QString(300, u'n'), u"a\0b"_s}) {
        EXPECT_EQ(ErrorOf([&] { WritePlaylistFile(form, name); }), kPathFileAccess) << name.toStdString();
    }
    EXPECT_EQ(QDir(box.Home(u"playlists"_s)).entryList(QDir::Files), QStringList());
}

TEST_F(PlaylistFile, WithoutItsFolderASaveIsError76) {
    FillQueue();
    ASSERT_TRUE(QDir(box.Home(u"playlists"_s)).removeRecursively());
    EXPECT_EQ(ErrorOf([&] { WritePlaylistFile(form, u"Mix"_s); }), kPathNotFound);
}

} // namespace
