// Moving the simulated time.
#include "platform/simulated/simulated_clock.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr double kMicrosecondsPerMillisecond = 1000;
constexpr std::int64_t kEndOfTime = std::int64_t{10'000} * 366 * 24 * 3600 * 1'000'000;

} // namespace

SimulatedClock::SimulatedClock(const QDateTime& start) : start_(start.date(), start.time(), Qt::UTC) {}

QDateTime SimulatedClock::LocalTime() {
    return start_.addMSecs(timeGetTime());
}

void SimulatedClock::Advance(double milliseconds) {
    if (!(milliseconds > 0)) {
        return;
    }
    const double step = std::min(milliseconds * kMicrosecondsPerMillisecond, static_cast<double>(kEndOfTime));
    microseconds_ = std::min(microseconds_ + std::int64_t{std::llround(step)}, kEndOfTime);
}
