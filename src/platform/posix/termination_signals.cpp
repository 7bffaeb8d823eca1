// Passing signals from a handler through a thread to the event loop.
#include "platform/posix/termination_signals.h"

#include <array>
#include <atomic>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdint>
#include <fcntl.h>
#include <optional>
#include <poll.h>
#include <sys/eventfd.h>
#include <system_error>
#include <thread>
#include <unistd.h>
#include <utility>

namespace {

using std::chrono::milliseconds;
using std::chrono::steady_clock;

constexpr int kSignalled = 128;
constexpr std::array kSignals = {SIGTERM, SIGINT, SIGHUP};
// An orderly end takes at most three seconds, because it waits for a sound server or a disk that does not
// answer.
constexpr std::chrono::seconds kEndLimit{4};

// A signal handler can only use static storage.
volatile std::sig_atomic_t signalPipe = -1;
// Read by the event loop. Both descriptors stay open for the life of the process.
int wishDescriptor = -1;
std::atomic<bool> unanswered{false};
// 0 before any signal.
std::atomic<int> firstSignal{0};

void OnSignal(int number) {
    const int savedError = errno;
    const auto byte = static_cast<char>(number);
    if (write(signalPipe, &byte, 1) != 1) {
        _exit(kSignalled + number);
    }
    errno = savedError;
}

sigset_t TerminationSet() {
    sigset_t set;
    sigemptyset(&set);
    for (const int number : kSignals) {
        sigaddset(&set, number);
    }
    return set;
}

void PassOn(int number) {
    if (unanswered.exchange(true)) {
        _exit(kSignalled + number);
    }
    int none = 0;
    if (firstSignal.compare_exchange_strong(none, number)) {
        firstSignal.notify_all();
    }
    const std::uint64_t one = 1;
    if (write(wishDescriptor, &one, sizeof(one)) != sizeof(one)) {
        _exit(kSignalled + number);
    }
}

// The number of the next signal; 0 when the deadline comes first.
int NextSignal(int readEnd, std::optional<steady_clock::time_point> deadline) {
    char number = 0;
    while (read(readEnd, &number, 1) != 1) {
        const auto left =
            deadline ? std::chrono::ceil<milliseconds>(*deadline - steady_clock::now()).count() : -1;
        if (deadline && left <= 0) {
            return 0;
        }
        pollfd wanted = {readEnd, POLLIN, 0};
        poll(&wanted, 1, static_cast<int>(left));
    }
    return number;
}

[[noreturn]] void Watch(int readEnd) {
    const sigset_t set = TerminationSet();
    pthread_sigmask(SIG_UNBLOCK, &set, nullptr);
    const int first = NextSignal(readEnd, std::nullopt);
    PassOn(first);
    const auto deadline = steady_clock::now() + kEndLimit;
    while (const int next = NextSignal(readEnd, deadline)) {
        PassOn(next);
    }
    _exit(kSignalled + first);
}

bool BeginWatch(int readEnd) {
    try {
        std::thread([readEnd] { Watch(readEnd); }).detach();
        return true;
    } catch (const std::system_error&) {
        return false;
    }
}

void Catch() {
    struct sigaction action = {};
    action.sa_handler = OnSignal;
    action.sa_flags = SA_RESTART;
    sigemptyset(&action.sa_mask);
    for (const int number : kSignals) {
        struct sigaction before = {};
        sigaction(number, nullptr, &before);
        if (number != SIGHUP || before.sa_handler != SIG_IGN) {
            sigaction(number, &action, nullptr);
        }
    }
}

} // namespace

void WatchTerminationSignals() {
    std::array<int, 2> ends = {-1, -1};
    const int wish = eventfd(0, EFD_NONBLOCK | EFD_CLOEXEC);
    if (wish < 0 || pipe2(ends.data(), O_NONBLOCK | O_CLOEXEC) != 0) {
        return;
    }
    wishDescriptor = wish;
    signalPipe = ends[1];
    const sigset_t set = TerminationSet();
    pthread_sigmask(SIG_BLOCK, &set, nullptr);
    if (BeginWatch(ends[0])) {
        Catch();
    } else {
        pthread_sigmask(SIG_UNBLOCK, &set, nullptr);
    }
}

TerminationWish::TerminationWish(std::function<void()> asked) : asked_(std::move(asked)) {
    if (wishDescriptor < 0) {
        return;
    }
    notifier_ = std::make_unique<QSocketNotifier>(wishDescriptor, QSocketNotifier::Read);
    QObject::connect(notifier_.get(), &QSocketNotifier::activated, [this] {
        std::uint64_t count = 0;
        if (read(wishDescriptor, &count, sizeof(count)) == sizeof(count)) {
            asked_();
        }
    });
}

void TerminationWish::Answered() {
    unanswered = false;
}

bool TerminationWish::HasCome() {
    return firstSignal != 0;
}

int TerminationSignal() {
    return firstSignal;
}

int TerminationExitCode() {
    return kSignalled + firstSignal;
}

int WaitForTerminationSignal() {
    firstSignal.wait(0);
    return firstSignal;
}
