// Reading the command line.
#include "app/start/command_line.h"

#include <algorithm>
#include <array>

namespace {

constexpr int kLargestPort = 16;
constexpr int kLargestScreen = 16384;

enum class Value { kNone, kNeeded, kOptional };

struct Option {
    const char16_t* name;
    Value value;
    // Stores the value, or sets the error.
    void (*take)(CommandLine& line, const Option& option, const QString& value);
    // What the value is, for a text that must not be empty.
    const char16_t* what = u"";
    // Where a task's value is stored.
    std::optional<QString> CommandLine::*task = nullptr;
};

void TakeHome(CommandLine& line, const Option& /*option*/, const QString& value) {
    line.home = value;
}

void TakeSerial(CommandLine& line, const Option& /*option*/, const QString& value) {
    const qsizetype equals = value.indexOf(u'=');
    bool isNumber = false;
    const int number = value.left(equals < 0 ? 0 : equals).toInt(&isNumber);
    if (!isNumber || number < 1 || number > kLargestPort || equals + 1 == value.size()) {
        line.error =
            QStringLiteral(
                "--serial needs a port number from 1 to 16 and a device, like 1=/dev/ttyUSB0, not \"%1\"")
                .arg(value);
        return;
    }
    line.serialDevices[number] = value.mid(equals + 1);
}

void TakeTask(CommandLine& line, const Option& option, const QString& value);

void TakeSize(CommandLine& line, const Option& /*option*/, const QString& value) {
    const QStringList parts = value.split(u'x');
    bool isWidth = false;
    bool isHeight = false;
    const QSize size(parts.value(0).toInt(&isWidth), parts.value(1).toInt(&isHeight));
    if (parts.size() != 2 || !isWidth || !isHeight || size.isEmpty() || size.width() > kLargestScreen ||
        size.height() > kLargestScreen) {
        line.error = QStringLiteral("--size needs a width and a height from 1 to %1 pixels, like 1920x1080, "
                                    "not \"%2\"")
                         .arg(kLargestScreen)
                         .arg(value);
        return;
    }
    line.sizes.push_back(size);
}

constexpr std::array kOptions = {
    Option{u"--home", Value::kNeeded, TakeHome, u"folder"},
    Option{u"--serial", Value::kNeeded, TakeSerial},
    Option{u"--setup", Value::kNeeded, TakeTask, u"folder", &CommandLine::setupFolder},
    Option{u"--backup", Value::kNeeded, TakeTask, u"file", &CommandLine::backupFile},
    Option{u"--restore", Value::kNeeded, TakeTask, u"file", &CommandLine::restoreFile},
    Option{u"--check", Value::kOptional, TakeTask, u"", &CommandLine::checkedFolder},
    Option{u"--check-theme", Value::kNeeded, TakeTask, u"theme", &CommandLine::checkedTheme},
    Option{u"--json", Value::kNone, [](auto& line, auto&, auto&) { line.asJson = true; }},
    Option{u"--deep", Value::kNone, [](auto& line, auto&, auto&) { line.isDeep = true; }},
    Option{u"--frames", Value::kNeeded, [](auto& line, auto&, auto& value) { line.framesFolder = value; },
           u"folder"},
    Option{u"--size", Value::kNeeded, TakeSize},
    Option{u"--watch", Value::kNone, [](auto& line, auto&, auto&) { line.isWatching = true; }},
    Option{u"--help", Value::kNone, [](auto& line, auto&, auto&) { line.showHelp = true; }},
    Option{u"-h", Value::kNone, [](auto& line, auto&, auto&) { line.showHelp = true; }},
    Option{u"--version", Value::kNone, [](auto& line, auto&, auto&) { line.showVersion = true; }},
};

void TakeTask(CommandLine& line, const Option& option, const QString& value) {
    const bool hasTask = std::any_of(kOptions.begin(), kOptions.end(), [&](const Option& other) {
        return other.task != nullptr && (line.*other.task).has_value();
    });
    if (hasTask) {
        line.error =
            QStringLiteral("only one of --setup, --backup, --restore, --check and --check-theme is possible");
        return;
    }
    line.*option.task = value;
}

// An option with its value in the next argument, or after "=" in the same one. An optional value never begins
// with a hyphen when it is an argument of its own.
void TakeOption(CommandLine& line, const QStringList& arguments, qsizetype& at) {
    const QString& argument = arguments[at];
    const qsizetype equals = argument.indexOf(u'=');
    const QString name = argument.left(equals);
    const auto* option =
        std::find_if(kOptions.begin(), kOptions.end(), [&](const Option& each) { return name == each.name; });
    if (option == kOptions.end() || (equals >= 0 && option->value == Value::kNone)) {
        line.error = QStringLiteral("unknown argument \"%1\"").arg(argument);
        return;
    }
    QString value = equals < 0 ? QString() : argument.mid(equals + 1);
    const bool hasNext = equals < 0 && at + 1 < arguments.size();
    if (equals < 0 && option->value == Value::kNeeded && !hasNext) {
        line.error = QStringLiteral("%1 needs a value").arg(name);
        return;
    }
    if (hasNext && (option->value == Value::kNeeded ||
                    (option->value == Value::kOptional && !arguments[at + 1].startsWith(u'-')))) {
        value = arguments[++at];
    }
    if (value.isEmpty() && *option->what != 0) {
        line.error = QStringLiteral("%1 needs a %2").arg(name, QString::fromUtf16(option->what));
        return;
    }
    option->take(line, *option, value);
}

// The error in options that need another one; empty when there is none.
QString FaultOfCombination(const CommandLine& line) {
    if (line.asJson && !line.checkedFolder && !line.checkedTheme) {
        return QStringLiteral("--json is only possible with --check or --check-theme");
    }
    if (line.isDeep && !line.checkedFolder) {
        return QStringLiteral("--deep is only possible with --check");
    }
    if ((line.framesFolder || line.isWatching) && !line.checkedTheme) {
        return QStringLiteral("%1 is only possible with --check-theme")
            .arg(line.framesFolder ? QStringLiteral("--frames") : QStringLiteral("--watch"));
    }
    if (!line.sizes.empty() && !line.framesFolder) {
        return QStringLiteral("--size is only possible with --frames");
    }
    return line.framesFolder && line.isWatching
               ? QStringLiteral("only one of --frames and --watch is possible")
               : QString();
}

} // namespace

