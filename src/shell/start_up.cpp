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
#include "rendering/video_surfaces.h"
#include "settings/config_values.h"
#include "settings/folder_settings.h"
#include "settings/load_config.h"
#include "shell/form_main.h"
#include "shell/log.h"
#include "theme/load_command.h"
#include "theme/load_theme.h"

namespace {

constexpr std::uint32_t kAudioLibraryVersion = 0x0204;

void EnumerateMonitors(Form_Main& form) {
    for (const QRect& monitor : form.display.EnumDisplayMonitors()) {
        TellingWhere([] { return QStringLiteral("the monitors (expected at most 11)"); },
                     [&] { form.MonitorWidth(form.MonitorCount) = monitor.width(); });
        form.MonitorHeight(form.MonitorCount) = monitor.height();
        form.MonitorCount += 1;
    }
}

void RecordDesktop(Form_Main& form) {
    const DisplayMode mode = form.display.CurrentMode();
    form.ScreenWidth = mode.width;
    form.ScreenHeight = mode.height;
    form.ScreenBits = mode.bits;
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

void OpenLedController(Form_Main& form) {
    if (form.RGBLedsActive != u"true") {
        return;
    }
    const auto where = [&] {
        return ConfigPlace(form, u"RGBLeds", u"Commport") +
               QStringLiteral(" (expected the number of a serial port)");
    };
    TellingWhere(where, [&] {
        SerialSettings line;
        line.commPort = CInt16(form.RGBLedsCommport);
        line.baudRate = 115200;
        line.rtsEnable = true;
        line.dtrEnable = false;
        form.MSComm1.Open(line);
    });
}

void OpenStartFolder(Form_Main& form) {
    if (form.StartPath.isEmpty()) {
        form.StartPath = form.AppFolder;
    }
    form.CurrentPath = form.StartPath;
    WriteLog(form, QStringLiteral(" : deplacement dir1 vers ") + form.CurrentPath);
    const auto where = [&] {
        return ConfigPlace(form, u"Main", u"StartPath") + QStringLiteral(" (expected a folder)");
    };
    TellingWhere(where, [&] {
        PointDir1(form, form.CurrentPath);
        PointFile1(form, form.CurrentPath);
    });
    SetFile1Pattern(form, kMusicPattern.toString());
    form.DirLevel = 0;
    form.DirHistoryPage(0) = form.CurrentPage;
    form.DirHistoryPath(0) = form.Dir1.Path;
}

// The window covers the desktop in the mode that the configuration has set, so that centring puts it at 0;
// the picture area fills it until the theme says otherwise.
void SizeWindow(Form_Main& form) {
    const auto [width, height, bits] = form.display.CurrentMode();
    form.MainWindow = {0, 0, width, height, false};
    Resize(form.Picture_Main, width, height);
}

void SetFirstView(Form_Main& form) {
    form.Order = form.DefaultOrder;
    form.ActiveZone = QStringLiteral("list");
    form.BlockMainInfos = QStringLiteral("insertcoin");
    form.CurrentPage = 0;
    form.SelX = 1;
    form.SelY = 1;
    form.InfosTicks = 1;
    if (form.Theme.isEmpty()) {
        form.Theme = QStringLiteral("default");
    }
}

void Load(Form_Main& form) {
    OpenLog(form, QStringLiteral(" : Lancement de l'application"));
    WriteLog(form, QStringLiteral(" : Vantorix-Jukebox version %1.%2.%3")
                       .arg(VANTORIX_VERSION_MAJOR)
                       .arg(VANTORIX_VERSION_MINOR)
                       .arg(VANTORIX_VERSION_PATCH));
    EnumerateMonitors(form);
    form.InputBusy = 1;
    form.windows.MousePointer(QStringLiteral("Screen"), kPointerHourglass);
    RecordDesktop(form);
    LoadConfig(form);
    OpenAudio(form);
    form.SpectrumWidth = 100;
    form.SpectrumHeight = 256;
    OpenLedController(form);
    OpenStartFolder(form);
    SizeWindow(form);
    SetFirstView(form);
    ReadStartFolderSettings(form);
    LoadCommand(form);
    form.KeyboardMainWidth = form.Picture_Main.Width();
    LoadTheme(form);
    if (VideoLiesBeyondScreen(form)) {
        ShowVideoForm(form);
    }
    form.InputBusy = 0;
    form.windows.MousePointer(QStringLiteral("Screen"), kPointerDefault);
    form.Timer1.Enabled = true;
    form.MainWindow.Visible = true;
}

} // namespace

void Form_Load(Form_Main& form) {
    EndsProgram("Form_Load", [&] { Load(form); });
}
