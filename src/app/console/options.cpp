// Reading the command line of the console.
#include "app/console/options.h"

#include "core/path_text.h"
#include "platform/simulated/calls.h"

#include <QDir>
#include <QRegularExpression>

#include <algorithm>
#include <array>
#include <climits>
#include <optional>

#include <unistd.h>

namespace {

constexpr int kLargestScreen = 16'384;
constexpr int kMostScreens = 64;

// A position in X11's form: "+8", "-8" or "+-8".
int PlaceOf(const QString& text) {
    return (text.startsWith(u'+') ? text.mid(1) : text).toInt();
}

// "WxH" or "WxH+X+Y". Without a position the screen is to the right of the previous one.
std::optional<QRect> ScreenOf(const QString& text, int nextLeft) {
    static const QRegularExpression form(QStringLiteral(
        "\\A([0-9]{1,5})x([0-9]{1,5})(?:(\\+-?[0-9]{1,5}|-[0-9]{1,5})(\\+-?[0-9]{1,5}|-[0-9]{1,5}))?\\z"));
    const QRegularExpressionMatch match = form.match(text);
    const int width = match.captured(1).toInt();
    const int height = match.captured(2).toInt();
    if (!match.hasMatch() || width < 1 || height < 1 || width > kLargestScreen || height > kLargestScreen) {
        return std::nullopt;
    }
    const bool placed = !match.captured(3).isEmpty();
    return QRect(placed ? PlaceOf(match.captured(3)) : nextLeft, placed ? PlaceOf(match.captured(4)) : 0,
                 width, height);
}

std::optional<std::vector<QRect>> ScreensOf(const QString& text) {
    std::vector<QRect> screens;
    int nextLeft = 0;
    const QStringList parts = text.split(u',');
    for (const QString& part : parts) {
        const std::optional<QRect> screen = ScreenOf(part, nextLeft);
        if (!screen) {
            return std::nullopt;
        }
        screens.push_back(*screen);
        nextLeft = screen->x() + screen->width();
    }
    return parts.size() > kMostScreens ? std::nullopt : std::optional(screens);
}

std::optional<QDateTime> ClockOf(const QString& text) {
    const QDate date = QDate::fromString(text.left(10), QStringLiteral("yyyy-MM-dd"));
    const QTime time = QTime::fromString(text.mid(11), QStringLiteral("HH:mm:ss"));
    const bool exact = text.size() == 19 && text[10] == u' ' && date.isValid() && time.isValid();
    return exact ? std::optional(QDateTime(date, time, Qt::UTC)) : std::nullopt;
}

QString CurrentFolder() {
    std::array<char, PATH_MAX> path{};
    return getcwd(path.data(), path.size()) == nullptr ? QString() : TextOfPath(QByteArray(path.data()));
}

// Stores one option in `options`. Returns the error in it, or an empty text.
QString TakeOption(ConsoleOptions& options, const QString& name, const QString& value) {
    if (name == u"--home") {
        options.home = QDir::cleanPath(value.startsWith(u'/') ? value : PathIn(CurrentFolder(), value));
        return value.isEmpty() ? QStringLiteral("--home needs a folder") : QString();
    }
    if (name == u"--screen") {
        const auto screens = ScreensOf(value);
        options.simulation.screens = screens.value_or(std::vector<QRect>());
        return screens ? QString() : QStringLiteral("--screen: not a list of sizes: ") + value;
    }
    if (name == u"--clock") {
        const auto clock = ClockOf(value);
        options.simulation.clock = clock.value_or(QDateTime());
        return clock ? QString() : QStringLiteral("--clock: not a time like 2024-05-06 07:08:09: ") + value;
    }
    (Failures::IsOperation(value) ? options.simulation.failing : options.unknownOperations) += value;
    return QString();
}

bool Holds(std::span<const QByteArray> arguments, const char* option) {
    return std::find(arguments.begin(), arguments.end(), option) != arguments.end();
}

} // namespace

std::variant<ConsoleOptions, QString> ParseOptions(std::span<const QByteArray> arguments) {
    const QStringList optionNames = {QStringLiteral("--home"), QStringLiteral("--screen"),
                                     QStringLiteral("--clock"), QStringLiteral("--fail")};
    ConsoleOptions options;
    options.showHelp = Holds(arguments, "--help") || Holds(arguments, "-h");
    options.showVersion = Holds(arguments, "--version");
    if (options.showHelp || options.showVersion) {
        return options;
    }
    QStringList given;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const QString name = TextOfPath(arguments[i]);
        if (!optionNames.contains(name)) {
            return QStringLiteral("unknown argument: ") + name;
        }
        if (i + 1 == arguments.size()) {
            return QStringLiteral("no value behind ") + name;
        }
        if (given.contains(name) && name != u"--fail") {
            return QStringLiteral("given twice: ") + name;
        }
        given += name;
        ++i;
        const QString fault = TakeOption(options, name, TextOfPath(arguments[i]));
        if (!fault.isEmpty()) {
            return fault;
        }
    }
    return options.home.isEmpty() ? std::variant<ConsoleOptions, QString>(QStringLiteral("--home is missing"))
                                  : options;
}

QString Usage() {
    return QStringLiteral(
        "Usage: vantorix-console --home DIR [--screen WxH[,WxH+X+Y...]] [--clock \"YYYY-MM-DD hh:mm:ss\"]\n"
        "                        [--fail OPERATION]...\n");
}

QString HelpText() {
    return Usage() +
           QStringLiteral(
               "The jukebox on a simulated machine. Commands come from standard input, one a line; each is\n"
               "answered by one line of JSON on standard output.\n"
               "\n"
               "  --home DIR         the application folder: config.ini, themes, playlists, the log, the "
               "counts\n"
               "  --screen LIST      the monitors, the first one primary: WxH or WxH+X+Y, separated by "
               "commas.\n"
               "                     Without it: 1280x720.\n"
               "  --clock TIME       the local time at the start, \"YYYY-MM-DD hh:mm:ss\".\n"
               "                     Without it: 2000-01-01 00:00:00.\n"
               "  --fail OPERATION   this operation of the machine fails whenever it is called; may be "
               "given\n"
               "                     several times\n"
               "  --help             this text\n"
               "  --version          the version\n"
               "\n"
               "Exit code: 0 ended on request or at the end of the input, 1 stopped by an error, 2 wrong "
               "command\n"
               "line, or the application folder is in use by another jukebox, 3 waiting for something that\n"
               "cannot come.\n");
}
