// Tests of the simulated pump, serial line, display, message boxes and fonts, and of the record of calls.
#include "platform/simulated/simulated_platform.h"
#include "platform/simulated/surroundings.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

QJsonArray LastCall(const SimulatedPlatform& platform) {
    return platform.calls.Entries().empty() ? QJsonArray() : platform.calls.Entries().back();
}

template <typename Action>
int ErrorOf(Action action) {
    try {
        action();
    } catch (const RunTimeError& error) {
        return error.number;
    }
    return 0;
}

SerialSettings PortNumber(int number) {
    SerialSettings settings;
    settings.commPort = number;
    return settings;
}

TEST(SimulatedPump, AWaitMovesTheTimeBeforeItLetsEventsRun) {
    SimulatedPlatform platform;
    std::int64_t seen = -1;
    platform.pump.runPending = [&] {
        seen = platform.clock.timeGetTime();
        return true;
    };
    platform.pump.Wait(120);
    EXPECT_EQ(seen, 120);
}

TEST(SimulatedPump, AHangIsTenThousandIdlePointsInARow) {
    SimulatedPlatform platform;
    for (int i = 0; i < SimulatedPump::kIdlePoints - 1; ++i) {
        platform.pump.DoEvents();
    }
    EXPECT_THROW(platform.pump.DoEvents(), SimulatedHang);
}

TEST(SimulatedPump, WhatArrivesOrRunsIsNoHang) {
    SimulatedPlatform platform;
    int pending = 3;
    platform.pump.runPending = [&] { return pending-- > 0; };
    for (int round = 0; round < 3; ++round) {
        for (int i = 0; i < SimulatedPump::kIdlePoints - 1; ++i) {
            platform.pump.DoEvents();
        }
        platform.serial.Arrive("x");
    }
    for (int i = 0; i < SimulatedPump::kIdlePoints * 2; ++i) {
        platform.pump.Wait(1);
    }
    SUCCEED();
}

TEST(SimulatedPump, AHangTellsTheLastCall) {
    SimulatedPlatform platform;
    platform.serial.controllerAnswers = false;
    platform.serial.Open(PortNumber(1));
    platform.serial.Output("AT+R-0\r\n");
    try {
        for (;;) {
            platform.pump.DoEvents();
        }
    } catch (const SimulatedHang& hang) {
        EXPECT_TRUE(hang.wait.contains(QStringLiteral("AT+R-0"))) << hang.wait.toStdString();
    }
}

TEST(SimulatedSerial, TheControllerAnswersTheModeCommandAlone) {
    SimulatedPlatform platform;
    platform.serial.Open(PortNumber(3));
    platform.serial.Output("AT+R-1\r\n");
    platform.serial.Output("AT+R-0");
    EXPECT_EQ(platform.serial.Input(), QByteArray());
    platform.serial.Output("AT+R-0\r\n");
    EXPECT_EQ(platform.serial.Input(), QByteArray("Mode Normal\nOK"));
    EXPECT_EQ(platform.serial.Input(), QByteArray());
    platform.serial.controllerAnswers = false;
    platform.serial.Output("AT+R-0\r\n");
    EXPECT_EQ(platform.serial.Input(), QByteArray());
}

TEST(SimulatedSerial, BytesWaitForTheNextRead) {
    SimulatedPlatform platform;
    EXPECT_TRUE(platform.serial.Arrive("ab"));
    platform.serial.Open(PortNumber(1));
    EXPECT_TRUE(platform.serial.Arrive("cd"));
    EXPECT_EQ(platform.serial.Input(), QByteArray("abcd"));
    EXPECT_FALSE(platform.serial.Arrive(QByteArray(SimulatedSerial::kWaitingBytes + 1, 'x')));
    EXPECT_EQ(platform.serial.Input(), QByteArray());
}

