// Running a session from the command line.
#include "app/console/run.h"

#include "app/console/console.h"
#include "app/console/options.h"
#include "core/path_text.h"
#include "core/run_time_error.h"
#include "platform/posix/folder_lock.h"
#include "platform/simulated/surroundings.h"
#include "settings/home_folder.h"
#include "settings/home_restore.h"
#include "shell/hand_down.h"
#include "state/form_main.h"

#include <cstdio>
#include <exception>
#include <vector>

#include <unistd.h>

namespace {

constexpr int kStopped = 1;
constexpr int kWrongCommandLine = 2;

void WriteError(const QString& text) {
    const QByteArray bytes = BytesOfPath(text);
    std::fwrite(bytes.constData(), 1, static_cast<std::size_t>(bytes.size()), stderr);
}

int RefuseCommandLine(const QString& reason) {
    WriteError(QStringLiteral("vantorix-console: ") + reason + u'\n' + Usage());
    return kWrongCommandLine;
}

int RunSession(const ConsoleOptions& options) {
    SimulatedPlatform platform(options.simulation);
    const QString fault = FaultOfHome(platform.realFiles, options.home, options.home);
    if (!fault.isEmpty()) {
        return RefuseCommandLine(fault);
    }
    const FolderLock lock(options.home);
    if (lock.IsTaken()) {
        WriteError(QStringLiteral("vantorix-console: ") + HomeInUse(options.home, lock.Holder()) + u'\n');
        return kWrongCommandLine;
    }
    TidyHome(platform.realFiles, options.home);
    Form_Main form(platform.ports(), HandDown());
    form.shell.AppFolder = options.home;
    CommandReader input(STDIN_FILENO);
    Console console{platform, form, input, {}, 0, {}};
    return RunConsole(console);
}

} // namespace

int RunConsoleProgram(int argc, char** argv) try {
    const std::vector<QByteArray> arguments(argv + 1, argv + argc);
    const std::variant<ConsoleOptions, QString> parsed = ParseOptions(arguments);
    if (const QString* reason = std::get_if<QString>(&parsed)) {
        return RefuseCommandLine(*reason);
    }
    const ConsoleOptions& options = std::get<ConsoleOptions>(parsed);
    if (options.showHelp) {
        std::fputs(HelpText().toLatin1().constData(), stdout);
        return 0;
    }
    if (options.showVersion) {
        std::printf("vantorix-console %d.%d.%d\n", VANTORIX_VERSION_MAJOR, VANTORIX_VERSION_MINOR,
                    VANTORIX_VERSION_PATCH);
        return 0;
    }
    for (const QString& operation : options.unknownOperations) {
        WriteError(QStringLiteral("vantorix-console: --fail: no operation of this name can fail: ") +
                   operation + u'\n');
    }
    const Surroundings surroundings;
    return RunSession(options);
} catch (const std::exception& error) {
    const RunTimeError known = RunTimeErrorOf(error);
    WriteError(
        QStringLiteral("vantorix-console: run-time error %1: %2\n").arg(known.number).arg(known.detail));
    return kStopped;
}
