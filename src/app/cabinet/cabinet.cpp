// Connecting the real ports to the form, and running the program.
#include "app/cabinet/cabinet.h"

#include "app/cabinet/app_folder.h"
#include "app/cabinet/command_line.h"
#include "app/cabinet/early_start.h"
#include "app/cabinet/environment.h"
#include "core/path_text.h"
#include "core/run_time_error.h"
#include "dialogs/config_dialog.h"
#include "dialogs/controls.h"
#include "dialogs/folder_chooser.h"
#include "dialogs/key_assignment.h"
#include "dialogs/keyboard.h"
#include "platform/gstreamer/audio_library.h"
#include "platform/gstreamer/media_graph.h"
#include "platform/pictures/picture_loader.h"
#include "platform/posix/dlopened_zlib.h"
#include "platform/posix/folder_lock.h"
#include "platform/posix/posix_files.h"
#include "platform/qt/qt_dialogs.h"
#include "platform/qt/qt_display.h"
#include "platform/qt/qt_event_pump.h"
#include "platform/qt/qt_fonts.h"
#include "platform/qt/qt_message_box.h"
#include "platform/qt/qt_video_screen.h"
#include "platform/qt/qt_windows.h"
#include "platform/qt/screens.h"
#include "platform/qt/system_clock.h"
#include "platform/qt/termination_signals.h"
#include "platform/qt/x11_screen.h"
#include "platform/serial/qserialport_line.h"
#include "settings/home_folder.h"
#include "shell/hand_down.h"
#include "shell/handle_event.h"
#include "shell/start_up.h"
#include "state/form_main.h"
#include "state/log.h"
#include "state/paths.h"

#include <cstdio>
#include <exception>
#include <future>
#include <memory>

namespace {

constexpr int kEndedByError = 1;
constexpr int kWrongCommandLine = 2;
// Milliseconds for which the stop page is shown.
constexpr int kStopPage = 15'000;

QString OneLine(QString text) {
    return text.replace(u'\r', u' ').replace(u'\n', u' ');
}

void TellStandardError(const QString& line) {
    std::fprintf(stderr, "vantorix: %s\n", BytesOfPath(OneLine(line)).constData());
}

QString WordsOf(const RunTimeError& error) {
    const QString words = QStringLiteral("%1 (%2)").arg(error.number).arg(RunTimeErrorText(error.number));
    return error.detail.isEmpty() ? words : words + QStringLiteral(": ") + error.detail;
}

// Members are constructed in this order and destroyed in reverse: the form before the ports it uses, the
// windows before the connection to the X server.
class Cabinet {
public:
    Cabinet(const QString& appFolder, const std::map<int, QString>& serialDevices,
            std::unique_ptr<PictureQueue> pictures);

    // Runs the program from start-up to the exit code.
    int Live();

private:
    Ports AllPorts();
    std::map<QString, DialogParts> AllDialogs();
    void Start();
    int TellStop(const ProgramStop& stop);
    // Writes a line to the log if possible.
    void Log(const QString& text);

