// Carrying out --check-theme.
#include "app/workshop/theme_task.h"

#include "app/findings/finding_report.h"
#include "app/workshop/frames.h"
#include "app/workshop/theme_check.h"
#include "app/workshop/watch_window.h"
#include "core/path_text.h"
#include "platform/posix/posix_files.h"
#include "platform/posix/termination_signals.h"
#include "platform/simulated/surroundings.h"
#include "settings/ini_files.h"
#include "state/paths.h"

#include <cstdio>

namespace {

// Returns the folder of the theme. A name is looked up as the jukebox does; anything with a separator is a
// folder.
QString FolderOf(Files& files, const QString& theme, const AppFolderSources& sources) {
    if (theme.contains(u'/')) {
        return WithoutSeparatorAtEnd(theme);
    }
    const QString home = PlaceOfAppFolder(files, sources);
    QString found = FolderOfTheme(files, home, PlaceOfDelivered(files, sources), theme);
    return files.IsFolder(found) || !files.IsFolder(theme) ? found : theme;
}

// Returns the music folder of the application folder; empty when there is no music.
QString OwnMusic(Files& files, const AppFolderSources& sources) {
    IniFiles inis;
    const QString home = PlaceOfAppFolder(files, sources);
    QString music = inis.Open(files, PathIn(home, QStringLiteral("config.ini"))).Value(u"Main", u"StartPath");
    const auto entries = files.ListFolder(music);
    return !music.isEmpty() && entries && !entries->empty() ? music : QString();
}

// Returns the words about pictures that a signal has prevented; empty when all are written.
QString WriteAndReport(FindingReport& report, const FramesOrder& order, bool asJson) {
    const FramesResult result = WriteFrames(order);
    for (const Finding& finding : result.findings) {
        report.Add(finding);
    }
    if (!asJson) {
        std::printf("%d pictures are in %s\n", result.pictures, BytesOfPath(order.target).constData());
    }
    return result.isInterrupted ? QStringLiteral("the theme, %1 pictures").arg(result.pictures) : QString();
}

int Report(Files& files, const CommandLine& line, const AppFolderSources& sources, const QString& folder) {
    const Surroundings surroundings;
    FindingReport report(stdout, line.asJson);
    for (const Finding& finding : CheckTheme(folder)) {
        report.Add(finding);
    }
    QString done = TerminationSignal() != 0 ? QStringLiteral("a part of the theme") : QString();
    if (line.framesFolder && files.IsFolder(folder) && done.isEmpty()) {
        done = WriteAndReport(report, {folder, *line.framesFolder, OwnMusic(files, sources), line.sizes},
                              line.asJson);
    }
    if (!done.isEmpty()) {
        report.FinishIncomplete(folder, done);
        return TerminationExitCode();
    }
    report.Finish(folder);
    return report.ExitCode();
}

} // namespace

std::optional<int> RunThemeTask(const CommandLine& line, const AppFolderSources& sources, char** argv) {
    if (!line.checkedTheme) {
        return std::nullopt;
    }
    WatchTerminationSignals();
    PosixFiles files;
    const QString folder = files.RealPath(FolderOf(files, *line.checkedTheme, sources));
    return line.isWatching ? WatchTheme(folder, OwnMusic(files, sources), argv)
                           : Report(files, line, sources, folder);
}
