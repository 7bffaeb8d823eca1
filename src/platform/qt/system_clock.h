// The time of this machine.
#pragma once

#include "platform/clock.h"

struct SystemClock : Clock {
    QDateTime LocalTime() override;
    std::int64_t timeGetTime() override;
};
