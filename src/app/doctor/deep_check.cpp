// Opening files on two threads, and reporting in the order of the list.
#include "app/doctor/deep_check.h"

#include "app/doctor/library_check.h"
#include "app/doctor/progress.h"
#include "app/findings/finding_report.h"
#include "platform/gstreamer/openable.h"
#include "platform/posix/termination_signals.h"

#include <atomic>
#include <chrono>
#include <thread>

namespace {

constexpr int kWorkers = 2;

struct OpenedFile {
    QString fault;
    // Set after `fault`.
    std::atomic<bool> isDone{false};
};

// Each worker takes the next file until all are opened, or a signal has come.
struct Work {
    const std::vector<MediaFile>& files;
    std::vector<OpenedFile> opened;
    std::atomic<std::size_t> next{0};
    std::atomic<std::int64_t> done{0};
    // How many files, from the first one, have been reported.
    std::size_t reported = 0;
};

void Open(Work& work) {
    for (std::size_t at = work.next++; at < work.files.size() && TerminationSignal() == 0; at = work.next++) {
        work.opened[at].fault = FaultOfMedia(work.files[at].path, work.files[at].isVideo);
        work.opened[at].isDone = true;
        ++work.done;
    }
}

// GStreamer's reasons are sentences.
QString WithoutFullStop(QString text) {
    while (text.endsWith(u'.')) {
        text.chop(1);
    }
    return text;
}

void Report(const MediaFile& file, const QString& reason, FindingReport& report) {
    const QString fault = WithoutFullStop(reason);
    report.Add(
        {file.isVideo ? Level::kError : Level::kWarning, Subject::kMusic, file.path,
         file.isVideo
             ? QStringLiteral("The jukebox locks up when the turn of this video comes: %1.").arg(fault)
             : QStringLiteral("It does not play; patrons pay for it and hear nothing: %1.").arg(fault),
         QStringLiteral(
             "Copy it again, convert it, or delete it. If many files are named, see the missing decoders."),
         file.isVideo ? QStringLiteral("video that does not open")
                      : QStringLiteral("track that does not open")});
}

void ReportOpened(Work& work, FindingReport& report) {
    for (; work.reported < work.files.size() && work.opened[work.reported].isDone; ++work.reported) {
        const QString& fault = work.opened[work.reported].fault;
        if (!fault.isEmpty()) {
            Report(work.files[work.reported], fault, report);
        }
    }
}

void ReportUntilDone(Work& work, FindingReport& report, Progress& progress) {
    const auto begin = std::chrono::steady_clock::now();
    const auto all = static_cast<std::int64_t>(work.files.size());
    while (work.done < all && TerminationSignal() == 0) {
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
        const auto elapsed =
            std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::steady_clock::now() - begin);
        const std::int64_t done = work.done;
        const QString left = TimeLeft(elapsed, done, all);
        ReportOpened(work, report);
        progress.Show(QStringLiteral("%L1 of %L2 files opened").arg(done).arg(all),
                      left.isEmpty() ? QString() : QStringLiteral(", %1 left").arg(left));
    }
    progress.Clear();
}

} // namespace

void CheckOpening(const std::vector<MediaFile>& files, FindingReport& report, Progress& progress) {
    Work work{files, std::vector<OpenedFile>(files.size())};
    std::vector<std::thread> workers;
    workers.reserve(kWorkers);
    for (int i = 0; i < kWorkers; ++i) {
        workers.emplace_back([&work] { Open(work); });
    }
    ReportUntilDone(work, report, progress);
    for (std::thread& worker : workers) {
        worker.join();
    }
    ReportOpened(work, report);
}
