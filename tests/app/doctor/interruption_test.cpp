// Tests of a check that a signal ends.
#include "app/doctor/interruption.h"

#include "app/doctor/progress.h"
#include "app/findings/finding_report.h"
#include "platform/posix/termination_signals.h"

#include <gtest/gtest.h>

#include <csignal>
#include <unistd.h>

namespace {

// A process can start watching signals only once, so each of these tests is a process of its own.
class InterruptionTest : public testing::Test {
protected:
    InterruptionTest() { GTEST_FLAG_SET(death_test_style, "threadsafe"); }
};

const Finding kFinding = {
    Level::kWarning, Subject::kMusic, QStringLiteral("/m"), QStringLiteral("It is empty."), {}};

} // namespace

TEST_F(InterruptionTest, ACheckThatHangsSaysWhatItHasFound) {
    const auto hang = [] {
        WatchTerminationSignals();
        FindingReport report(stderr, false);
        Progress progress;
        const ReportAtSignal atSignal(report, progress, QStringLiteral("/m"));
        report.Add(kFinding);
        progress.Add(QStringLiteral("settings"));
        progress.Show(QStringLiteral("2 folders"));
        kill(getpid(), SIGTERM);
        for (;;) {
            pause();
        }
    };
    EXPECT_EXIT(
        hang(), testing::ExitedWithCode(128 + SIGTERM),
        "warning: /m\n    It is empty.\n"
        "/m: 0 errors, 1 warning, 0 notes\n"
        "The check is incomplete, because it was interrupted. Looked at so far: settings, 2 folders.");
}

TEST_F(InterruptionTest, ACheckEndsAtItsNextStep) {
    const auto end = [] {
        EndIfInterrupted();
        WatchTerminationSignals();
        FindingReport report(stderr, false);
        Progress progress;
        ReportAtSignal atSignal(report, progress, QStringLiteral("/m"));
        kill(getpid(), SIGINT);
        WaitForTerminationSignal();
        try {
            EndIfInterrupted();
        } catch (const CheckInterrupted&) {
            atSignal.Complete();
            report.Add(kFinding);
            report.Finish(QStringLiteral("/m"));
            _exit(report.IsIncomplete() ? TerminationExitCode() : 1);
        }
    };
    EXPECT_EXIT(end(), testing::ExitedWithCode(128 + SIGINT),
                "^/m: 0 errors, 0 warnings, 0 notes\nThe check is incomplete[^\n]*so far: nothing.\n$");
}

TEST_F(InterruptionTest, ASignalAfterTheReportChangesNothing) {
    const auto late = [] {
        WatchTerminationSignals();
        FindingReport report(stderr, false);
        Progress progress;
        {
            ReportAtSignal atSignal(report, progress, QStringLiteral("/m"));
            report.Finish(QStringLiteral("/m"));
            kill(getpid(), SIGINT);
            WaitForTerminationSignal();
            atSignal.Complete();
        }
        _exit(report.IsIncomplete() ? 1 : 3);
    };
    EXPECT_EXIT(late(), testing::ExitedWithCode(3), "^/m: 0 errors, 0 warnings, 0 notes\n$");
}
