// The log of the cabinet: renamed when it is large, and no obstacle when it cannot be written.
#include "app/cabinet/log_files.h"

#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace {

class LogFilesTest : public ::testing::Test {
protected:
    QByteArray Content(const QString& name) const {
        QFile file(folder_.filePath(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("missing");
    }

    const QTemporaryDir folder_;
    const QString log_ = folder_.filePath(QStringLiteral("vantorix.log"));
};

TEST_F(LogFilesTest, ALogThatWouldPassTheLimitIsRenamed) {
    LogFiles files(log_, {.largest = 10, .mayLoseLines = false});
    EXPECT_TRUE(files.Write(log_, "12345", false));
    EXPECT_TRUE(files.Append(log_, "67890"));
    EXPECT_EQ(Content(QStringLiteral("vantorix.log")), "1234567890");
    EXPECT_TRUE(files.Append(log_, "a"));
    EXPECT_EQ(Content(QStringLiteral("vantorix.log")), "a");
    EXPECT_EQ(Content(QStringLiteral("vantorix.log.1")), "1234567890");
    EXPECT_TRUE(files.Append(log_, "0123456789"));
    EXPECT_EQ(Content(QStringLiteral("vantorix.log.1")), "a");
}

TEST_F(LogFilesTest, TheSizeOfAnOlderLogCounts) {
    PosixFiles().Write(log_, "12345678", false);
    LogFiles files(log_, {.largest = 10, .mayLoseLines = false});
    EXPECT_TRUE(files.Append(log_, "abc"));
    EXPECT_EQ(Content(QStringLiteral("vantorix.log.1")), "12345678");
}

TEST_F(LogFilesTest, WithoutALimitNothingIsRenamed) {
    LogFiles files(log_, {.largest = 0, .mayLoseLines = false});
    files.Write(log_, QByteArray(100, 'x'), false);
    files.Append(log_, "y");
    EXPECT_EQ(Content(QStringLiteral("vantorix.log")).size(), 101);
}

TEST_F(LogFilesTest, OtherFilesAreNeverRenamed) {
    LogFiles files(log_, {.largest = 10, .mayLoseLines = false});
    const QString other = folder_.filePath(QStringLiteral("other"));
    files.Append(other, QByteArray(100, 'x'));
    files.Append(other, "y");
    EXPECT_EQ(Content(QStringLiteral("other")).size(), 101);
}

TEST_F(LogFilesTest, ALogThatCannotBeRenamedIsEmptied) {
    ASSERT_TRUE(PosixFiles().MakeFolder(log_ + QStringLiteral(".1")));
    LogFiles files(log_, {.largest = 10, .mayLoseLines = false});
    files.Append(log_, "1234567890");
    EXPECT_TRUE(files.Append(log_, "a"));
    EXPECT_EQ(Content(QStringLiteral("vantorix.log")), "a");
}

TEST_F(LogFilesTest, AVanishedLogIsMadeAgain) {
    LogFiles files(log_, {.largest = 10, .mayLoseLines = false});
    files.Append(log_, "1");
    ASSERT_TRUE(QFile::remove(log_));
    EXPECT_TRUE(files.Append(log_, "2"));
    EXPECT_EQ(Content(QStringLiteral("vantorix.log")), "2");
}

TEST_F(LogFilesTest, LinesMayBeLost) {
    const QString nowhere = folder_.filePath(QStringLiteral("missing/vantorix.log"));
    LogFiles strict(nowhere, {.largest = 0, .mayLoseLines = false});
    EXPECT_FALSE(strict.Write(nowhere, "a", false));
    EXPECT_FALSE(strict.Append(nowhere, "a"));
    LogFiles lenient(nowhere, {.largest = 0, .mayLoseLines = true});
    EXPECT_TRUE(lenient.Write(nowhere, "a", false));
    EXPECT_TRUE(lenient.Append(nowhere, "a"));
    EXPECT_FALSE(lenient.Append(folder_.filePath(QStringLiteral("missing/other")), "a"));
}

} // namespace
