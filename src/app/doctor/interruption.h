// Ending a check at a signal, with what it has found so far.
#pragma once

#include <QString>

#include <exception>
#include <memory>

class FindingReport;
class Progress;

// Thrown between two steps of a check after a signal has requested its end.
class CheckInterrupted : public std::exception {
public:
    const char* what() const noexcept override { return "interrupted check"; }
};

void EndIfInterrupted();

// Completes the report of a check at the first signal, as FindingReport::FinishIncomplete does. Works on a
// thread of its own, because the check may wait for a disk that does not answer. The check itself has to end
// by EndIfInterrupted. Requires WatchTerminationSignals.
class ReportAtSignal {
public:
    // `subject` is what is checked. The report and the progress must live longer than this object.
    ReportAtSignal(FindingReport& report, Progress& progress, const QString& subject);
    // Later signals leave the report alone.
    ~ReportAtSignal();
    ReportAtSignal(const ReportAtSignal&) = delete;
    ReportAtSignal& operator=(const ReportAtSignal&) = delete;

    // Does what the thread does, unless it has done so already.
    void Complete();

private:
    struct Shared;
    static void CompleteOnce(Shared& shared);
    std::shared_ptr<Shared> shared_;
};
