// The section [Cabinet] of config.ini.
#include "app/cabinet/cabinet_settings.h"

#include "platform/posix/posix_files.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace {

CabinetSettings SettingsOf(const QByteArray& config) {
    const QTemporaryDir home;
    QFile file(home.filePath(QStringLiteral("config.ini")));
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(config);
    file.close();
    PosixFiles files;
    return ReadCabinetSettings(files, home.path());
}

TEST(CabinetSettings, AreOnWithoutTheSection) {
    const CabinetSettings settings = SettingsOf("[Main]\nWatchdog=false\n");
    EXPECT_TRUE(settings.restartWhenStuck && settings.restartAfterStop && settings.watchdog &&
                settings.keepCreditsAndQueue && settings.limitLog && settings.holdScreen &&
                settings.gamepads);
}

TEST(CabinetSettings, EachIsSwitchedOffByItsKey) {
    const CabinetSettings settings =
        SettingsOf("[Cabinet]\nRestartWhenStuck=false\nRestartAfterStop=false\nWatchdog=false\n"
                   "KeepCreditsAndQueue=false\nLimitLog=false\nHoldScreen=false\nGamepads=no\n");
    EXPECT_FALSE(settings.restartWhenStuck || settings.restartAfterStop || settings.watchdog ||
                 settings.keepCreditsAndQueue || settings.limitLog || settings.holdScreen ||
                 settings.gamepads);
}

TEST(CabinetSettings, AnEmptyValueIsOn) {
    const CabinetSettings settings =
        SettingsOf("[Cabinet]\nRestartWhenStuck=\nWatchdog=true\nGamepads=false\n");
    EXPECT_TRUE(settings.restartWhenStuck);
    EXPECT_TRUE(settings.watchdog);
    EXPECT_FALSE(settings.gamepads);
}

} // namespace
