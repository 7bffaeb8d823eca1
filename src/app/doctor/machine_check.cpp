// What can be known of the machine without a window.
#include "app/doctor/machine_check.h"

#include "app/doctor/conversion.h"
#include "app/doctor/monitor_check.h"
#include "app/findings/finding_report.h"
#include "core/conversions.h"
#include "core/path_text.h"
#include "platform/gstreamer/openable.h"
#include "platform/posix/folder_lock.h"
#include "settings/ini_file.h"

#include <QDir>
#include <QFontDatabase>

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <unistd.h>

#include <algorithm>

namespace {

constexpr std::int64_t kMegabyte = 1'000'000;
constexpr std::int64_t kLittleSpace = 200 * kMegabyte;
constexpr std::int64_t kNoSpace = 5 * kMegabyte;

bool IsAllowed(const QString& path, int rights) {
    return ::faccessat(AT_FDCWD, BytesOfPath(path).constData(), rights, AT_EACCESS) == 0;
}

bool Exists(const QString& path) {
    struct stat status {};
    return ::stat(BytesOfPath(path).constData(), &status) == 0;
}

void Report(FindingReport& report, Level level, const QString& path, const QString& text,
            const QString& advice) {
    report.Add({level, Subject::kMachine, path, text, advice});
}

void CheckRights(const QString& home, FindingReport& report) {
    if (!IsAllowed(home, R_OK | W_OK | X_OK)) {
        Report(report, Level::kError, home,
               QStringLiteral(
                   "The jukebox cannot write its log into the application folder and stops at the start."),
               QStringLiteral("Give the folder to the user of the jukebox: chown -R USER %1")
                   .arg(ShellQuoted(home)));
        return;
    }
    for (const QString& name : {QStringLiteral("config.ini"), QStringLiteral("stats.ini"),
                                QStringLiteral("pathconfig.ini"), QStringLiteral("vantorix.log")}) {
        const QString path = PathIn(home, name);
        const bool isLog = name.endsWith(QStringLiteral(".log"));
        if (Exists(path) && !IsAllowed(path, R_OK | W_OK)) {
            Report(
                report, isLog ? Level::kError : Level::kWarning, path,
                isLog ? QStringLiteral("The program stops at the start, because it cannot write this file.")
                      : QStringLiteral(
                            "The jukebox has no right to read and write this file; settings or counts are "
                            "lost."),
                QStringLiteral("Give it to the user of the jukebox: chown USER %1").arg(ShellQuoted(path)));
        }
    }
}

void CheckSpace(const QString& home, FindingReport& report) {
    struct statvfs status {};
    if (::statvfs(BytesOfPath(home).constData(), &status) != 0) {
        return;
    }
    const auto free = static_cast<std::int64_t>(status.f_bavail) * static_cast<std::int64_t>(status.f_frsize);
    if ((status.f_flag & ST_RDONLY) != 0) {
        Report(report, Level::kError, home,
               QStringLiteral(
                   "The disk of the application folder is read-only, so the log cannot be written and the "
                   "program stops at the start."),
               QStringLiteral("Mount it for writing, or choose another folder with --home."));
    } else if (free < kLittleSpace) {
        Report(report, free < kNoSpace ? Level::kError : Level::kWarning, home,
               QStringLiteral(
                   "The disk of the application folder has %L1 MB left. When it is full, the log cannot be "
                   "written and the jukebox locks up.")
                   .arg(free / kMegabyte),
               QStringLiteral("Delete what is not needed."));
    }
}

void CheckRunning(const QString& home, FindingReport& report) {
    const QString holder = HolderOfFolder(home);
    if (!holder.isEmpty()) {
        Report(report, Level::kNote, home,
               QStringLiteral("The application folder is in use: %1.").arg(holder),
               QStringLiteral("End the jukebox before you edit config.ini or stats.ini by hand."));
    }
}

bool HasSoundServer(const QString& runtimeFolder) {
    return !runtimeFolder.isEmpty() && (Exists(PathIn(runtimeFolder, QStringLiteral("pulse/native"))) ||
                                        Exists(PathIn(runtimeFolder, QStringLiteral("pipewire-0"))));
}

void CheckSound(const MachineOptions& options, FindingReport& report) {
    if (HasSoundServer(options.runtimeFolder)) {
        return;
    }
    const QString folder = PathIn(options.root, QStringLiteral("dev/snd"));
    const QStringList devices =
        QDir(folder).entryList({QStringLiteral("pcmC*p")}, QDir::System | QDir::Files | QDir::NoDotAndDotDot);
    if (devices.isEmpty()) {
        Report(
            report, Level::kWarning, folder,
            QStringLiteral(
                "There is no sound: no sound server runs for this user, and the system has no sound device. "
                "The jukebox plays in silence."),
            QStringLiteral("Connect a sound card and see what \"aplay -l\" lists."));
    } else if (std::none_of(devices.begin(), devices.end(), [&](const QString& device) {
                   return IsAllowed(PathIn(folder, device), R_OK | W_OK);
               })) {
        Report(report, Level::kWarning, folder,
               QStringLiteral("There is no sound: this user has no right to use the sound device."),
               QStringLiteral("Add the user to the group audio: adduser USER audio"));
    }
}

QString SerialDevice(const MachineOptions& options, int number) {
    const auto given = options.serialDevices.find(number);
    if (given != options.serialDevices.end()) {
        return given->second;
    }
    const QString inFolder = PathIn(options.home, QStringLiteral("COM%1").arg(number));
    struct stat status {};
    return ::lstat(BytesOfPath(inFolder).constData(), &status) == 0
               ? inFolder
               : PathIn(options.root, QStringLiteral("dev/ttyS%1").arg(number - 1));
}

void CheckSerial(const MachineOptions& options, const IniFile& config, FindingReport& report) {
    const int number = static_cast<int>(Val(config.Value(u"RGBLeds", u"Commport")));
    if (config.Value(u"RGBLeds", u"Active") != u"true" || number < 1 || number > 16) {
        return;
    }
    const QString device = SerialDevice(options, number);
    if (!Exists(device)) {
        Report(report, Level::kError, device,
               QStringLiteral("The program stops at the start (error 8002), because the LED controller is "
                              "switched on and its "
                              "serial port %1 is this device, which does not exist.")
                   .arg(number),
               QStringLiteral(
                   "Connect the controller, name its device with --serial %1=DEVICE, or set Active=false.")
                   .arg(number));
    } else if (!IsAllowed(device, R_OK | W_OK)) {
        Report(report, Level::kError, device,
               QStringLiteral("The program stops at the start (error 8002), because this user has no right "
                              "to use the serial "
                              "port of the LED controller."),
               QStringLiteral("Add the user to the group dialout: adduser USER dialout"));
    }
}

void ReportSilentDisplay(const QString& display, FindingReport& report) {
    Report(report, Level::kNote, display,
           QStringLiteral("The X server that DISPLAY names does not answer this user, so the monitors are "
                          "those that the kernel reports."),
           QStringLiteral("Run the check as the user of that session if FullscreenSize or VideoPositionLeft "
                          "is to be checked."));
}

void CheckFonts(FindingReport& report) {
    if (QFontDatabase::families().isEmpty()) {
        Report(report, Level::kError, {},
               QStringLiteral("No font is installed, so all text is drawn as boxes."),
               QStringLiteral("apt install fonts-dejavu-core"));
    }
}

void CheckDecoders(FindingReport& report) {
    for (const MissingDecoder& missing : MissingDecoders()) {
        const bool isVideo = missing.files.contains(QStringLiteral("video"));
        Report(
            report, Level::kWarning, {},
            isVideo
                ? QStringLiteral(
                      "The jukebox locks up when a %1 is picked, because no decoder for it is installed.")
                      .arg(QString(missing.files).replace(QStringLiteral("videos"), QStringLiteral("video")))
                : QStringLiteral("No %1 play, because no decoder for them is installed.").arg(missing.files),
            QStringLiteral("apt install ") + missing.package);
    }
}

} // namespace

void CheckMachine(const MachineOptions& options, const IniFile& config, FindingReport& report) {
    if (options.hasHome) {
        CheckRights(options.home, report);
        CheckSpace(options.home, report);
        CheckRunning(options.home, report);
    }
    CheckSound(options, report);
    CheckSerial(options, config, report);
    if (!options.silentDisplay.isEmpty()) {
        ReportSilentDisplay(options.silentDisplay, report);
    }
    options.shown ? CheckShownMonitors(*options.shown, config, report)
                  : CheckConnectedMonitors(options.root, config, report);
    CheckFonts(report);
    CheckDecoders(report);
}
