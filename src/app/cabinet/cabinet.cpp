// Connecting the real ports to the form, and running the program.
#include "app/cabinet/cabinet.h"

#include "app/cabinet/cabinet_settings.h"
#include "app/cabinet/early_start.h"
#include "app/cabinet/environment.h"
#include "app/cabinet/log_files.h"
#include "app/cabinet/restart.h"
#include "app/cabinet/session_keeper.h"
#include "app/cabinet/stop_page.h"
#include "app/cabinet/system_end.h"
#include "app/home/app_folder.h"
#include "app/start/standard_error.h"
#include "core/path_text.h"
#include "core/run_time_error.h"
#include "dialogs/config_dialog.h"
#include "dialogs/controls.h"
#include "dialogs/folder_chooser.h"
#include "dialogs/key_assignment.h"
#include "dialogs/keyboard.h"
#include "platform/evdev/evdev_gamepads.h"
#include "platform/gstreamer/audio_library.h"
#include "platform/gstreamer/media_graph.h"
#include "platform/pictures/picture_loader.h"
#include "platform/posix/dlopened_zlib.h"
#include "platform/posix/folder_lock.h"
#include "platform/posix/posix_files.h"
#include "platform/posix/service_manager.h"
#include "platform/posix/termination_signals.h"
#include "platform/qt/qt_dialogs.h"
#include "platform/qt/qt_display.h"
#include "platform/qt/qt_event_pump.h"
#include "platform/qt/qt_fonts.h"
#include "platform/qt/qt_message_box.h"
#include "platform/qt/qt_video_screen.h"
#include "platform/qt/qt_windows.h"
#include "platform/qt/screens.h"
#include "platform/qt/system_clock.h"
#include "platform/qt/x11_screen.h"
#include "platform/serial/qserialport_line.h"
#include "settings/config.h"
#include "settings/home_folder.h"
#include "settings/home_restore.h"
#include "shell/hand_down.h"
#include "shell/handle_event.h"
#include "shell/start_up.h"
#include "state/form_main.h"
#include "state/log.h"
#include "state/paths.h"
#include "state/pointers.h"

#include <chrono>
#include <cstdio>
#include <exception>
#include <future>
#include <memory>
#include <optional>
#include <utility>

namespace {

constexpr int kEndedByError = 1;
constexpr int kWrongCommandLine = 2;
constexpr std::int64_t kLargestLog = 32 << 20;
// How long a handler may keep the keys from being answered before the jukebox counts as stuck.
constexpr std::chrono::seconds kLongestHandler{60};
// How long a start may take before the service manager ends it. A large library on a slow disk takes minutes.
constexpr std::chrono::minutes kLongestStart{3};

using SteadyTime = std::chrono::steady_clock::time_point;

// Nothing can clear InputBusy any more, or nothing has for a minute. Passes through every border of events.
class StuckJukebox : public std::exception {
public:
    explicit StuckJukebox(RunTimeError cause) : error(std::move(cause)) {}
    const char* what() const noexcept override { return "stuck jukebox"; }

    RunTimeError error;
};

// How a run of the jukebox ended.
struct Ending {
    int exitCode = 0;
    // Set when the program is to start again.
    std::optional<RestartNote> again;
};

QString LogIn(const QString& appFolder) {
    return PathIn(appFolder, QStringLiteral("vantorix.log"));
}

// Members are constructed in this order and destroyed in reverse: the form before the ports it uses, the
// windows before the connection to the X server.
class Cabinet {
public:
    Cabinet(const AppFolderResult& found, const std::map<int, QString>& serialDevices,
            std::unique_ptr<PictureQueue> pictures, RestartNote note);

