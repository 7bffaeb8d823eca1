// Pinning the environment.
#include "app/cabinet/environment.h"

#include "platform/qt/x11_screen.h"

#include <QApplication>
#include <QByteArray>
#include <QtGlobal>

#include <clocale>
#include <csignal>
#include <cstdio>
#include <sys/stat.h>
#include <unistd.h>

namespace {

bool IsPrivateFolder(const QByteArray& path) {
    struct stat status = {};
    return lstat(path.constData(), &status) == 0 && S_ISDIR(status.st_mode) && status.st_uid == getuid() &&
           (status.st_mode & 077U) == 0;
}

// The session's own folder, else one below /tmp that nobody else can reach.
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

void PinEnvironment() {
    qputenv("QT_FONT_DPI", "96");
    qputenv("QT_SCALE_FACTOR", "1");
    qputenv("QT_ENABLE_HIGHDPI_SCALING", "0");
    if (!qEnvironmentVariableIsSet("XDG_RUNTIME_DIR")) {
        PinRuntimeFolder();
    }
    // Without a session bus the toolkit would have one started when it shows a window, for readers of the
    // screen, and wait for the answer of a starter that may not exist: now and then for ever.
    if (!qEnvironmentVariableIsSet("DBUS_SESSION_BUS_ADDRESS")) {
        qputenv("DBUS_SESSION_BUS_ADDRESS", "disabled:");
    }
    std::signal(SIGPIPE, SIG_IGN);
    qInstallMessageHandler(OnToolkitMessage);
}

// The toolkit sets the locale when the first application object of the process is made, and only then.
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
    // The toolkit's own options stay out of reach: a start script cannot turn on its debugging aids by
    // chance.
    int count = 1;
    const QApplication application(count, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    return program();
}
