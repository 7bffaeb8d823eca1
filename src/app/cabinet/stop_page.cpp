// The words of the stop pages.
#include "app/cabinet/stop_page.h"

#include "app/start/standard_error.h"

#include <limits>

namespace {

constexpr int kStopPage = 15'000;
constexpr int kStuckPage = 5'000;

QStringList LinesOf(const RunTimeError& error, const QString& where, const QString& advice,
                    const QString& log) {
    return {QStringLiteral("Error %1: %2").arg(error.number).arg(RunTimeErrorText(error.number)), where,
            QStringLiteral("What to do: ") + advice, QStringLiteral("What it did before is in %1").arg(log)};
}

} // namespace

StopPage PageOfStop(const ProgramStop& stop, AfterStop after, const QString& log) {
    StopPage page{
        .title = QStringLiteral("The jukebox has stopped"),
        .lines = LinesOf(
            stop.error, QStringLiteral("%1: %2").arg(stop.routine, OneLine(stop.error.detail)),
            QStringLiteral("put right what is named above, then start the jukebox again. The themes and the "
                           "config.ini that were delivered with it are known to work."),
            log),
        .hint = QStringLiteral("Any key closes this page. It closes by itself after 15 seconds."),
        .milliseconds = kStopPage};
    if (after == AfterStop::kStartsAgain) {
        page.hint = QStringLiteral("The jukebox starts again after 15 seconds, or when a key is pressed.");
    } else if (after == AfterStop::kWaitsForKey) {
        page.title = QStringLiteral("The jukebox has stopped three times within five minutes");
        page.hint = QStringLiteral("It waits. Any key starts it again.");
        page.milliseconds = std::numeric_limits<int>::max();
    }
    return page;
}

StopPage PageOfStuck(const RunTimeError& error, const QString& log, bool isKept) {
    const QString advice =
        QStringLiteral("nothing if it happens once. If it happens again, put right what is named above.");
    return {.title = QStringLiteral("The jukebox is stuck and starts again"),
            .lines = LinesOf(error, OneLine(error.detail),
                             isKept ? advice + QStringLiteral(" Credits and queue are kept.") : advice, log),
            .hint = QStringLiteral("It starts again after 5 seconds, or when a key is pressed."),
            .milliseconds = kStuckPage};
}
