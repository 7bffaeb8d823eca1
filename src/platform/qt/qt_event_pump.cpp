// Running the toolkit's event loop and delivering its events.
#include "platform/qt/qt_event_pump.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QEvent>

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <ctime>

namespace {

constexpr std::size_t kMostPending = 1000;
constexpr std::int64_t kTick = 1'000'000;           // nanoseconds between two runs of the events in a wait
constexpr double kLongestWait = 24.0 * 3600 * 1000; // milliseconds
constexpr qint64 kLongestRest = 5'000;              // milliseconds

std::int64_t Now() {
    timespec now = {};
    clock_gettime(CLOCK_MONOTONIC, &now);
    return std::int64_t{now.tv_sec} * 1'000'000'000 + now.tv_nsec;
}

void SleepUntil(std::int64_t time) {
    const timespec until = {time / 1'000'000'000, time % 1'000'000'000};
    while (clock_nanosleep(CLOCK_MONOTONIC, TIMER_ABSTIME, &until, nullptr) == EINTR) {
    }
}

bool IsInput(InputKind kind) {
    return kind == InputKind::kKeyDown || kind == InputKind::kMouseDown;
}

bool IsTick(InputKind kind) {
    return kind == InputKind::kTimer1 || kind == InputKind::kTmrSpectrum;
}

// Sets a flag while a handler runs, however the handler ends.
class Flag {
public:
    Flag(bool& flag, bool on) : flag_(flag), before_(flag) { flag_ = flag_ || on; }
    ~Flag() { flag_ = before_; }
    Flag(const Flag&) = delete;
    Flag& operator=(const Flag&) = delete;

private:
    bool& flag_;
    bool before_;
};

} // namespace

QtEventPump::QtEventPump() : wish_([this] { Post({.kind = InputKind::kClose}); }) {
    timer1_.setTimerType(Qt::PreciseTimer);
    QObject::connect(&timer1_, &QTimer::timeout, [this] { Post({.kind = InputKind::kTimer1}); });
    tmrSpectrum_.setTimerType(Qt::PreciseTimer);
    QObject::connect(&tmrSpectrum_, &QTimer::timeout, [this] { Post({.kind = InputKind::kTmrSpectrum}); });
}

void QtEventPump::SetIntervals(int timer1, int tmrSpectrum) {
    timer1_.setInterval(timer1);
    tmrSpectrum_.setInterval(tmrSpectrum);
}

void QtEventPump::Post(const InputEvent& event) {
    if (IsDroppedTick(event.kind) || Merged(event) ||
        (pending_.size() >= kMostPending && event.kind != InputKind::kClose)) {
        return;
    }
    pending_.push_back({nextNumber_++, event});
}

// Keeps at most one pending tick of each timer and one pending close request. A move replaces a move directly
// before it.
bool QtEventPump::Merged(const InputEvent& event) {
    if (event.kind == InputKind::kMouseMove) {
        if (pending_.empty() || pending_.back().event.kind != InputKind::kMouseMove ||
            pending_.back().event.button != event.button) {
            return false;
        }
        pending_.back().event = event;
        return true;
    }
    return (IsTick(event.kind) || event.kind == InputKind::kClose) &&
           std::any_of(pending_.begin(), pending_.end(),
                       [&](const Pending& waiting) { return waiting.event.kind == event.kind; });
}

bool QtEventPump::IsDroppedTick(InputKind kind) const {
    return kind == InputKind::kTmrSpectrum && spectrumRuns_;
}

bool QtEventPump::IsBeingHandled(InputKind kind) const {
    return kind == InputKind::kClose && closeRuns_;
}

std::deque<QtEventPump::Pending>::iterator QtEventPump::NextBefore(std::uint64_t limit) {
    const auto next = std::find_if(pending_.begin(), pending_.end(), [&](const Pending& waiting) {
        return waiting.number >= limit || !IsBeingHandled(waiting.event.kind);
    });
    return next != pending_.end() && next->number < limit ? next : pending_.end();
}

void QtEventPump::Deliver(const InputEvent& event) {
    const Flag spectrum(spectrumRuns_, event.kind == InputKind::kTmrSpectrum);
    const Flag closing(closeRuns_, event.kind == InputKind::kClose);
    sink_(event);
    if (event.kind == InputKind::kClose) {
        TerminationWish::Answered();
    }
}

void QtEventPump::FollowSpectrum() {
    const bool wanted = spectrumWanted_ && spectrumWanted_();
    if (wanted && !tmrSpectrum_.isActive()) {
        tmrSpectrum_.start();
    } else if (!wanted) {
        tmrSpectrum_.stop();
    }
}

void QtEventPump::HandOn() {
    // A handler that waits may have switched the light show on.
    FollowSpectrum();
    const std::uint64_t limit = nextNumber_;
    for (auto next = NextBefore(limit); next != pending_.end(); next = NextBefore(limit)) {
        const InputEvent event = next->event;
        pending_.erase(next);
        Deliver(event);
        FollowSpectrum();
    }
}

void QtEventPump::DoEvents() {
    QCoreApplication::processEvents();
    HandOn();
}

void QtEventPump::Wait(double milliseconds) {
    const double bounded = std::isnan(milliseconds) ? 0 : std::clamp(milliseconds, 0.0, kLongestWait);
    const std::int64_t end = Now() + static_cast<std::int64_t>(bounded * 1e6);
    do {
        SleepUntil(std::min(Now() + kTick, end));
        DoEvents();
    } while (Now() < end);
}

// Sleeps until something happens, then delivers what is pending.
void QtEventPump::RunOnce() {
    const bool mayWait = NextBefore(nextNumber_) == pending_.end();
    QCoreApplication::processEvents(mayWait ? QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents
                                            : QEventLoop::AllEvents);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    HandOn();
}

void QtEventPump::Run() {
    timer1_.start();
    for (;;) {
        RunOnce();
    }
}

void QtEventPump::RunWhile(const std::function<bool()>& wanted) {
    while (wanted()) {
        RunOnce();
    }
}

std::optional<InputEvent> QtEventPump::WaitForInput(int milliseconds) {
    const QDeadlineTimer deadline(milliseconds);
    QTimer wake;
    wake.setTimerType(Qt::PreciseTimer);
    for (;;) {
        const auto next = std::find_if(pending_.begin(), pending_.end(), [](const Pending& waiting) {
            return waiting.event.kind == InputKind::kClose || IsInput(waiting.event.kind);
        });
        if (next != pending_.end() && next->event.kind == InputKind::kClose) {
            return std::nullopt;
        }
        if (next != pending_.end()) {
            const InputEvent event = next->event;
            pending_.erase(pending_.begin(), std::next(next));
            return event;
        }
        pending_.clear();
        if (waiting_) {
            waiting_();
        }
        if (deadline.hasExpired()) {
            return std::nullopt;
        }
        // Restarted each time, because a timer may fire a little early and nothing else might wake this
        // thread.
        wake.start(static_cast<int>(std::min(deadline.remainingTime(), kLongestRest)) + 1);
        QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
    }
}
