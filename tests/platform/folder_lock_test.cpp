// Tests of the lock on a folder: who gets it, who holds it, and when it is released.
#include "platform/posix/folder_lock.h"

#include "support/home_folder.h"

#include <gtest/gtest.h>

#include <QProcess>

#include <optional>

#include <csignal>
#include <sys/wait.h>
#include <unistd.h>

namespace {

TEST(FolderLockTest, TheFirstGetsItAndTheSecondDoesNot) {
    const HomeFolder home;
    std::optional<FolderLock> first(home.Path());
    EXPECT_FALSE(first->IsTaken());
    EXPECT_TRUE(FolderLock(home.Path()).IsTaken());
    EXPECT_TRUE(FolderLock(home.Path() + QStringLiteral("/../") + home.Path().section(u'/', -1)).IsTaken())
        << "the folder counts, not its name";
    first.reset();
    EXPECT_FALSE(FolderLock(home.Path()).IsTaken());
}

TEST(FolderLockTest, ItTellsTheProcessThatHasIt) {
    const HomeFolder home;
    const FolderLock first(home.Path());
    EXPECT_EQ(first.Holder(), QString());
    EXPECT_EQ(FolderLock(home.Path()).Holder(), QStringLiteral("platform_test, process %1").arg(getpid()));
}

TEST(FolderLockTest, ItLeavesNothingInTheFolder) {
    HomeFolder home;
    const FolderLock lock(home.Path());
    EXPECT_EQ(home.Count(), 0U);
}

TEST(FolderLockTest, AProgramStartedByTheHolderDoesNotInheritIt) {
    const HomeFolder home;
    std::optional<FolderLock> lock(home.Path());
    QProcess child;
    child.start(QStringLiteral("sleep"), {QStringLiteral("60")});
    ASSERT_TRUE(child.waitForStarted());
    lock.reset();
    EXPECT_FALSE(FolderLock(home.Path()).IsTaken());
    child.kill();
    child.waitForFinished();
}

TEST(FolderLockTest, AKilledProcessDoesNotKeepIt) {
    const HomeFolder home;
    int ready[2];
    ASSERT_EQ(pipe(ready), 0);
    const pid_t child = fork();
    if (child == 0) {
        const FolderLock lock(home.Path());
        const char mark = lock.IsTaken() ? 'n' : 'y';
        [[maybe_unused]] const ssize_t written = write(ready[1], &mark, 1);
        for (;;) {
            pause();
        }
    }
    char mark = 0;
    ASSERT_EQ(read(ready[0], &mark, 1), 1);
    EXPECT_EQ(mark, 'y');
    EXPECT_TRUE(FolderLock(home.Path()).IsTaken());
    kill(child, SIGKILL);
    waitpid(child, nullptr, 0);
    EXPECT_FALSE(FolderLock(home.Path()).IsTaken());
    close(ready[0]);
    close(ready[1]);
}

TEST(FolderLockTest, AFolderThatCannotBeOpenedIsNotTaken) {
    const FolderLock lock(QStringLiteral("/there is no such folder"));
    EXPECT_FALSE(lock.IsTaken());
    EXPECT_EQ(lock.Holder(), QString());
}

} // namespace
