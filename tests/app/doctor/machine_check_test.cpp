// Tests of the check of the machine, on a made tree of devices.
#include "app/doctor/findings_of.h"
#include "app/doctor/machine_check.h"
#include "settings/ini_file.h"
#include "support/gui_application.h"
#include "support/home_folder.h"

#include <gtest/gtest.h>

#include <QDir>

namespace {

class MachineCheckTest : public testing::Test {
protected:
    MachineCheckTest() {
        for (const char* const folder :
             {"home", "dev/snd", "sys/class/drm/card0-HDMI-A-1", "sys/class/drm/card0-DP-1"}) {
            QDir().mkpath(folder_.Path(QString::fromLatin1(folder)));
        }
        Write("dev/snd/pcmC0D0p", "");
        Write("sys/class/drm/card0-HDMI-A-1/status", "connected\n");
        Write("sys/class/drm/card0-HDMI-A-1/modes", "1920x1080\n1280x720\n");
        Write("sys/class/drm/card0-DP-1/status", "disconnected\n");
    }

    void Write(const char* name, const QByteArray& bytes) { folder_.Write(QString::fromLatin1(name), bytes); }
    // Checks with the monitors of an X server.
    static void CheckShown(FindingsOf& found, const QByteArray& config, std::vector<QRect> places) {
        CheckShownMonitors(
            {QStringLiteral(":7"), std::move(places), {QSize(1920, 1080), QSize(1280, 720)}, 32},
            IniFile(config), found.report);
    }
    void Check(FindingsOf& found, const QByteArray& config, std::map<int, QString> devices = {}) {
        MachineOptions options;
        options.home = folder_.Path(QStringLiteral("home"));
        options.root = folder_.Path();
        options.serialDevices = std::move(devices);
        CheckMachine(options, IniFile(config), found.report);
    }

    HomeFolder folder_;
};

} // namespace

TEST_F(MachineCheckTest, AGoodMachineHasOnlyItsMonitorsAsNotes) {
    FindingsOf found;
    Check(found, "[Main]\nFullscreen=true\nFullscreenSize=1280x720 32bits\n");
    EXPECT_EQ(found.Count("note", "Monitors: HDMI-A-1 (1920x1080)."), 1);
    EXPECT_EQ(found.Count("warning", ""), found.Count("warning", "decoder"));
    EXPECT_EQ(found.Count("error", ""), 0);
}

TEST_F(MachineCheckTest, AMissingSoundDevice) {
    QFile::remove(folder_.Path(QStringLiteral("dev/snd/pcmC0D0p")));
    FindingsOf found;
    Check(found, "");
    EXPECT_EQ(found.Count("warning", "There is no sound"), 1);
}

TEST_F(MachineCheckTest, AModeThatNoMonitorHas) {
    FindingsOf found;
    Check(found, "[Main]\nFullscreen=true\nFullscreenSize=1024x768 32bits\n");
    EXPECT_EQ(found.Count("warning", "\"1024x768\""), 1);
    FindingsOf off;
    Check(off, "[Main]\nFullscreen=false\nFullscreenSize=1024x768 32bits\n");
    EXPECT_EQ(off.Count("warning", "1024x768"), 0);
}

TEST_F(MachineCheckTest, TheXServerComesBeforeTheKernel) {
    MachineOptions options;
    options.home = folder_.Path(QStringLiteral("home"));
    options.root = folder_.Path();
    options.shown = {QStringLiteral(":7"), {QRect(0, 0, 1920, 1080), QRect(1920, 0, 1280, 1024)}, {}, 32};
    FindingsOf found;
    CheckMachine(options, IniFile(), found.report);
    EXPECT_EQ(found.Count("note", ":7 Monitors of the X server: 1920x1080 at 0,0, 1280x1024 at 1920,0."), 1);
    EXPECT_EQ(found.Count("note", "HDMI-A-1"), 0);
    options.shown.reset();
    options.silentDisplay = QStringLiteral(":7");
    FindingsOf silent;
    CheckMachine(options, IniFile(), silent.report);
    EXPECT_EQ(silent.Count("note", ":7 The X server that DISPLAY names does not answer"), 1);
    EXPECT_EQ(silent.Count("note", "HDMI-A-1"), 1);
}

