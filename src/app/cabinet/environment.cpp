// Settings of the process: allocator, environment, locale, toolkit.
#include "app/cabinet/environment.h"

#include "platform/qt/x11_screen.h"

#include <QApplication>
#include <QByteArray>
#include <QtGlobal>

#include <clocale>
#include <csignal>
#include <cstdio>
#include <malloc.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

// Most pictures, surfaces and stream buffers reach this size; hardly anything else does.
constexpr int kSmallestMapping = 1 << 20;
// Free memory that is kept at the top of a heap, so that smaller buffers do not move the top with every call.
constexpr int kKeptAtTop = 4 << 20;
// Heaps that the threads share.
constexpr int kMostHeaps = 2;

bool IsPrivateFolder(const QByteArray& path) {
    struct stat status = {};
    return lstat(path.constData(), &status) == 0 && S_ISDIR(status.st_mode) && status.st_uid == getuid() &&
           (status.st_mode & 077U) == 0;
}

// Uses the session's folder, otherwise one below /tmp that only this user can access.
void PinRuntimeFolder() {
    const QByteArray user = QByteArray::number(getuid());
    const QByteArray session = "/run/user/" + user;
    if (IsPrivateFolder(session)) {
        qputenv("XDG_RUNTIME_DIR", session);
        return;
    }
    QByteArray folder = "/tmp/vantorix-runtime-" + user;
    if (mkdir(folder.constData(), 0700) == 0 || IsPrivateFolder(folder)) {
        qputenv("XDG_RUNTIME_DIR", folder);
        return;
    }
    folder += "-XXXXXX";
    if (mkdtemp(folder.data()) != nullptr) {
        qputenv("XDG_RUNTIME_DIR", folder);
    }
}

void OnToolkitMessage(QtMsgType type, const QMessageLogContext& /*context*/, const QString& text) {
    std::fprintf(stderr, "vantorix: %s\n", text.toLocal8Bit().constData());
    if (type == QtFatalMsg) {
        _exit(1);
    }
}

} // namespace

// By default every freed mapping of up to 32 MB raises the threshold to its own size. After one large
// picture, all later ones of that size and below come from a heap. There they leave holes between small
// blocks that live longer, and up to 64 MB of free memory stay at the top: 31 MB after a single page of large
// covers. Setting a threshold switches this adjustment off. Threads get up to eight heaps for each core by
// default, and every video starts several threads: after dozens of videos each heap has grown to the needs of
// the largest decoder. If a setting is refused, nothing changes.
void TuneAllocator() {
    mallopt(M_MMAP_THRESHOLD, kSmallestMapping);
    mallopt(M_TRIM_THRESHOLD, kKeptAtTop);
    mallopt(M_ARENA_MAX, kMostHeaps);
}

void PinEnvironment() {
    qputenv("QT_FONT_DPI", "96");
    qputenv("QT_SCALE_FACTOR", "1");
    qputenv("QT_ENABLE_HIGHDPI_SCALING", "0");
    if (!qEnvironmentVariableIsSet("XDG_RUNTIME_DIR")) {
        PinRuntimeFolder();
    }
    // Without a session bus the toolkit would start one for screen readers when it shows a window, and wait
    // for an answer that may never come if the launcher is missing.
    if (!qEnvironmentVariableIsSet("DBUS_SESSION_BUS_ADDRESS")) {
        qputenv("DBUS_SESSION_BUS_ADDRESS", "disabled:");
    }
    // A closed pipe and a file that has reached its limit are failed writes, not the end of the program.
    std::signal(SIGPIPE, SIG_IGN);
    std::signal(SIGXFSZ, SIG_IGN);
    qInstallMessageHandler(OnToolkitMessage);
}

// The toolkit sets the locale only when the first application object of the process is made.
void PinLocale(char** argv) {
    int count = 1;
    { const QCoreApplication first(count, argv); }
    std::setlocale(LC_NUMERIC, "C");
}

QString MissingDisplay() {
    if (qEnvironmentVariableIsSet("QT_QPA_PLATFORM") || !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY")) {
        return {};
    }
    if (qEnvironmentVariableIsEmpty("DISPLAY")) {
        return QStringLiteral(
            "no display: neither WAYLAND_DISPLAY nor DISPLAY is set; start it in a desktop or kiosk "
            "session");
    }
    return X11Screen::Open() ? QString()
                             : QStringLiteral("no display: the X server \"%1\" does not answer")
                                   .arg(qEnvironmentVariable("DISPLAY"));
}

int RunWithToolkit(char** argv, const std::function<int()>& program) {
    // Hides the command line from the toolkit, so that a start script cannot turn on its debugging options by
    // accident.
    int count = 1;
    // The dialogs look the same on every desktop.
    QApplication::setStyle(QStringLiteral("Fusion"));
    const QApplication application(count, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    return program();
}
