// Waiting for a signal while a check runs.
#include "app/doctor/interruption.h"

#include "app/doctor/progress.h"
#include "app/findings/finding_report.h"
#include "platform/posix/termination_signals.h"

#include <mutex>
#include <system_error>
#include <thread>

void EndIfInterrupted() {
    if (TerminationSignal() != 0) {
        throw CheckInterrupted();
    }
}

// The thread waits until the process ends, so it can outlive the check.
struct ReportAtSignal::Shared {
    std::mutex mutex;
    FindingReport* report = nullptr;
    Progress* progress = nullptr;
    QString subject;
};

ReportAtSignal::ReportAtSignal(FindingReport& report, Progress& progress, const QString& subject)
    : shared_(std::make_shared<Shared>()) {
    shared_->report = &report;
    shared_->progress = &progress;
    shared_->subject = subject;
    try {
        std::thread([shared = shared_] {
            WaitForTerminationSignal();
            CompleteOnce(*shared);
        }).detach();
    } catch (const std::system_error&) {
        // Without a thread the check ends, and says so, at its next step.
    }
}

ReportAtSignal::~ReportAtSignal() {
    const std::lock_guard lock(shared_->mutex);
    shared_->report = nullptr;
}

void ReportAtSignal::Complete() {
    CompleteOnce(*shared_);
}

void ReportAtSignal::CompleteOnce(Shared& shared) {
    const std::lock_guard lock(shared.mutex);
    if (shared.report != nullptr) {
        shared.progress->Close();
        shared.report->FinishIncomplete(shared.subject, shared.progress->Done());
    }
}
