// The text log: its lines, emptying it, and errors when writing it fails.
#include "state/log.h"

#include "shell/hand_down.h"
#include "shell/handle_event.h"
#include "support/error_of.h"
#include "support/jukebox.h"

#include <gtest/gtest.h>

namespace {

// A form with an application folder and a clock, before start-up.
class Log : public ::testing::Test {
protected:
    static SimulationOptions Options() {
        SimulationOptions options;
        options.clock = QDateTime(QDate(2024, 5, 6), QTime(7, 8, 9), Qt::UTC);
        return options;
    }
    Log() { form.shell.AppFolder = home.Path(); }

    QByteArray Bytes() { return home.Read(QStringLiteral("vantorix.log")); }

    HomeFolder home;
    SimulatedPlatform platform{Options()};
    Form_Main form{platform.ports(), HandDown()};
};

TEST_F(Log, ALineIsTheLocalTimeTheTextAndCrLf) {
    WriteLog(form, QStringLiteral(" : Récupération"));
    EXPECT_EQ(Bytes(), QByteArray("2024-05-06 07:08:09 : Récupération\r\n"));
}

TEST_F(Log, EachLineIsOnTheDiskAtOnceAndBearsItsOwnTime) {
    WriteLog(form, QStringLiteral(" NumTrack : 0"));
    EXPECT_EQ(Bytes(), QByteArray("2024-05-06 07:08:09 NumTrack : 0\r\n"));
    platform.clock.Advance(1000);
    WriteLog(form, QStringLiteral(" : Valider"));
    EXPECT_EQ(Bytes(), QByteArray("2024-05-06 07:08:09 NumTrack : 0\r\n2024-05-06 07:08:10 : Valider\r\n"));
}

TEST_F(Log, TheFirstLineOfARunEmptiesTheFile) {
    home.Write(QStringLiteral("vantorix.log"), "old\r\nlines\r\n");
    OpenLog(form, QStringLiteral(" : Lancement de l'application"));
    EXPECT_EQ(Bytes(), QByteArray("2024-05-06 07:08:09 : Lancement de l'application\r\n"));
}

TEST_F(Log, AFileThatCannotBeWrittenIsError75) {
    home.MakeFolder(QStringLiteral("vantorix.log"));
    EXPECT_EQ(ErrorOf([&] { OpenLog(form, QStringLiteral("x")); }), kPathFileAccess);
    EXPECT_EQ(ErrorOf([&] { WriteLog(form, QStringLiteral("x")); }), kPathFileAccess);
    LogBatch batch(form);
    batch.Add(QStringLiteral("x"));
    EXPECT_EQ(ErrorOf([&] { batch.Close(); }), kPathFileAccess);
}

TEST_F(Log, ABatchIsWrittenWhenItCloses) {
    LogBatch batch(form);
    batch.Add(QStringLiteral(" : a"));
    batch.Add(QStringLiteral(" : b"));
    EXPECT_EQ(Bytes(), QByteArray("(missing)"));
    batch.Close();
    EXPECT_EQ(Bytes(), QByteArray("2024-05-06 07:08:09 : a\r\n2024-05-06 07:08:09 : b\r\n"));
}

TEST_F(Log, WhatABatchHoldsIsWrittenWhenAnErrorEndsIt) {
    EXPECT_EQ(ErrorOf([&] {
                  LogBatch batch(form);
                  batch.Add(QStringLiteral(" : a"));
                  throw RunTimeError(kOverflow, QString());
              }),
              kOverflow);
    EXPECT_EQ(Bytes(), QByteArray("2024-05-06 07:08:09 : a\r\n"));
}

TEST(LogOfARun, ALineThatIsLostEndsTheHandlerAndLeavesItsGuardUp) {
    Jukebox jukebox;
    jukebox.Start();
    jukebox.platform.failures.Add(QStringLiteral("Append"));
    InputEvent key;
    key.kind = InputKind::kKeyDown;
    key.code = 40;
    const std::optional<RunTimeError> error = HandleEvent(jukebox.form, key);
    ASSERT_TRUE(error);
    EXPECT_EQ(error->number, kPathFileAccess);
    EXPECT_EQ(error->detail, jukebox.Home(QStringLiteral("vantorix.log: the log cannot be written")));
    EXPECT_EQ(jukebox.form.shell.InputBusy, 1);
}

} // namespace
