// Reading the command line.
#include "app/cabinet/command_line.h"

#include <algorithm>
#include <array>

namespace {

constexpr int kLargestPort = 16;

bool TakeHome(CommandLine& line, const QString& value) {
    if (value.isEmpty()) {
        line.error = QStringLiteral("--home needs a folder");
        return false;
    }
    line.home = value;
    return true;
}

bool TakeSerial(CommandLine& line, const QString& value) {
    const qsizetype equals = value.indexOf(u'=');
    bool isNumber = false;
    const int number = value.left(equals < 0 ? 0 : equals).toInt(&isNumber);
    if (!isNumber || number < 1 || number > kLargestPort || equals + 1 == value.size()) {
        line.error =
            QStringLiteral(
                "--serial needs a port number from 1 to 16 and a device, like 1=/dev/ttyUSB0, not \"%1\"")
                .arg(value);
        return false;
    }
    line.serialDevices[number] = value.mid(equals + 1);
    return true;
}

// The option that names a task, and where its value goes.
struct TaskOption {
    const char16_t* name;
    std::optional<QString> CommandLine::*value;
    const char16_t* what;
};

constexpr std::array kTasks = {
    TaskOption{u"--setup", &CommandLine::setupFolder, u"folder"},
    TaskOption{u"--backup", &CommandLine::backupFile, u"file"},
    TaskOption{u"--restore", &CommandLine::restoreFile, u"file"},
};

bool HasTask(const CommandLine& line) {
    return std::any_of(kTasks.begin(), kTasks.end(),
                       [&](const TaskOption& task) { return (line.*task.value).has_value(); });
}

bool TakeTask(CommandLine& line, const TaskOption& task, const QString& value) {
    const QString name = QString::fromUtf16(task.name);
    if (value.isEmpty()) {
        line.error = QStringLiteral("%1 needs a %2").arg(name, QString::fromUtf16(task.what));
        return false;
    }
    if (HasTask(line)) {
        line.error = QStringLiteral("only one of --setup, --backup and --restore is possible");
        return false;
    }
    line.*task.value = value;
    return true;
}

bool TakeValue(CommandLine& line, const QString& option, const QString& value) {
    for (const TaskOption& task : kTasks) {
        if (option == task.name) {
            return TakeTask(line, task, value);
        }
    }
    return option == u"--home" ? TakeHome(line, value) : TakeSerial(line, value);
}

// An option with its value in the next argument, or after "=" in the same one.
bool TakeOption(CommandLine& line, const QStringList& arguments, qsizetype& at) {
    const QString& argument = arguments[at];
    for (const QString& option :
         {QStringLiteral("--home"), QStringLiteral("--serial"), QStringLiteral("--setup"),
          QStringLiteral("--backup"), QStringLiteral("--restore")}) {
        if (argument == option && at + 1 == arguments.size()) {
            line.error = QStringLiteral("%1 needs a value").arg(option);
            return false;
        }
        if (argument == option) {
            return TakeValue(line, option, arguments[++at]);
        }
        if (argument.startsWith(option + u'=')) {
            return TakeValue(line, option, argument.mid(option.size() + 1));
        }
    }
    line.error = QStringLiteral("unknown argument \"%1\"").arg(argument);
    return false;
}

} // namespace

CommandLine ParseCommandLine(const QStringList& arguments) {
    CommandLine line;
    for (qsizetype at = 0; at < arguments.size(); ++at) {
        if (arguments[at] == u"--help" || arguments[at] == u"-h") {
            line.showHelp = true;
        } else if (arguments[at] == u"--version") {
            line.showVersion = true;
        } else if (!TakeOption(line, arguments, at)) {
            return line;
        }
    }
    return line;
}

QString HelpText() {
    return QStringLiteral(
        "Usage: vantorix [--home DIR] [--serial N=DEVICE]...\n"
        "       vantorix --setup FOLDER | --backup FILE | --restore FILE [--home DIR]\n"
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
        "  --help             this text\n"
        "  --version          the version\n"
        "\n"
        "Exit code: 0 ended on request, 1 stopped by an error, 2 wrong command line, or the application\n"
        "folder is in use by another jukebox. Of --setup, --backup and --restore: 0 done, 1 failed, also\n"
        "because the application folder is in use, 2 wrong command line.\n");
}
