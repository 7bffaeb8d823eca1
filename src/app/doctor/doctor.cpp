// Running all checks on a jukebox that is loaded without a display.
#include "app/doctor/doctor.h"

#include "app/doctor/deep_check.h"
#include "app/doctor/interruption.h"
#include "app/doctor/library_check.h"
#include "app/doctor/machine_check.h"
#include "app/doctor/progress.h"
#include "app/doctor/settings_check.h"
#include "app/doctor/still_files.h"
#include "app/doctor/theme_check.h"
#include "app/findings/finding_report.h"
#include "app/home/app_folder.h"
#include "app/home/folder_owner.h"
#include "app/start/command_line.h"
#include "app/start/standard_error.h"
#include "core/path_text.h"
#include "core/run_time_error.h"
#include "platform/posix/posix_files.h"
#include "platform/posix/termination_signals.h"
#include "platform/qt/x11_query.h"
#include "platform/simulated/simulated_platform.h"
#include "platform/simulated/surroundings.h"
#include "settings/config.h"
#include "settings/home_folder.h"
#include "settings/home_restore.h"
#include "settings/ini_files.h"
#include "settings/profile.h"
#include "shell/display_mode.h"
#include "shell/hand_down.h"
#include "state/form_main.h"
#include "state/paths.h"

#include <unistd.h>

