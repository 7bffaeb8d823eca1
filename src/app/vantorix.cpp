// The program vantorix: the jukebox of the cabinet, and the tasks that its command line can name instead.
#include "app/cabinet/cabinet.h"
#include "app/doctor/doctor.h"
#include "app/home/app_folder.h"
#include "app/home/home_task.h"
#include "app/start/command_line.h"
#include "app/start/standard_error.h"
#include "app/workshop/theme_task.h"
#include "core/path_text.h"
#include "core/run_time_error.h"

#include <cstdio>
#include <exception>

namespace {

constexpr int kEndedByError = 1;
constexpr int kWrongCommandLine = 2;

int Run(const CommandLine& line, char** argv) {
    if (line.showHelp) {
        std::fputs(HelpText().toLatin1().constData(), stdout);
        return 0;
    }
    if (line.showVersion) {
        std::printf("vantorix %d.%d.%d\n", VANTORIX_VERSION_MAJOR, VANTORIX_VERSION_MINOR,
                    VANTORIX_VERSION_PATCH);
        return 0;
    }
    if (const std::optional<int> code = RunHomeTask(line, SourcesOfAppFolder(line.home))) {
        return *code;
    }
    if (line.checkedFolder) {
        return RunDoctor(line, SourcesOfAppFolder(line.home));
    }
    if (const std::optional<int> code = RunThemeTask(line, SourcesOfAppFolder(line.home), argv)) {
        return *code;
    }
    return RunCabinet(line, argv);
}

} // namespace

int main(int argc, char** argv) try {
    QStringList arguments;
    for (int i = 1; i < argc; ++i) {
        arguments.append(TextOfPath(argv[i]));
    }
    const CommandLine line = ParseCommandLine(arguments);
    if (!line.error.isEmpty()) {
        TellStandardError(line.error + QStringLiteral("; see vantorix --help"));
        return kWrongCommandLine;
    }
    return Run(line, argv);
} catch (const std::exception& error) {
    TellStandardError(QStringLiteral("run-time error ") + WordsOf(RunTimeErrorOf(error)));
    return kEndedByError;
}
