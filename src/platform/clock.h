// Port: the time.
#pragma once

#include <QDateTime>

#include <cstdint>

// Event thread only: the console moves its clock there.
struct Clock {
    virtual ~Clock() = default;

    // The local time of the wall clock.
    virtual QDateTime LocalTime() = 0;
    // Milliseconds of a clock that never jumps.
    virtual std::int64_t timeGetTime() = 0;
};