    // Runs the program from start-up to its end.
    Ending Live();

private:
    Ports AllPorts();
    std::map<QString, DialogParts> AllDialogs();
    void Start();
    // Restores credits and queue of a run that did not end in order.
    void RestoreKept();
    // Runs a handler, and looks after what it leaves.
    void OnEvent(const InputEvent& event);
    void AfterHandler(const std::optional<RunTimeError>& error);
    // Throws StuckJukebox when no key will be answered any more.
    void LookForStuck();
    // The event thread works, and a person gets an answer.
    void NoteAlive();
    Ending End(const ProgramEnd& end);
    Ending EndStopped(const ProgramStop& stop);
    Ending EndStuck(const StuckJukebox& stuck);
    // What the next start has to know.
    RestartNote NoteFor(const RunTimeError& error, const QString& reason);
    // Hides the pointer on a page exactly when the main window does.
    void SetPagePointer();
    void Show(const StopPage& page);
    // Writes a line to the log if possible.
    void Log(const QString& text);

    // The first cover needs it; the settings and the theme are read in the meantime. The destructor waits for
    // the routine.
    std::future<void> jpeg_ = RunAlongside(PrepareJpeg);
    RestartNote note_;
    CabinetSettings cabinetSettings_;
    LogFiles files_;
    DlopenedZlib zlib_;
    PictureLoader pictures_;
    SystemClock clock_;
    ServiceManager manager_;
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
    std::optional<SessionKeeper> keeper_;
    // The handlers that run, one inside the other.
    int depth_ = 0;
    bool started_ = false;
    std::optional<RunTimeError> lastError_;
    // The last time at which a key would have been answered.
    SteadyTime lastFree_ = std::chrono::steady_clock::now();
    // The event whose handler has ended the program.
    std::optional<InputKind> endedBy_;
    std::unique_ptr<EvdevGamepads> gamepads_;
};

CabinetSettings SettingsIn(const QString& appFolder) {
    PosixFiles files;
    return ReadCabinetSettings(files, appFolder);
}

Cabinet::Cabinet(const AppFolderResult& found, const std::map<int, QString>& serialDevices,
                 std::unique_ptr<PictureQueue> pictures, RestartNote note)
    : note_(std::move(note)), cabinetSettings_(SettingsIn(found.folder)),
      files_(LogIn(found.folder),
             {.largest = cabinetSettings_.limitLog ? kLargestLog : 0, .mayLoseLines = note_.mayLoseLines}),
      x11_(WindowSystem() == u"xcb" ? X11Screen::Open() : nullptr), windows_(pump_, x11_.get()),
      display_(x11_.get(), [this](const QString& text) { Log(text); }), fonts_(files_),
      messageBox_(windows_, pump_), dialogs_(windows_, pump_, AllDialogs()),
      serialPort_(serialDevices, found.folder, [this](const QString& text) { Log(text); }),
      videoScreen_(windows_), graphs_({.screen = videoScreen_,
                                       .output = [this] { return audio_.Output(); },
                                       .log = [this](const QString& text) { Log(text); }}),
      form_(AllPorts(), HandDown()) {
    form_.shell.AppFolder = found.folder;
    form_.shell.shareFolder = found.share;
    form_.assets.pictureQueue = std::move(pictures);
    const auto log = [this](const QString& text) { Log(text); };
    if (cabinetSettings_.holdScreen) {
        windows_.HoldScreen(log);
    }
    if (cabinetSettings_.gamepads) {
        gamepads_ = std::make_unique<EvdevGamepads>(
            [this](int code, bool isRepeat) { windows_.PressGamepadKey(code, isRepeat); }, log);
    }
    pump_.SetIntervals(form_.shell.Timer1.Interval, form_.shell.tmrSpectrum.Interval);
    pump_.SetSpectrumWanted([this] { return form_.shell.tmrSpectrum.Enabled; });
    pump_.SetSink([this](const InputEvent& event) { OnEvent(event); });
    pump_.SetWaiting([this] { NoteAlive(); });
    windows_.SetRefreshed([this] { manager_.Alive(); });
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
    manager_.Starting(kLongestStart);
    Form_Load(form_);
    if (!note_.reason.isEmpty()) {
        Log(QStringLiteral(" : Relancé : ") + note_.reason);
    }
    windows_.ShowMainWindow(form_.shell.MainWindow.Rectangle());
    started_ = true;
    manager_.Ready(QStringLiteral("playing music from ") + form_.settings.StartPath);
    if (!cabinetSettings_.watchdog) {
        manager_.StopWatching();
    }
    RestoreKept();
}

void Cabinet::RestoreKept() {
    if (!cabinetSettings_.keepCreditsAndQueue) {
        return;
    }
    keeper_.emplace(files_, form_.shell.AppFolder, [this](const QString& text) { Log(text); });
    if (const std::optional<KeptSession> kept = keeper_->TakeOver()) {
        Log(QStringLiteral(" : Reprise : crédits %1, file d'attente %2")
                .arg(kept->credits.value())
                .arg(kept->entries.size()));
        depth_ += 1;
        const std::optional<RunTimeError> error = RunHandler([&] { RestoreSession(form_, *kept); });
        AfterHandler(error);
        depth_ -= 1;
    }
}

void Cabinet::OnEvent(const InputEvent& event) {
    depth_ += 1;
    try {
        AfterHandler(HandleEvent(form_, event));
    } catch (const ProgramEnd&) {
        endedBy_ = endedBy_.value_or(event.kind);
        throw;
    }
    depth_ -= 1;
    if (event.kind == InputKind::kTimer1) {
        manager_.Alive();
    }
}

void Cabinet::AfterHandler(const std::optional<RunTimeError>& error) {
    if (error) {
        lastError_ = error;
        TellStandardError(QStringLiteral("run-time error ") + WordsOf(*error));
        Log(QStringLiteral(" : Erreur ") + WordsOf(*error));
    }
    if (!started_) {
        return;
    }
    if (keeper_) {
        keeper_->Follow(form_);
    }
    LookForStuck();
}

void Cabinet::NoteAlive() {
    lastFree_ = std::chrono::steady_clock::now();
    manager_.Alive();
}

// InputBusy can only be cleared by the handler that has set it. A dialog keeps it set while it is open.
void Cabinet::LookForStuck() {
    const auto now = std::chrono::steady_clock::now();
    if (form_.shell.InputBusy == 0 || form_.shell.Form_KeyBoard.Visible || !OpenDialog(form_).isEmpty()) {
        lastFree_ = now;
        return;
    }
    if (!cabinetSettings_.restartWhenStuck) {
        return;
    }
    if (depth_ == 1) {
        throw StuckJukebox(lastError_.value_or(
            RunTimeError(kInternalError, QStringLiteral("InputBusy is set and no handler runs"))));
    }
    if (now - lastFree_ > kLongestHandler) {
        throw StuckJukebox(
            RunTimeError(kInternalError,
                         QStringLiteral("no key has been answered for a minute; the log says what it does")));
    }
}

Ending Cabinet::Live() {
    try {
        Start();
        pump_.Run();
    } catch (const ProgramEnd& end) {
        return End(end);
    } catch (const StuckJukebox& stuck) {
        return EndStuck(stuck);
    } catch (const ProgramStop& stop) {
        return EndStopped(stop);
    } catch (const std::exception& error) {
        return EndStopped(ProgramStop(RunTimeErrorOf(error), QStringLiteral("vantorix")));
    }
}

// Credits and queue are forgotten at an end that somebody has asked for. An end of the program alone, as at
// an update, is none.
Ending Cabinet::End(const ProgramEnd& end) {
    manager_.Stopping();
    if (form_.settings.StartPath.isEmpty()) {
        TellStandardError(
            QStringLiteral("no music folder is set, so there is nothing to play; start again and "
                           "choose one, or set StartPath in the section [Main] of ") +
            ConfigPath(form_));
    }
    if (keeper_ && (endedBy_ != InputKind::kClose || SystemIsEnding())) {
        keeper_->Forget();
    }
    return {.exitCode = end.exitCode, .again = std::nullopt};
}

RestartNote Cabinet::NoteFor(const RunTimeError& error, const QString& reason) {
    note_.reason = reason;
    note_.mayLoseLines =
        note_.mayLoseLines || (error.number == kPathFileAccess && error.detail.startsWith(LogPath(form_)));
    return note_;
}

// A stop can come before the mode is read.
void Cabinet::SetPagePointer() {
    PassOver([&] {
        if (form_.settings.TactileMode.isEmpty()) {
            ReadTactileMode(form_);
        }
        SetModePointers(form_);
    });
}

void Cabinet::Show(const StopPage& page) {
    SetPagePointer();
    messageBox_.ShowPage(page.title, page.lines, page.hint, page.milliseconds);
}

// Reports the stop everywhere an operator may look, without ever keeping the program from ending.
Ending Cabinet::EndStopped(const ProgramStop& stop) {
    const QString words = WordsOf(stop.error);
    TellStandardError(QStringLiteral("%1 stopped by run-time error %2").arg(stop.routine, words));
    const QString line = QStringLiteral("arrêt de %1 : erreur %2").arg(stop.routine, words);
    Log(QStringLiteral(" : ") + line);
    if (TerminationWish::HasCome()) {
        return {.exitCode = kEndedByError, .again = std::nullopt}; // there is no time left for a page
    }
    AfterStop after = AfterStop::kEnds;
    RestartNote note = NoteFor(stop.error, line);
    if (cabinetSettings_.restartAfterStop) {
        after = StopsTooOften(note, SecondsSinceBoot()) ? AfterStop::kWaitsForKey : AfterStop::kStartsAgain;
    }
    if (keeper_) {
        keeper_->BlameFor(stop.error.detail);
    }
    Show(PageOfStop(stop, after,
                    LogPath(form_) + (after == AfterStop::kEnds ? QString() : QStringLiteral(".1"))));
    if (after == AfterStop::kEnds || TerminationWish::HasCome()) {
        return {.exitCode = kEndedByError, .again = std::nullopt};
    }
    if (after == AfterStop::kWaitsForKey) {
        note.stops.clear();
    }
    files_.KeepLog();
    return {.exitCode = kEndedByError, .again = note};
}

Ending Cabinet::EndStuck(const StuckJukebox& stuck) {
    const QString line = QStringLiteral("bloqué par l'erreur ") + WordsOf(stuck.error);
    Log(QStringLiteral(" : Relance : ") + line);
    if (keeper_) {
        keeper_->BlameFor(stuck.error.detail);
    }
    if (!TerminationWish::HasCome()) {
        Show(PageOfStuck(stuck.error, LogPath(form_) + QStringLiteral(".1"), keeper_.has_value()));
    }
    if (TerminationWish::HasCome()) {
        return {.exitCode = kEndedByError, .again = std::nullopt};
    }
    files_.KeepLog();
    return {.exitCode = kEndedByError, .again = NoteFor(stuck.error, line)};
}

AppFolderResult FindFolder(const CommandLine& line) {
    PosixFiles files;
    return FindAppFolder(files, SourcesOfAppFolder(line.home));
}

} // namespace

int RunCabinet(const CommandLine& line, char** argv) {
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
    PosixFiles files;
    if (!TidyHome(files, found.folder)) {
        TellStandardError(
            QStringLiteral("a restore of \"%1\" was interrupted and cannot be completed").arg(found.folder));
        return kEndedByError;
    }
    EarlyStart early(found.folder, found.share);
    Ending ending;
    RunWithToolkit(argv, [&] {
        ending = Cabinet(found, line.serialDevices, early.TakePictures(), TakeRestartNote()).Live();
        return ending.exitCode;
    });
    if (ending.again) {
        StartAgain(*ending.again, argv);
        TellStandardError(QStringLiteral("the system refuses to start the program again"));
    }
    return ending.exitCode;
}
