// Tests of the real file system through the port.
#include "platform/posix/posix_files.h"

#include "support/failing_files.h"
#include "support/home_folder.h"

#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <map>

namespace {

class PosixFilesTest : public testing::Test {
protected:
    QString Path(const char* name) { return home.Path(QString::fromUtf8(name)); }
    QByteArray Bytes(const char* name) { return BytesOfPath(Path(name)); }

    HomeFolder home;
    PosixFiles files;
};

TEST_F(PosixFilesTest, WritesReadsAndAppends) {
    EXPECT_TRUE(files.Write(Path("a"), "one", false));
    EXPECT_TRUE(files.Append(Path("a"), "two"));
    EXPECT_TRUE(files.Append(Path("b"), "new"));
    EXPECT_EQ(files.ReadWhole(Path("a"), 100), "onetwo");
    EXPECT_EQ(files.ReadWhole(Path("b"), 100), "new");
    EXPECT_TRUE(files.Write(Path("a"), QByteArray("\0x", 2), true));
    EXPECT_EQ(files.ReadWhole(Path("a"), 100), QByteArray("\0x", 2));
}

TEST_F(PosixFilesTest, ReadsNoMoreThanTheLimit) {
    const QByteArray bytes(100'000, 'x');
    files.Write(Path("a"), bytes, false);
    EXPECT_EQ(files.ReadWhole(Path("a"), 100'000), bytes);
    EXPECT_EQ(files.ReadWhole(Path("a"), 99'999), std::nullopt);
    files.Write(Path("empty"), QByteArray(), false);
    EXPECT_EQ(files.ReadWhole(Path("empty"), 0), QByteArray());
}

TEST_F(PosixFilesTest, AFileThatTellsNoSizeIsReadToItsEnd) {
    const auto status = files.ReadWhole(QStringLiteral("/proc/self/status"), 1 << 20);
    ASSERT_TRUE(status);
    EXPECT_TRUE(status->contains("Pid:"));
    EXPECT_EQ(files.ReadWhole(QStringLiteral("/proc/self/status"), 10), std::nullopt);
}

TEST_F(PosixFilesTest, AnOpenFileIsReadPieceByPiece) {
    files.Write(Path("a"), "one two", false);
    const auto file = files.Open(Path("a"));
    ASSERT_TRUE(file);
    EXPECT_EQ(file->Size(), 7);
    std::array<std::uint8_t, 4> four{};
    EXPECT_TRUE(file->Read(four));
    EXPECT_EQ(four[2], 'e');
    EXPECT_FALSE(file->Read(four)) << "three bytes are left";
    EXPECT_TRUE(file->Read({}));
}

TEST_F(PosixFilesTest, OnlyRegularFilesAreRead) {
    home.MakeFolder(QStringLiteral("folder"));
    ASSERT_EQ(::mkfifo(Bytes("fifo").constData(), 0600), 0);
    for (const QString& path : {Path("folder"), Path("fifo"), Path("none"), QStringLiteral("/dev/zero"),
                                QString(), QStringLiteral("a\0b")}) {
        EXPECT_EQ(files.ReadWhole(path, 100), std::nullopt) << path.toStdString();
        EXPECT_EQ(files.Identity(path), std::nullopt) << path.toStdString();
        EXPECT_EQ(files.Open(path), nullptr) << path.toStdString();
    }
    EXPECT_FALSE(files.Write(Path("fifo"), "x", false)) << "nobody reads it, and nobody waits";
}

TEST_F(PosixFilesTest, ANulInAPathNamesNothing) {
    files.Write(Path("a"), "x", false);
    const QString path = Path("a") + QChar(0) + u'b';
    EXPECT_EQ(files.ReadWhole(path, 10), std::nullopt);
    EXPECT_FALSE(files.IsFolder(home.Path() + QChar(0)));
    EXPECT_FALSE(files.Write(path, "y", false));
    EXPECT_FALSE(files.Remove(path));
    EXPECT_FALSE(files.Rename(Path("a"), path));
    EXPECT_EQ(files.ListFolder(home.Path() + QChar(0)), std::nullopt);
    EXPECT_EQ(files.RealPath(path), path);
    EXPECT_EQ(files.ReadWhole(Path("a"), 10), "x");
}

TEST_F(PosixFilesTest, TheIdentityChangesWithTheFile) {
    files.Write(Path("a"), "one", false);
    const auto first = files.Identity(Path("a"));
    ASSERT_TRUE(first);
    EXPECT_EQ(first->size, 3);
    EXPECT_EQ(files.Identity(Path("a")), first);
    files.Write(Path("a"), "four", false);
    EXPECT_NE(files.Identity(Path("a")), first);
    ASSERT_EQ(::symlink(Bytes("a").constData(), Bytes("link").constData()), 0);
    EXPECT_EQ(files.Identity(Path("link")), files.Identity(Path("a")));
}

TEST_F(PosixFilesTest, ListsFilesAndFoldersThroughLinks) {
    files.Write(Path("file"), "x", false);
    files.Write(Path(".hidden"), "x", false);
    home.MakeFolder(QStringLiteral("folder"));
    home.Write(TextOfPath("caf\xE9"));
    ASSERT_EQ(::symlink("file", Bytes("fileLink").constData()), 0);
    ASSERT_EQ(::symlink("folder", Bytes("folderLink").constData()), 0);
    ASSERT_EQ(::symlink("none", Bytes("dangling").constData()), 0);
    ASSERT_EQ(::mkfifo(Bytes("fifo").constData(), 0600), 0);
    const auto entries = files.ListFolder(home.Path());
    ASSERT_TRUE(entries);
    std::map<QByteArray, bool> found;
    for (const FolderEntry& entry : *entries) {
        found[BytesOfPath(entry.name)] = entry.isFolder;
    }
    const std::map<QByteArray, bool> expected = {{"file", false},      {".hidden", false},
                                                 {"folder", true},     {"fileLink", false},
                                                 {"folderLink", true}, {"caf\xE9", false}};
    EXPECT_EQ(found, expected);
}

TEST_F(PosixFilesTest, OnlyAFolderHasAList) {
    files.Write(Path("file"), "x", false);
    EXPECT_EQ(files.ListFolder(Path("file")), std::nullopt);
    EXPECT_EQ(files.ListFolder(Path("none")), std::nullopt);
    EXPECT_TRUE(files.ListFolder(home.MakeFolder(QStringLiteral("empty")))->empty());
}

TEST_F(PosixFilesTest, AFolderThatAnswersIsListedWithoutWaiting) {
    home.MakeFolder(QStringLiteral("folder"));
    home.MakeFolder(QStringLiteral("folder/inner"));
    const auto giveUp = [] { return false; };
    const auto entries = files.ListSlowFolder(Path("folder"), giveUp);
    ASSERT_TRUE(entries);
    ASSERT_EQ(entries->size(), 1U);
    EXPECT_EQ(entries->front().name, QStringLiteral("inner"));
    EXPECT_EQ(files.ListSlowFolder(Path("none"), giveUp), std::nullopt);
}

TEST_F(PosixFilesTest, TheDrivesBeginWithTheRootAndTheUsersHome) {
    const QByteArray before = qgetenv("HOME");
    qputenv("HOME", BytesOfPath(home.Path()));
    EXPECT_EQ(files.Drives().mid(0, 2), (QStringList{QStringLiteral("/"), home.Path()}));
    qputenv("HOME", "relative");
    EXPECT_EQ(files.Drives().front(), QStringLiteral("/"));
    EXPECT_FALSE(files.Drives().contains(QStringLiteral("relative")));
    qputenv("HOME", before);
}

TEST_F(PosixFilesTest, TellsFolders) {
    files.Write(Path("file"), "x", false);
    home.MakeFolder(QStringLiteral("folder"));
    ASSERT_EQ(::symlink("folder", Bytes("link").constData()), 0);
    EXPECT_TRUE(files.IsFolder(Path("folder")));
    EXPECT_TRUE(files.IsFolder(Path("link")));
    EXPECT_TRUE(files.IsFolder(QStringLiteral("/")));
    EXPECT_FALSE(files.IsFolder(Path("file")));
    EXPECT_FALSE(files.IsFolder(Path("none")));
}

TEST_F(PosixFilesTest, MakesFolders) {
    EXPECT_TRUE(files.MakeFolder(Path("a")));
    EXPECT_TRUE(files.MakeFolder(Path("a"))) << "it is there";
    EXPECT_FALSE(files.MakeFolder(Path("b/c")));
    files.Write(Path("file"), "x", false);
    EXPECT_FALSE(files.MakeFolder(Path("file")));
}

TEST_F(PosixFilesTest, RenamesAndRemoves) {
    files.Write(Path("a"), "1", false);
    files.Write(Path("b"), "2", false);
    EXPECT_TRUE(files.Rename(Path("a"), Path("b")));
    EXPECT_EQ(files.ReadWhole(Path("b"), 10), "1");
    EXPECT_FALSE(files.Rename(Path("a"), Path("b")));
    EXPECT_TRUE(files.Remove(Path("b")));
    EXPECT_FALSE(files.Remove(Path("b")));
    EXPECT_FALSE(files.Remove(home.MakeFolder(QStringLiteral("folder"))));
}

TEST_F(PosixFilesTest, APipeIsNotReplacedByAFile) {
    files.Write(Path("a"), "x", false);
    ASSERT_EQ(::mkfifo(Bytes("fifo").constData(), 0600), 0);
    EXPECT_FALSE(files.Rename(Path("a"), Path("fifo")));
    struct stat status {};
    ASSERT_EQ(::lstat(Bytes("fifo").constData(), &status), 0);
    EXPECT_TRUE(S_ISFIFO(status.st_mode));
    EXPECT_EQ(files.ReadWhole(Path("a"), 10), "x");
}

TEST_F(PosixFilesTest, SyncsFolders) {
    EXPECT_TRUE(files.SyncFolder(home.Path()));
    EXPECT_FALSE(files.SyncFolder(Path("none")));
    files.Write(Path("file"), "x", false);
    EXPECT_FALSE(files.SyncFolder(Path("file")));
}

TEST_F(PosixFilesTest, RemovesAFolderWithEverythingInItAndNoTargetOfALink) {
    files.MakeFolder(Path("tree"));
    files.MakeFolder(Path("tree/inner"));
    files.MakeFolder(Path("target"));
    files.Write(Path("tree/inner/file"), "x", false);
    files.Write(Path("target/file"), "x", false);
    std::filesystem::create_symlink(Path("target").toStdString(), Path("tree/link").toStdString());
    EXPECT_TRUE(files.RemoveTree(Path("tree")));
    EXPECT_FALSE(files.IsFolder(Path("tree")));
    EXPECT_TRUE(files.Identity(Path("target/file")));
    EXPECT_TRUE(files.RemoveTree(Path("tree"))) << "there is nothing to remove";
    EXPECT_TRUE(files.RemoveTree(Path("target/file")));
    EXPECT_FALSE(files.RemoveTree(QString()));
}

TEST_F(PosixFilesTest, SyncsAFile) {
    files.Write(Path("file"), "x", false);
    EXPECT_TRUE(files.SyncFile(Path("file")));
    EXPECT_FALSE(files.SyncFile(Path("none")));
}

TEST_F(PosixFilesTest, CopiesAccessRights) {
    files.Write(Path("a"), "1", false);
    files.Write(Path("b"), "2", false);
    ASSERT_EQ(::chmod(Bytes("a").constData(), 0604), 0);
    files.CopyRights(Path("a"), Path("b"));
    struct stat status {};
    ASSERT_EQ(::stat(Bytes("b").constData(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777, 0604U);
    files.CopyRights(Path("none"), Path("b"));
    files.CopyRights(Path("a"), Path("none"));
}

TEST_F(PosixFilesTest, FollowsLinksToTheRealPath) {
    const QString real = files.RealPath(home.Path());
    files.Write(Path("a"), "1", false);
    ASSERT_EQ(::symlink("a", Bytes("link").constData()), 0);
    ASSERT_EQ(::symlink("link", Bytes("link2").constData()), 0);
    EXPECT_EQ(files.RealPath(Path("link2")), real + QStringLiteral("/a"));
    EXPECT_EQ(files.RealPath(Path("none")), Path("none"));
    ASSERT_EQ(::symlink("later", Bytes("dangling").constData()), 0);
    EXPECT_EQ(files.RealPath(Path("dangling")), Path("later"));
    ASSERT_EQ(::symlink("round", Bytes("round").constData()), 0);
    EXPECT_EQ(files.RealPath(Path("round")), Path("round"));
    EXPECT_TRUE(files.RealPath(QStringLiteral(".")).startsWith(u'/'));
}

TEST_F(PosixFilesTest, APlaceThatTakesNoBytesFails) {
    EXPECT_FALSE(files.Write(Path("none/a"), "1", false));
    EXPECT_FALSE(files.Append(Path("none/a"), "1"));
    EXPECT_FALSE(files.Append(QStringLiteral("/dev/full"), "1"));
    EXPECT_FALSE(files.Write(home.Path(), "1", false));
}

TEST_F(PosixFilesTest, FailingFilesFailTheCallsAskedFor) {
    FailingFiles failing(files);
    failing.Fail("Write", 2, 1);
    EXPECT_TRUE(failing.Write(Path("a"), "1", false));
    EXPECT_FALSE(failing.Write(Path("a"), "2", false));
    EXPECT_TRUE(failing.Write(Path("a"), "3", false));
    EXPECT_EQ(failing.Calls("Write"), 3);
    EXPECT_EQ(failing.Calls("Rename"), 0);
    failing.Fail("Append", 2);
    EXPECT_TRUE(failing.Append(Path("a"), "4"));
    EXPECT_FALSE(failing.Append(Path("a"), "5"));
    EXPECT_FALSE(failing.Append(Path("a"), "6"));
    EXPECT_EQ(failing.ReadWhole(Path("a"), 10), "34");
    failing.FailNothing();
    EXPECT_TRUE(failing.Append(Path("a"), "7"));
}

} // namespace
