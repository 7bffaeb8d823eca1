// Following the form's credits and queue on the disk.
#include "app/cabinet/session_keeper.h"

#include "core/path_text.h"
#include "platform/files.h"
#include "settings/safe_write.h"

#include <algorithm>
#include <array>
#include <csignal>
#include <fcntl.h>
#include <unistd.h>
#include <utility>

namespace {

constexpr std::int64_t kLargestFile = 16 << 20;

constexpr std::array kFaults = {SIGSEGV, SIGABRT, SIGBUS, SIGFPE, SIGILL};

// A signal handler can only use static storage.
volatile std::sig_atomic_t crashFile = -1;
std::array<struct sigaction, kFaults.size()> actionsBefore = {};

// Writes a byte, and lets the signal do what it would have done.
void OnFault(int number) {
    const char byte = static_cast<char>(number);
    [[maybe_unused]] const ssize_t written = write(crashFile, &byte, 1);
    for (std::size_t i = 0; i < kFaults.size(); ++i) {
        if (kFaults[i] == number) {
            sigaction(number, &actionsBefore[i], nullptr);
        }
    }
    raise(number);
}

} // namespace

void NoteCrashesIn(const QString& path) {
    crashFile = ::open(BytesOfPath(path).constData(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
    if (crashFile < 0) {
        return;
    }
    struct sigaction action = {};
    action.sa_handler = OnFault;
    sigemptyset(&action.sa_mask);
    for (std::size_t i = 0; i < kFaults.size(); ++i) {
        sigaction(kFaults[i], &action, &actionsBefore[i]);
    }
}

SessionKeeper::SessionKeeper(Files& files, const QString& appFolder,
                             std::function<void(const QString&)> report)
    : files_(files), path_(PathIn(appFolder, QStringLiteral("session.json"))),
      crashPath_(PathIn(appFolder, QStringLiteral("session.crash"))), report_(std::move(report)) {}

std::optional<KeptSession> SessionKeeper::TakeOver() {
    const QByteArray crash = files_.ReadWhole(crashPath_, kLargestFile).value_or(QByteArray());
    NoteCrashesIn(crashPath_);
    const std::optional<QByteArray> bytes = files_.ReadWhole(path_, kLargestFile);
    const std::optional<KeptSession> kept = bytes ? KeptSessionOf(*bytes) : std::nullopt;
    if (bytes && !kept) {
        report_(QStringLiteral(" : %1 illisible, crédits et file d'attente perdus").arg(path_));
    }
    session_ = kept.value_or(KeptSession());
    if (!crash.isEmpty()) {
        report_(QStringLiteral(" : Arrêt brutal par le signal %1").arg(int{crash.front()}));
        if (session_.firstPlays && !session_.entries.empty()) {
            Blame(session_, session_.entries.front().path);
        }
    }
    for (const QString& path : TakeOutBlamed(session_)) {
        report_(QStringLiteral(" : %1 retiré de la file d'attente : il a arrêté le programme deux fois")
                    .arg(path));
    }
    Save();
    return session_.IsEmpty() ? std::nullopt : std::optional(session_);
}

void SessionKeeper::Follow(const Form_Main& form) {
    KeptSession now = SessionOf(form);
    for (const KeptEntry& entry : now.entries) {
        if (const int stops = session_.stops.value(entry.path)) {
            now.stops[entry.path] = stops;
        }
    }
    if (now != session_) {
        session_ = std::move(now);
        Save();
    }
}

void SessionKeeper::BlameFor(const QString& detail) {
    const auto named = std::find_if(session_.entries.begin(), session_.entries.end(),
                                    [&](const KeptEntry& entry) { return detail.contains(entry.path); });
    if (named != session_.entries.end()) {
        Blame(session_, named->path);
        Save();
    }
}

void SessionKeeper::Save() {
    const bool done = session_.IsEmpty() ? !files_.Identity(path_) || files_.Remove(path_)
                                         : WriteFileSafely(files_, path_, BytesOf(session_));
    if (!done && !failed_) {
        report_(QStringLiteral(" : %1 ne peut pas être écrit").arg(path_));
    }
    failed_ = !done;
}

void SessionKeeper::Forget() {
    session_ = KeptSession();
    Save();
    files_.Remove(crashPath_);
    files_.SyncFolder(FolderOfPath(path_));
}
