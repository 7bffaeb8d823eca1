// Replacing files safely: when a step fails, the old file stays.
#include "settings/safe_write.h"

#include "support/failing_files.h"
#include "support/home_folder.h"

#include <gtest/gtest.h>

#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <csignal>

namespace {

class SafeWrite : public testing::Test {
protected:
    QByteArray Read() { return home.Read(name); }
    mode_t Mode() {
        struct stat status {};
        ::stat(path.toUtf8().constData(), &status);
        return status.st_mode & 07777;
    }

    HomeFolder home;
    QString name = QStringLiteral("stats.ini");
    QString path = home.Path(name);
    FailingFiles files{home.files()};
};

TEST_F(SafeWrite, MakesAndReplacesAFile) {
    EXPECT_TRUE(WriteFileSafely(files, path, "first"));
    EXPECT_EQ(Read(), "first");
    EXPECT_TRUE(WriteFileSafely(files, path, "2"));
    EXPECT_EQ(Read(), "2");
    EXPECT_TRUE(WriteFileSafely(files, path, QByteArray()));
    EXPECT_EQ(Read(), "");
    EXPECT_EQ(home.Count(), 1U);
}

TEST_F(SafeWrite, AnyStepThatFailsLeavesTheOldFileAndNothingElse) {
    home.Write(name, "old");
    for (const char* const operation : {"Write", "SyncFolder", "Rename"}) {
        files.Fail(operation);
        EXPECT_FALSE(WriteFileSafely(files, path, "new")) << operation;
        files.FailNothing();
        EXPECT_EQ(Read(), "old") << operation;
        EXPECT_EQ(home.Count(), 1U) << operation;
    }
}

TEST_F(SafeWrite, AFolderThatFailsAfterTheRenameKeepsTheNewFileWhole) {
    home.Write(name, "old");
    files.Fail("SyncFolder", 2);
    EXPECT_TRUE(WriteFileSafely(files, path, "new"));
    EXPECT_EQ(Read(), "new");
    EXPECT_EQ(home.Count(), 1U);
}

// Limits the file size so that the write fails partway, as on a full disk.
TEST_F(SafeWrite, ADiskThatGetsFullLeavesTheOldFile) {
    home.Write(name, "old");
    rlimit before{};
    ASSERT_EQ(::getrlimit(RLIMIT_FSIZE, &before), 0);
    auto* const handler = std::signal(SIGXFSZ, SIG_IGN);
    const rlimit tight{1000, before.rlim_max};
    ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &tight), 0);
    const bool written = WriteFileSafely(files, path, QByteArray(5000, 'x'));
    ::setrlimit(RLIMIT_FSIZE, &before);
    std::signal(SIGXFSZ, handler);
    EXPECT_FALSE(written);
    EXPECT_EQ(Read(), "old");
    EXPECT_EQ(home.Count(), 1U);
}

TEST_F(SafeWrite, TheAccessRightsStay) {
    home.Write(name, "old");
    ASSERT_EQ(::chmod(path.toUtf8().constData(), 0640), 0);
    EXPECT_TRUE(WriteFileSafely(files, path, "new"));
    EXPECT_EQ(Mode(), 0640U);
}

TEST_F(SafeWrite, ALinkIsFollowedAndStays) {
    home.MakeFolder(QStringLiteral("data"));
    home.Write(QStringLiteral("data/stats.ini"), "old");
    ASSERT_EQ(::symlink("data/stats.ini", path.toUtf8().constData()), 0);
    EXPECT_TRUE(WriteFileSafely(files, path, "new"));
    EXPECT_EQ(home.Read(QStringLiteral("data/stats.ini")), "new");
    struct stat status {};
    ASSERT_EQ(::lstat(path.toUtf8().constData(), &status), 0);
    EXPECT_TRUE(S_ISLNK(status.st_mode));
    EXPECT_EQ(home.Count(QStringLiteral("data")), 1U);
}

TEST_F(SafeWrite, ALinkToAFileThatIsNotThereYetMakesIt) {
    home.MakeFolder(QStringLiteral("data"));
    ASSERT_EQ(::symlink("data/later.ini", path.toUtf8().constData()), 0);
    EXPECT_TRUE(WriteFileSafely(files, path, "new"));
    EXPECT_EQ(home.Read(QStringLiteral("data/later.ini")), "new");
}

TEST_F(SafeWrite, WhatAPowerCutLeftBehindIsNoHindrance) {
    home.Write(QStringLiteral(".stats.ini.new"), "half of some");
    ASSERT_EQ(::chmod(home.Path(QStringLiteral(".stats.ini.new")).toUtf8().constData(), 0), 0);
    EXPECT_TRUE(WriteFileSafely(files, path, "new"));
    EXPECT_EQ(Read(), "new");
    EXPECT_EQ(home.Count(), 1U);
}

TEST_F(SafeWrite, AFolderThatIsNotThereFails) {
    EXPECT_FALSE(WriteFileSafely(files, home.Path(QStringLiteral("none/x.ini")), "new"));
    home.MakeFolder(QStringLiteral("folder"));
    EXPECT_FALSE(WriteFileSafely(files, home.Path(QStringLiteral("folder")), "new"));
    EXPECT_EQ(home.Count(), 1U);
}

TEST_F(SafeWrite, ANameOfAnyBytesIsKept) {
    const QString odd = home.Path(TextOfPath("caf\xE9 \n.ini"));
    EXPECT_TRUE(WriteFileSafely(files, odd, "new"));
    EXPECT_EQ(files.ReadWhole(odd, 10), "new");
    EXPECT_EQ(home.Count(), 1U);
}

} // namespace
