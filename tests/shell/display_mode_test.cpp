// Changing the display mode: message boxes, refused modes, and what follows the screen.
#include "shell/display_mode.h"

#include "shell/load_config.h"
#include "shell/load_theme.h"
#include "support/jukebox.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

// A display that answers every test of a mode in the same way.
struct SameAnswer : Display {
    std::vector<QRect> EnumDisplayMonitors() override { return {QRect(0, 0, 640, 360)}; }
    DisplayMode CurrentMode() override { return {640, 360, 32}; }
    DisplayChange TestDisplaySettings(const DisplayMode& /*mode*/) override { return answer; }
    DisplayChange ChangeDisplaySettings(const DisplayMode& /*mode*/) override {
        ++changes;
        return answer;
    }

    DisplayChange answer = DisplayChange::kSuccessful;
    int changes = 0;
};

// A form on such a display.
class AnsweredTest : public ::testing::Test {
protected:
    static Ports PortsWith(SimulatedPlatform& platform, Display& display) {
        const Ports all = platform.ports();
        return {.audio = all.audio,
                .graphs = all.graphs,
                .MSComm1 = all.MSComm1,
                .display = display,
                .windows = all.windows,
                .fonts = all.fonts,
                .clock = all.clock,
                .pump = all.pump,
                .dialogs = all.dialogs,
                .messageBox = all.messageBox,
                .files = all.files,
                .zlib = all.zlib,
                .pictures = all.pictures};
    }
    // Returns what the message boxes say.
    QStringList Change(DisplayChange answer) {
        display.answer = answer;
        ChangeRes(form, 800, 600, 16);
        QStringList boxes;
        for (const QJsonArray& call : platform.calls.Entries()) {
            boxes += call[1].toString() + QStringLiteral(": ") + call[2].toString();
        }
        return boxes;
    }

    SameAnswer display;
    SimulatedPlatform platform;
    Form_Main form{PortsWith(platform, display), HandDown()};
};

TEST_F(AnsweredTest, ARefusedModeIsReportedAndNotSet) {
    EXPECT_THAT(Change(DisplayChange::kRefused), ElementsAre(QStringLiteral("Error: Mode Not Supported")));
    EXPECT_EQ(display.changes, 0);
}

TEST_F(AnsweredTest, AModeThatNeedsARestartIsAskedForAndNotSet) {
    EXPECT_THAT(Change(DisplayChange::kRestart),
                ElementsAre(QStringLiteral(
                    "Screen Resolution: You Must Restart To Apply These Changes.\r\nRestart Now ¿")));
    EXPECT_EQ(display.changes, 0);
}

TEST_F(AnsweredTest, WithoutModesNothingHappens) {
    EXPECT_THAT(Change(DisplayChange::kNoModes), IsEmpty());
    EXPECT_EQ(display.changes, 0);
}

TEST_F(AnsweredTest, APossibleModeIsSetOnce) {
    EXPECT_THAT(Change(DisplayChange::kSuccessful), IsEmpty());
    EXPECT_EQ(display.changes, 1);
}

void SetMain(Jukebox& jukebox, const char* key, const char* value) {
    jukebox.SetKey(QStringLiteral("config.ini"), QStringLiteral("Main"), QString::fromLatin1(key),
                   QString::fromLatin1(value));
}

TEST(DisplayMode, AModeThatChangesLaterResizesTheWindowAtOnceAndThePictureWithTheTheme) {
    Jukebox jukebox;
    Form_Main& form = jukebox.form;
    jukebox.Start();
    SetMain(jukebox, "Fullscreen", "true");
    SetMain(jukebox, "FullscreenSize", "1280x720 32bits");
    LoadConfig(form);
    EXPECT_EQ(form.shell.MainWindow.Width, 1280);
    EXPECT_EQ(form.shell.MainWindow.Height, 720);
    EXPECT_TRUE(form.shell.MainWindow.Visible);
    EXPECT_EQ(form.frame.Picture_Main.Width(), 640);
    LoadTheme(form);
    EXPECT_EQ(form.frame.Picture_Main.Width(), 1280);
    EXPECT_EQ(form.frame.Picture_Main.Height(), 720);
    EXPECT_EQ(form.frame.ZoneScaleX, 2);
    EXPECT_EQ(form.shell.ScreenWidth, 640) << "the recorded mode";
}

// A monitor can be replaced while the jukebox runs.
TEST(DisplayMode, AReloadFitsTheWindowToAScreenThatSomethingElseHasChanged) {
    Jukebox jukebox;
    Form_Main& form = jukebox.form;
    jukebox.Start();
    jukebox.platform.display.ChangeDisplaySettings({1280, 720, 32});
    LoadConfig(form);
    LoadTheme(form);
    EXPECT_EQ(form.shell.MainWindow.Width, 1280);
    EXPECT_EQ(form.frame.Picture_Main.Width(), 1280);
}

TEST(DisplayMode, ARefusedModeLeavesTheWindowAndTheProgramGoesOn) {
    Jukebox jukebox;
    SetMain(jukebox, "Fullscreen", "true");
    SetMain(jukebox, "FullscreenSize", "800x600 32bits");
    jukebox.platform.failures.Add(QStringLiteral("ChangeDisplaySettings"));
    jukebox.Start();
    EXPECT_EQ(jukebox.form.shell.MainWindow.Width, 640);
    EXPECT_TRUE(jukebox.form.shell.MainWindow.Visible);
}

} // namespace
