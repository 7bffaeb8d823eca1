// The simulated time: it moves only when it is told to.
#pragma once

#include "platform/clock.h"

// Time since the start is kept in whole microseconds. The wall clock knows no daylight saving and no time
// zone: it shows its start plus the time that has passed.
class SimulatedClock : public Clock {
public:
    explicit SimulatedClock(const QDateTime& start);

    QDateTime LocalTime() override;
    std::int64_t timeGetTime() override { return microseconds_ / 1000; }

    // Microseconds since the start.
    std::int64_t Microseconds() const { return microseconds_; }
    // Moves the time forward, to the nearest microsecond; nothing for what is not above 0. It stands still
    // when 10,000 years have passed.
    void Advance(double milliseconds);

private:
    QDateTime start_;
    std::int64_t microseconds_ = 0;
};