TEST_F(MachineCheckTest, AModeThatTheFirstMonitorDoesNotList) {
    const struct {
        const char* config;
        const char* words;
    } cases[] = {
        {"[Main]\nFullscreen=true\nFullscreenSize=1280x720 32bits\n", ""},
        {"[Main]\nFullscreen=TRUE\nFullscreenSize= 1280 X 720  24BITS\n", ""},
        {"[Main]\nFullscreen=false\nFullscreenSize=1024x768 32bits\n", ""},
        {"[Main]\nFullscreen=true\nFullscreenSize=as large as possible\n", ""},
        {"[Main]\nFullscreen=true\nFullscreenSize=1024x768 32bits\n",
         ":7 The first monitor does not list the size \"1024x768\" of FullscreenSize, so the screen keeps "
         "its "
         "mode after a message. It lists 1920x1080, 1280x720."},
        {"[Main]\nFullscreen=true\nFullscreenSize=1280x720 16bits\n",
         ":7 The depth of FullscreenSize is 16 bits, but the screen has 32"},
    };
    for (const auto& each : cases) {
        FindingsOf found;
        CheckShown(found, each.config, {QRect(0, 0, 1920, 1080)});
        const bool isWrong = *each.words != 0;
        EXPECT_EQ(found.Count("warning", ""), isWrong ? 1 : 0) << each.config;
        EXPECT_EQ(found.Count("warning", each.words), isWrong ? 1 : 0) << each.config;
    }
    // The mode that is set is kept, listed or not.
    FindingsOf set;
    CheckShown(set, "[Main]\nFullscreen=true\nFullscreenSize=1366x768 32bits\n", {QRect(0, 0, 1366, 768)});
    EXPECT_EQ(set.Count("warning", ""), 0);
}

TEST_F(MachineCheckTest, APlaceForVideosThatNoMonitorShows) {
    const struct {
        const char* config;
        const char* level;
        const char* words;
    } cases[] = {
        {"VideoPositionLeft=\n", "", ""},
        {"VideoPositionLeft=1921\n", "", ""},
        {"VideoPositionLeft=1920\n", "warning", "exactly the width"},
        {"VideoPositionLeft=1000\n", "note", "Videos stay on the first monitor"},
        {"VideoPositionLeft=3200\n", "warning", "there is no monitor at VideoPositionLeft=3200"},
        // The second monitor moves with the edge of the first one.
        {"VideoPositionLeft=1300\nFullscreen=true\nFullscreenSize=1280x720 32bits\n", "", ""},
        {"VideoPositionLeft=3100\nFullscreen=true\nFullscreenSize=1280x720 32bits\n", "warning",
         "there is no monitor"},
    };
    for (const auto& each : cases) {
        FindingsOf found;
        CheckShown(found, QByteArray("[Main]\n") + each.config,
                   {QRect(0, 0, 1920, 1080), QRect(1920, 0, 1280, 1024)});
        EXPECT_EQ(found.All().size(), *each.words != 0 ? 2U : 1U) << each.config;
        EXPECT_EQ(found.Count(each.level, each.words), *each.words != 0 ? 1 : 0) << each.config;
    }
}

TEST_F(MachineCheckTest, AServerWithoutMonitorsIsNoFault) {
    FindingsOf found;
    CheckShown(found, "[Main]\nVideoPositionLeft=2000\nFullscreen=true\nFullscreenSize=1x1 32bits\n", {});
    EXPECT_EQ(found.All().size(), 1U);
    EXPECT_EQ(found.Count("note", "does not list its monitors"), 1);
}

TEST_F(MachineCheckTest, ASerialDeviceThatIsMissing) {
    const QByteArray config = "[RGBLeds]\nActive=true\nCommport=2\n";
    FindingsOf found;
    Check(found, config);
    EXPECT_EQ(found.Count("error", "dev/ttyS1"), 1);
    FindingsOf given;
    Check(given, config, {{2, QStringLiteral("/nowhere")}});
    EXPECT_EQ(given.Count("error", "/nowhere"), 1);
    Write("home/COM2", "");
    FindingsOf there;
    Check(there, config);
    EXPECT_EQ(there.Count("error", ""), 0);
    FindingsOf off;
    Check(off, "[RGBLeds]\nActive=false\nCommport=3\n");
    EXPECT_EQ(off.Count("error", ""), 0);
}
