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
