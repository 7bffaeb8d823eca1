// Reading and writing single keys by path, section and key.
#include "settings/profile.h"

#include "platform/simulated/simulated_platform.h"
#include "shell/hand_down.h"
#include "state/form_main.h"
#include "support/home_folder.h"

#include <gtest/gtest.h>

namespace {

class Profile : public testing::Test {
protected:
    QString Get(const char* section, const char* key) {
        return GetPrivateProfileString(form, path, QString::fromUtf8(section), QString::fromUtf8(key));
    }

    HomeFolder home;
    QString path = home.Path(QStringLiteral("config.ini"));
    SimulatedPlatform platform;
    Form_Main form{platform.ports(), HandDown()};
};

TEST_F(Profile, ReadsWhatTheFileHasNow) {
    EXPECT_EQ(Get("Main", "Theme"), QString());
    home.Write(QStringLiteral("config.ini"), "[Main]\r\nTheme=default\r\n");
    EXPECT_EQ(Get("main", "THEME"), QStringLiteral("default"));
}

TEST_F(Profile, WritesUnderAnySpellingOfAKey) {
    home.Write(QStringLiteral("config.ini"), "[Main]\r\ntactilemode=false\r\n");
    WritePrivateProfileString(form, path, QStringLiteral("Main"), QStringLiteral("TactileMode"),
                              QStringLiteral("true"));
    EXPECT_EQ(home.Read(QStringLiteral("config.ini")), "[Main]\r\ntactilemode=true\r\n");
}

TEST_F(Profile, AWriteThatFailsIsSilent) {
    home.Write(QStringLiteral("config.ini"), "[Main]\r\nTheme=default\r\n");
    platform.failures.Add(QStringLiteral("Write"));
    WritePrivateProfileString(form, path, QStringLiteral("Main"), QStringLiteral("Theme"),
                              QStringLiteral("small"));
    EXPECT_EQ(Get("Main", "Theme"), QStringLiteral("default"));
    EXPECT_EQ(home.Read(QStringLiteral("config.ini")), "[Main]\r\nTheme=default\r\n");
}

} // namespace
