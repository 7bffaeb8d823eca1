// Start-up, step by step.
#include "shell/start_up.h"

#include "core/conversions.h"
#include "core/run_time_error.h"
#include "library/create_list.h"
#include "platform/audio_library.h"
#include "platform/display.h"
#include "platform/message_box.h"
#include "platform/serial_port.h"
#include "platform/windows.h"
#include "rendering/video_form.h"
#include "settings/config.h"
#include "settings/folder_settings.h"
#include "shell/display_mode.h"
#include "shell/load_config.h"
#include "shell/load_theme.h"
#include "state/form_main.h"
#include "state/log.h"
#include "theme/load_command.h"

namespace {

constexpr std::uint32_t kAudioLibraryVersion = 0x0204;

void EnumerateMonitors(Form_Main& form) {
    for (const QRect& monitor : form.display.EnumDisplayMonitors()) {
        TellingWhere([] { return QStringLiteral("the monitors (expected at most 11)"); },
                     [&] { form.shell.MonitorWidth(form.shell.MonitorCount) = monitor.width(); });
        form.shell.MonitorHeight(form.shell.MonitorCount) = monitor.height();
        form.shell.MonitorCount += 1;
    }
}

void RecordDesktop(Form_Main& form) {
    const DisplayMode mode = form.display.CurrentMode();
    form.shell.ScreenWidth = mode.width;
    form.shell.ScreenHeight = mode.height;
    form.shell.ScreenBits = mode.bits;
}

void OpenAudio(Form_Main& form) {
    form.audio.BASS_Free();
    if (form.audio.BASS_GetVersion() >> 16 != kAudioLibraryVersion) {
        form.messageBox.Show(QStringLiteral("Vantorix-Jukebox"),
                             QStringLiteral("An incorrect version of BASS.DLL was loaded"));
        throw ProgramEnd(0);
    }
    if (!form.audio.BASS_Init(-1, 44100, 0)) {
        throw ProgramEnd(0);
    }
}

// Deliberate D-153: the port is opened here and nowhere else. Switching the LEDs on in config.ini while the
// jukebox runs ends the program with error 8018 at the next track, once the file is read again. One would
// expect the port to be opened then; a cabinet is wired before it is started.
void OpenLedController(Form_Main& form) {
    if (form.settings.RGBLedsActive != u"true") {
        return;
    }
    const auto where = [&] {
        return ConfigPlace(form, u"RGBLeds", u"Commport") +
               QStringLiteral(" (expected the number of a serial port)");
    };
    TellingWhere(where, [&] {
        SerialSettings line;
        line.commPort = CInt16(form.settings.RGBLedsCommport);
        line.baudRate = 115200;
        line.rtsEnable = true;
        line.dtrEnable = false;
        form.MSComm1.Open(line);
    });
}

void OpenStartFolder(Form_Main& form) {
    if (form.settings.StartPath.isEmpty()) {
        form.settings.StartPath = form.shell.AppFolder;
    }
    PointAtStartFolder(form);
    form.library.DirLevel = 0;
    form.library.DirHistoryPage(0) = form.library.CurrentPage;
    form.library.DirHistoryPath(0) = form.library.Dir1.Path;
}

// The window covers the screen in the mode set by the configuration. The picture area fills the window until
// the theme changes it.
void SizeWindow(Form_Main& form) {
    CoverScreen(form);
    Resize(form.frame.Picture_Main, form.shell.MainWindow.Width, form.shell.MainWindow.Height);
}

void SetFirstView(Form_Main& form) {
    form.library.Order = form.settings.DefaultOrder;
    form.cursor.ActiveZone = QStringLiteral("list");
    form.frame.BlockMainInfos = QStringLiteral("insertcoin");
    form.library.CurrentPage = 0;
    form.cursor.SelX = 1;
    form.cursor.SelY = 1;
    form.frame.InfosTicks = 1;
    if (form.settings.Theme.isEmpty()) {
        form.settings.Theme = QStringLiteral("default");
    }
}

void Load(Form_Main& form) {
    OpenLog(form, QStringLiteral(" : Lancement de l'application"));
    WriteLog(form, QStringLiteral(" : Vantorix-Jukebox version %1.%2.%3")
                       .arg(VANTORIX_VERSION_MAJOR)
                       .arg(VANTORIX_VERSION_MINOR)
                       .arg(VANTORIX_VERSION_PATCH));
    EnumerateMonitors(form);
    form.shell.InputBusy = 1;
    form.windows.MousePointer(QStringLiteral("Screen"), kPointerHourglass);
    RecordDesktop(form);
    LoadConfig(form);
    OpenAudio(form);
    form.lights.SpectrumWidth = 100;
    form.lights.SpectrumHeight = 256;
    OpenLedController(form);
    OpenStartFolder(form);
    SizeWindow(form);
    SetFirstView(form);
    ReadStartFolderSettings(form);
    LoadCommand(form);
    form.keyboard.KeyboardMainWidth = form.frame.Picture_Main.Width();
    LoadTheme(form);
    if (VideoLiesBeyondScreen(form)) {
        ShowVideoForm(form);
    }
    form.shell.InputBusy = 0;
    form.windows.MousePointer(QStringLiteral("Screen"), kPointerDefault);
    form.shell.Timer1.Enabled = true;
    form.shell.MainWindow.Visible = true;
}

} // namespace

void Form_Load(Form_Main& form) {
    EndsProgram("Form_Load", [&] { Load(form); });
}