namespace {

constexpr int kWrongCommandLine = 2;

int Fail(const QString& words) {
    TellStandardError(words);
    return kWrongCommandLine;
}

// Where the settings are, and whether the first start has still to make the application folder.
struct Home {
    QString folder;
    QString share;
    bool exists = true;
    QString error;
};

Home FindHome(Files& files, const AppFolderSources& sources) {
    // Nothing is really made, because the files cannot be changed.
    const AppFolderResult found = FindAppFolder(files, sources);
    if (!found.error.isEmpty() || HoldsJukebox(files, found.folder)) {
        return {found.folder, found.share, true, found.error};
    }
    return {found.share, {}, false, {}};
}

// The jukebox's ports on the simulated machine, with files that cannot be changed.
Ports PortsOf(SimulatedPlatform& platform, Files& files) {
    const Ports ports = platform.ports();
    return {ports.audio, ports.graphs, ports.MSComm1, ports.display, ports.windows,
            ports.fonts, ports.clock,  ports.pump,    ports.dialogs, ports.messageBox,
            files,       ports.zlib,   ports.pictures};
}

void ReadSettings(Form_Main& form) {
    form.settings.StartPath = ReadStartPath(form);
    ReadScreenKeys(form);
    CoverScreen(form);
    ReadPlacementKeys(form);
    ReadOtherKeys(form);
}

void CheckStartFolder(const Form_Main& form, FindingReport& report) {
    if (!form.settings.StartPath.isEmpty() && !form.files.IsFolder(form.settings.StartPath)) {
        report.Add(
            {Level::kError, Subject::kSettings, form.settings.StartPath,
             QStringLiteral(
                 "The program stops at the start, because this music folder of config.ini does not exist."),
             QStringLiteral(
                 "Mount its disk before the jukebox starts, or choose another: vantorix --setup FOLDER")});
    }
}

void CheckSettings(Form_Main& form, const Home& home, FindingReport& report) {
    if (!home.exists) {
        report.Add({Level::kNote, Subject::kSettings, home.folder,
                    QStringLiteral(
                        "The application folder does not exist yet; the first start makes it. The delivered "
                        "settings are checked."),
                    QStringLiteral("vantorix --setup FOLDER")});
    }
    if (HoldsRestore(form.files, home.folder)) {
        report.Add({Level::kWarning,
                    Subject::kSettings,
                    home.folder,
                    QStringLiteral("A restore was interrupted; the next start completes it."),
                    {}});
    }
    CheckConfig(form.files, home.folder, report);
    CheckStartFolder(form, report);
    CheckFolderSettings(form.files, home.folder, report);
    CheckStats(form.files, home.folder, report);
    if (home.exists) {
        CheckPlaylists(form, report);
    }
}

void CheckMusicFolder(Form_Main& form, const QString& folder, bool hasTheme, bool isDeep,
                      FindingReport& report, Progress& progress) {
    if (!hasTheme) {
        report.Add(
            {Level::kNote,
             Subject::kMusic,
             folder,
             QStringLiteral("Titles are not measured, because there is no theme to measure them with."),
             {}});
    }
    CheckFolderName(folder, report);
    const LibrarySummary summary = CheckLibrary(form, report, {folder, hasTheme, isDeep}, progress);
    if (isDeep) {
        CheckOpening(summary.media, report, progress);
        EndIfInterrupted();
    }
    if (summary.files == 0) {
        report.Add({Level::kWarning, Subject::kMusic, folder,
                    QStringLiteral("There is nothing to play in the music folder and the folders below it."),
                    QStringLiteral("Copy music there, or choose another folder: vantorix --setup FOLDER")});
    }
}

// The folder of the command line from the root, or that of config.ini.
QString FolderToCheck(const Form_Main& form, const QString& given) {
    if (given.isEmpty()) {
        return WithoutSeparatorAtEnd(form.settings.StartPath);
    }
    return WithoutSeparatorAtEnd(given.startsWith(u'/') ? given : form.files.RealPath(given));
}

// The X server on which the jukebox would be shown; empty for another window system or none.
QString DisplayOfJukebox() {
    const QString system = qEnvironmentVariable("QT_QPA_PLATFORM", QStringLiteral("xcb"));
    const bool isElsewhere = system != u"xcb" || !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY");
    return isElsewhere ? QString() : qEnvironmentVariable("DISPLAY");
}

// Puts the monitors of the X server into the options.
void ReadXServer(MachineOptions& options) {
    constexpr std::chrono::seconds kPatience{3};
    const QString display = DisplayOfJukebox();
    if (display.isEmpty()) {
        return;
    }
    const std::optional<X11Monitors> monitors = ReadMonitors(kPatience);
    if (monitors) {
        options.shown = {display, monitors->places, monitors->modes, monitors->bitsPerPixel};
    } else {
        options.silentDisplay = display;
    }
}

// What a check works with.
struct Work {
    const CommandLine& line;
    const Home& home;
    Form_Main& form;
    FindingReport& report;
    Progress& progress;
};

void EndStep(Work& work, const QString& name) {
    EndIfInterrupted();
    work.progress.Add(name);
}

// Throws CheckInterrupted.
void CheckAll(Work& work, const QString& folder, const MachineOptions& machine) {
    const auto& [line, home, form, report, progress] = work;
    CheckSettings(form, home, report);
    EndStep(work, QStringLiteral("settings"));
    CheckMachine(machine, IniFilesOf(form).Open(form.files, ConfigPath(form)), report);
    EndStep(work, QStringLiteral("machine"));
    const bool hasTheme = CheckThemeOfHome(form, report);
    EndStep(work, QStringLiteral("theme"));
    if (hasTheme && home.exists) {
        CheckPlaylistTitles(form, report);
    }
    if (form.files.IsFolder(folder)) {
        CheckMusicFolder(form, folder, hasTheme, line.isDeep, report, progress);
    }
}

int Check(const CommandLine& line, const Home& home, Files& files, const MachineOptions& machine) {
    const Surroundings surroundings;
    SimulatedPlatform platform;
    Form_Main form(PortsOf(platform, files), HandDown());
    form.shell.AppFolder = home.folder;
    form.shell.shareFolder = home.share;
    FindingReport report(stdout, line.asJson);
    Progress progress;
    ReadSettings(form);
    const QString folder = FolderToCheck(form, *line.checkedFolder);
    const QString subject = folder.isEmpty() ? home.folder : folder;
    ReportAtSignal atSignal(report, progress, subject);
    Work work{line, home, form, report, progress};
    try {
        CheckAll(work, folder, machine);
        report.Finish(subject);
    } catch (const CheckInterrupted&) {
        atSignal.Complete();
    }
    return report.IsIncomplete() ? TerminationExitCode() : report.ExitCode();
}

// The runtime folder of the user whose rights the process has now; `caller` has started it.
QString RuntimeFolder(uid_t caller) {
    return ::getuid() == caller ? TextOfPath(qgetenv("XDG_RUNTIME_DIR"))
                                : QStringLiteral("/run/user/%1").arg(::getuid());
}

} // namespace

int RunDoctor(const CommandLine& line, const AppFolderSources& sources) {
    WatchTerminationSignals();
    PosixFiles real;
    StillFiles files(real);
    const QString place = PlaceOfAppFolder(files, sources);
    const uid_t caller = ::getuid();
    if (!BecomeOwnerOf(place) || !StayOwner()) {
        return Fail(QStringLiteral("the rights of the owner of \"%1\" cannot be taken").arg(place));
    }
    const QString& given = *line.checkedFolder;
    if (!given.isEmpty() && !files.IsFolder(given)) {
        return Fail(QStringLiteral("there is no folder \"%1\"").arg(given));
    }
    const Home home = FindHome(files, sources);
    if (!home.error.isEmpty()) {
        return Fail(home.error);
    }
    MachineOptions machine{home.folder, home.exists, line.serialDevices, RuntimeFolder(caller)};
    ReadXServer(machine); // Surroundings changes the environment
    return Check(line, home, files, machine);
}
