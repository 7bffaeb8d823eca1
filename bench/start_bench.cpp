// The time from the start of a program to its first frame: when the middle of the screen is no longer black.
#include "start_bench.h"

#include "bench.h"
#include "settings/ini_file.h"
#include "theme_bench.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <X11/Xlib.h>
#include <X11/Xutil.h>

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <ctime>

namespace {

constexpr int kLongestStart = 20000;

// Reads one pixel of the screen repeatedly.
class ScreenPixel {
public:
    explicit ScreenPixel(Display* display) : display_(display) {}

    // True if the pixel becomes black, or stops being black, before the time limit.
    bool Await(bool black) const {
        QElapsedTimer timer;
        timer.start();
        while (IsBlack() != black) {
            const timespec pause{0, 200000};
            nanosleep(&pause, nullptr);
            if (timer.hasExpired(kLongestStart)) {
                return false;
            }
        }
        return true;
    }

private:
    bool IsBlack() const {
        const int screen = DefaultScreen(display_);
        XImage* image = XGetImage(display_, RootWindow(display_, screen), DisplayWidth(display_, screen) / 4,
                                  DisplayHeight(display_, screen) / 2, 1, 1, AllPlanes, ZPixmap);
        const bool black = (XGetPixel(image, 0, 0) & 0xFFFFFFU) == 0;
        XDestroyImage(image);
        return black;
    }

    Display* display_;
};

// Starts a program and waits for its frame.
void StartOnce(const ScreenPixel& pixel, QProcess& process, const QStringList& command) {
    process.start(command.first(), command.mid(1));
    if (!pixel.Await(false)) {
        std::fprintf(stderr, "vantorix-bench: no frame of %s within 20 s\n", qPrintable(command.first()));
        std::exit(1);
    }
}

void MakeHome(const QString& delivered, const QString& demo, const QString& theme, const QString& home) {
    QProcess::execute(QStringLiteral("cp"), {QStringLiteral("-rT"), delivered, home});
    QFile file(home + QStringLiteral("/config.ini"));
    if (!file.open(QIODevice::ReadWrite)) {
        std::fprintf(stderr, "vantorix-bench: cannot change %s\n", qPrintable(file.fileName()));
        std::exit(1);
    }
    IniFile config(file.readAll());
    config.SetValue(QStringLiteral("Main"), QStringLiteral("StartPath"), demo);
    config.SetValue(QStringLiteral("Main"), QStringLiteral("Theme"), theme);
    file.resize(0);
    file.write(config.Bytes());
}

} // namespace

void BenchStart(const QString& programs, const QString& homeFolder, const QString& demoFolder) {
    Display* display = XOpenDisplay(nullptr);
    if (display == nullptr) {
        std::printf("Start to first frame: left out, there is no X display\n");
        return;
    }
    const ScreenPixel pixel(display);
    QProcess process;
    process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    const auto endLastRun = [&] {
        process.kill();
        process.waitForFinished();
        pixel.Await(true);
    };
    const auto subject = [&](const QString& name, const QStringList& command) {
        return Contender{name, [&, command] { StartOnce(pixel, process, command); }, endLastRun};
    };
    std::vector<Contender> subjects = {
        subject(QStringLiteral("a bare Qt window with one picture"),
                {programs + QStringLiteral("/vantorix-bare-window"),
                 homeFolder + QStringLiteral("/themes/default/zonelist.png")})};
    const QTemporaryDir homes;
    for (const QString& theme : ThemesOf(homeFolder)) {
        const QString home = homes.filePath(theme);
        MakeHome(homeFolder, demoFolder, theme, home);
        subjects.push_back(subject(QStringLiteral("vantorix, theme %1").arg(theme),
                                   {programs + QStringLiteral("/vantorix"), QStringLiteral("--home"), home}));
    }
    PrintRow(QStringLiteral("Start to first frame"), RunInTurn(subjects, 15));
    process.kill();
    process.waitForFinished();
    XCloseDisplay(display);
}