CommandLine ParseCommandLine(const QStringList& arguments) {
    CommandLine line;
    for (qsizetype at = 0; at < arguments.size() && line.error.isEmpty(); ++at) {
        TakeOption(line, arguments, at);
    }
    if (line.error.isEmpty()) {
        line.error = FaultOfCombination(line);
    }
    return line;
}

QString HelpText() {
    return QStringLiteral(
        "Usage: vantorix [--home DIR] [--serial N=DEVICE]...\n"
        "       vantorix --setup FOLDER | --backup FILE | --restore FILE [--home DIR]\n"
        "       vantorix --check [FOLDER] [--deep] [--json] [--home DIR]\n"
        "       vantorix --check-theme NAME|DIR [--json] [--frames DIR [--size WxH]... | --watch] [--home "
        "DIR]\n"
        "A full-screen jukebox for music and video.\n"
        "\n"
        "  --home DIR         the application folder: config.ini, playlists, your own themes, the log, the "
        "counts.\n"
        "                     Without it: the program's folder if it has config.ini or themes, else\n"
        "                     $XDG_DATA_HOME/vantorix (~/.local/share/vantorix), filled at the first start.\n"
        "  --serial N=DEVICE  the device of serial port N, 1 to 16. Without it: a file or link COMN in the\n"
        "                     application folder, else /dev/ttyS(N-1).\n"
        "  --setup FOLDER     sets the music folder and ends.\n"
        "  --backup FILE      writes settings, counts, playlists and your own themes to a tar archive and "
        "ends.\n"
        "                     The jukebox may be running.\n"
        "  --restore FILE     replaces them by those of a backup and ends. The state before is kept in\n"
        "                     before-restore.tar in the application folder.\n"
        "  --check [FOLDER]   reports what is wrong with the music, the settings, the theme and the machine, "
        "and\n"
        "                     ends. Without FOLDER: the music folder of config.ini. Changes nothing.\n"
        "  --deep             with --check: also opens every file as the jukebox would\n"
        "  --check-theme NAME|DIR\n"
        "                     reports all mistakes in a theme and ends. Changes nothing.\n"
        "  --frames DIR       with --check-theme: writes pictures of every situation\n"
        "  --size WxH         with --frames: the size of the screen; several are possible\n"
        "  --watch            with --check-theme: shows the theme in a window and reads it again when a file "
        "is\n"
        "                     saved\n"
        "  --json             with --check or --check-theme: one JSON object a line\n"
        "  --help             this text\n"
        "  --version          the version\n"
        "\n"
        "Exit code: 0 ended on request, 1 stopped by an error, 2 wrong command line, or the application\n"
        "folder is in use by another jukebox. Of --setup, --backup and --restore: 0 done, 1 failed, also\n"
        "because the application folder is in use, 2 wrong command line. Of --check and --check-theme:\n"
        "0 nothing but notes, 1 warnings, 2 errors, or wrong command line. A task that a signal ends\n"
        "early: 128 plus the signal's number, 130 after Ctrl+C.\n");
}