TEST(SimulatedSerial, RaisesTheErrorsOfItsPort) {
    SimulatedPlatform platform;
    EXPECT_EQ(ErrorOf([&] { platform.serial.Output("x"); }), kPortNotOpen);
    EXPECT_EQ(ErrorOf([&] { platform.serial.Input(); }), kPortNotOpen);
    EXPECT_EQ(ErrorOf([&] { platform.serial.Open(PortNumber(0)); }), kInvalidPortNumber);
    EXPECT_EQ(ErrorOf([&] { platform.serial.Open(PortNumber(17)); }), kInvalidPortNumber);
    EXPECT_EQ(ErrorOf([&] { platform.serial.Open(PortNumber(16)); }), 0);
    EXPECT_EQ(ErrorOf([&] { platform.serial.Open(PortNumber(2)); }), kPortAlreadyOpen);
    platform.serial.Close();
    EXPECT_FALSE(platform.serial.IsOpen());
}

TEST(SimulatedDisplay, AModeChangesThePrimaryMonitor) {
    SimulationOptions options;
    options.screens = {QRect(0, 0, 1280, 720), QRect(1280, 0, 800, 600)};
    SimulatedPlatform platform(options);
    EXPECT_EQ(platform.display.TestDisplaySettings({1024, 768, 32}), DisplayChange::kSuccessful);
    EXPECT_EQ(platform.display.CurrentMode().width, 1280);
    EXPECT_EQ(platform.display.ChangeDisplaySettings({1024, 768, 16}), DisplayChange::kSuccessful);
    EXPECT_EQ(platform.display.CurrentMode().width, 1024);
    EXPECT_EQ(platform.display.CurrentMode().bits, 16);
    EXPECT_EQ(platform.display.EnumDisplayMonitors().back(), QRect(1024, 0, 800, 600));
    EXPECT_EQ(platform.display.TestDisplaySettings({0, 768, 32}), DisplayChange::kRefused);
    EXPECT_EQ(LastCall(platform), (QJsonArray{QStringLiteral("ChangeDisplaySettings"), 1024, 768, 16}));
}

TEST(SimulatedMessageBox, ClosesByItself) {
    SimulatedPlatform platform;
    EXPECT_FALSE(platform.messageBox.AskYesNo(QStringLiteral("title"), QStringLiteral("question")));
    EXPECT_EQ(LastCall(platform),
              (QJsonArray{QStringLiteral("MsgBox"), QStringLiteral("title"), QStringLiteral("question")}));
}

TEST(SimulatedWindows, EveryPointerIsInTheCalls) {
    SimulatedPlatform platform;
    platform.windows.MousePointer(QStringLiteral("Screen"), 11);
    platform.windows.MousePointer(QStringLiteral("Screen"), 11);
    EXPECT_EQ(platform.calls.Entries().size(), 2U);
    EXPECT_EQ(LastCall(platform), (QJsonArray{QStringLiteral("MousePointer"), QStringLiteral("Screen"), 11}));
}

TEST(SimulatedFonts, RegistersAFontOnceAndTellsItEachTime) {
    const Surroundings surroundings;
    SimulatedPlatform platform;
    const QString font = QStringLiteral(TESTS_FOLDER "/fonts/vantorix_test.ttf");
    EXPECT_EQ(platform.fonts.AddFontResource(font), 1);
    EXPECT_EQ(platform.fonts.AddFontResource(font), 1);
    EXPECT_EQ(platform.calls.Entries().size(), 2U);
    EXPECT_EQ(platform.fonts.AddFontResource(QStringLiteral(TESTS_FOLDER "/CMakeLists.txt")), 0);
    EXPECT_EQ(platform.fonts.AddFontResource(QStringLiteral("/nowhere/font.ttf")), 0);
}

TEST(CallRecord, KeepsTheNewestAndCountsWhatWent) {
    CallRecord record;
    for (std::size_t i = 0; i < CallRecord::kLimit + 2; ++i) {
        record.Add({static_cast<int>(i)});
    }
    EXPECT_EQ(record.Entries().size(), CallRecord::kLimit);
    EXPECT_EQ(record.Dropped(), 2);
    EXPECT_EQ(record.Entries().front(), QJsonArray{2});
    record.Clear();
    EXPECT_TRUE(record.Entries().empty());
    EXPECT_EQ(record.Dropped(), 0);
}

} // namespace