    // The first cover needs it; the settings and the theme are read in the meantime. The destructor waits for
    // the routine.
    std::future<void> jpeg_ = RunAlongside(PrepareJpeg);
    PosixFiles files_;
    DlopenedZlib zlib_;
    PictureLoader pictures_;
    SystemClock clock_;
    std::unique_ptr<X11Screen> x11_;
    QtEventPump pump_;
    QtWindows windows_;
    QtDisplay display_;
    QtFonts fonts_;
    QtMessageBox messageBox_;
    QtDialogs dialogs_;
    QSerialPortLine serialPort_;
    GstAudioLibrary audio_;
    QtVideoScreen videoScreen_;
    GstMediaGraphs graphs_;
    Form_Main form_;
};

Cabinet::Cabinet(const QString& appFolder, const std::map<int, QString>& serialDevices,
                 std::unique_ptr<PictureQueue> pictures)
    : x11_(WindowSystem() == u"xcb" ? X11Screen::Open() : nullptr), windows_(pump_, x11_.get()),
      display_(x11_.get(), [this](const QString& text) { Log(text); }), fonts_(files_),
      messageBox_(windows_, pump_), dialogs_(windows_, pump_, AllDialogs()),
      serialPort_(serialDevices, appFolder, [this](const QString& text) { Log(text); }),
      videoScreen_(windows_), graphs_({.screen = videoScreen_,
                                       .output = [this] { return audio_.Output(); },
                                       .log = [this](const QString& text) { Log(text); }}),
      form_(AllPorts(), HandDown()) {
    form_.shell.AppFolder = appFolder;
    form_.assets.pictureQueue = std::move(pictures);
    pump_.SetIntervals(form_.shell.Timer1.Interval, form_.shell.tmrSpectrum.Interval);
    pump_.SetSpectrumWanted([this] { return form_.shell.tmrSpectrum.Enabled; });
    pump_.SetSink([this](const InputEvent& event) {
        if (const std::optional<RunTimeError> error = HandleEvent(form_, event)) {
            TellStandardError(QStringLiteral("run-time error ") + WordsOf(*error));
            Log(QStringLiteral(" : Erreur ") + WordsOf(*error));
        }
    });
}

Ports Cabinet::AllPorts() {
    return {.audio = audio_,
            .graphs = graphs_,
            .MSComm1 = serialPort_,
            .display = display_,
            .windows = windows_,
            .fonts = fonts_,
            .clock = clock_,
            .pump = pump_,
            .dialogs = dialogs_,
            .messageBox = messageBox_,
            .files = files_,
            .zlib = zlib_,
            .pictures = pictures_};
}

std::map<QString, DialogParts> Cabinet::AllDialogs() {
    const auto look = [this](const ControlName& control) {
        return LookOf(form_, control).value_or(ControlLook());
    };
    return {{QStringLiteral("Form_KeyBoard"),
             {.load = [this] { Form_KeyBoard_Load(form_); },
              .isOpen = [this] { return form_.shell.Form_KeyBoard.Visible; }}},
            {QStringLiteral("Form_Config"),
             {.load = [this] { Form_Config_Load(form_); },
              .isOpen = [this] { return form_.config.Visible; },
              .look = look}},
            {QStringLiteral("Form_KeyAssign"),
             {.load = [this] { Form_KeyAssign_Load(form_); },
              .isOpen = [this] { return form_.keyAssign.Visible; },
              .look = look}},
            {QStringLiteral("Form_SelectDirectory"),
             {.load = [this] { Form_SelectDirectory_Load(form_); },
              .isOpen = [this] { return form_.folderDialog.Visible; },
              .shown = [this] { ReadOpenFolder(form_); },
              .look = look}}};
}

void Cabinet::Log(const QString& text) {
    PassOver([&] { WriteLog(form_, OneLine(text)); });
}

void Cabinet::Start() {
    Form_Load(form_);
    windows_.ShowMainWindow(form_.shell.MainWindow.Rectangle());
}

int Cabinet::Live() {
    try {
        Start();
        pump_.Run();
    } catch (const ProgramEnd& end) {
        if (form_.settings.StartPath.isEmpty()) {
            TellStandardError(
                QStringLiteral("no music folder is set, so there is nothing to play; start again and "
                               "choose one, or set StartPath in the section [Main] of ") +
                ConfigPath(form_));
        }
        return end.exitCode;
    } catch (const ProgramStop& stop) {
        return TellStop(stop);
    } catch (const std::exception& error) {
        return TellStop(ProgramStop(RunTimeErrorOf(error), QStringLiteral("vantorix")));
    }
}

// Reports the stop everywhere an operator may look, without ever keeping the program from ending.
int Cabinet::TellStop(const ProgramStop& stop) {
    const QString words = WordsOf(stop.error);
    TellStandardError(QStringLiteral("%1 stopped by run-time error %2").arg(stop.routine, words));
    Log(QStringLiteral(" : Arrêt de %1 : erreur %2").arg(stop.routine, words));
    if (TerminationWish::HasCome()) {
        return kEndedByError; // there is no time left for a page
    }
    const QString error =
        QStringLiteral("Error %1: %2").arg(stop.error.number).arg(RunTimeErrorText(stop.error.number));
    messageBox_.ShowPage(
        QStringLiteral("The jukebox has stopped"),
        {error, QStringLiteral("%1: %2").arg(stop.routine, OneLine(stop.error.detail)),
         QStringLiteral(
             "What to do: put right what is named above, then start the jukebox again. The themes and the "
             "config.ini that were delivered with it are known to work."),
         QStringLiteral("What it did before stands in %1").arg(LogPath(form_))},
        QStringLiteral("Any key closes this page. It closes by itself after 15 seconds."), kStopPage);
    return kEndedByError;
}

QString ProgramFolder(Files& files) {
    return FolderOfPath(files.RealPath(QStringLiteral("/proc/self/exe")));
}

AppFolderResult FindFolder(const CommandLine& line) {
    PosixFiles files;
    return FindAppFolder(files, {.home = line.home,
                                 .programFolder = ProgramFolder(files),
                                 .dataHome = TextOfPath(qgetenv("XDG_DATA_HOME")),
                                 .userHome = TextOfPath(qgetenv("HOME")),
                                 .shareFolder = QStringLiteral(VANTORIX_SHARE_FOLDER)});
}

int RunParsed(const CommandLine& line, char** argv) {
    TuneAllocator();
    WatchTerminationSignals();
    PinEnvironment();
    PinLocale(argv);
    const AppFolderResult found = FindFolder(line);
    const QString missing = found.error.isEmpty() ? MissingDisplay() : found.error;
    if (!missing.isEmpty()) {
        TellStandardError(missing);
        return !found.error.isEmpty() && line.home ? kWrongCommandLine : kEndedByError;
    }
    const FolderLock lock(found.folder);
    if (lock.IsTaken()) {
        TellStandardError(HomeInUse(found.folder, lock.Holder()));
        return kWrongCommandLine;
    }
    EarlyStart early(found.folder);
    return RunWithToolkit(
        argv, [&] { return Cabinet(found.folder, line.serialDevices, early.TakePictures()).Live(); });
}

} // namespace

int RunCabinet(int argc, char** argv) try {
    QStringList arguments;
    for (int i = 1; i < argc; ++i) {
        arguments.append(TextOfPath(argv[i]));
    }
    const CommandLine line = ParseCommandLine(arguments);
    if (!line.error.isEmpty()) {
        TellStandardError(line.error + QStringLiteral("; see vantorix --help"));
        return kWrongCommandLine;
    }
    if (line.showHelp) {
        std::fputs(HelpText().toLatin1().constData(), stdout);
        return 0;
    }
    if (line.showVersion) {
        std::printf("vantorix %d.%d.%d\n", VANTORIX_VERSION_MAJOR, VANTORIX_VERSION_MINOR,
                    VANTORIX_VERSION_PATCH);
        return 0;
    }
    return RunParsed(line, argv);
} catch (const std::exception& error) {
    TellStandardError(QStringLiteral("run-time error ") + WordsOf(RunTimeErrorOf(error)));
    return kEndedByError;
}
