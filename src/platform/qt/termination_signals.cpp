// Bringing signals to the event loop through a pipe.
#include "platform/qt/termination_signals.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <unistd.h>
#include <utility>

namespace {

// A signal handler has nothing but static storage to work on.
volatile std::sig_atomic_t wakeDescriptor = -1;
volatile std::sig_atomic_t signalsUnanswered = 0;

void OnSignal(int number) {
    const int savedError = errno;
    if (signalsUnanswered != 0) {
        _exit(128 + number);
    }
    signalsUnanswered = 1;
    const char wake = 1;
    if (write(wakeDescriptor, &wake, 1) != 1) {
        _exit(128 + number);
    }
    errno = savedError;
}

} // namespace

TerminationSignals::TerminationSignals(std::function<void()> asked) : asked_(std::move(asked)) {
    std::array<int, 2> ends = {-1, -1};
    if (pipe2(ends.data(), O_NONBLOCK | O_CLOEXEC) != 0) {
        return; // without a pipe the signals keep their usual effect: they end the process
    }
    readEnd_ = ends[0];
    writeEnd_ = ends[1];
    notifier_ = std::make_unique<QSocketNotifier>(readEnd_, QSocketNotifier::Read);
    QObject::connect(notifier_.get(), &QSocketNotifier::activated, [this] {
        std::array<char, 16> bytes = {};
        while (read(readEnd_, bytes.data(), bytes.size()) > 0) {
        }
        asked_();
    });
    signalsUnanswered = 0;
    wakeDescriptor = writeEnd_;
    Catch();
}

void TerminationSignals::Catch() {
    struct sigaction action = {};
    action.sa_handler = OnSignal;
    action.sa_flags = SA_RESTART;
    sigemptyset(&action.sa_mask);
    for (std::size_t i = 0; i < kSignals.size(); ++i) {
        sigaction(kSignals[i], nullptr, &before_[i]);
        if (kSignals[i] != SIGHUP || before_[i].sa_handler != SIG_IGN) {
            sigaction(kSignals[i], &action, nullptr);
        }
    }
}

TerminationSignals::~TerminationSignals() {
    if (writeEnd_ < 0) {
        return;
    }
    for (std::size_t i = 0; i < kSignals.size(); ++i) {
        sigaction(kSignals[i], &before_[i], nullptr);
    }
    notifier_.reset();
    wakeDescriptor = -1;
    close(readEnd_);
    close(writeEnd_);
}

void TerminationSignals::Answered() {
    signalsUnanswered = 0;
}
