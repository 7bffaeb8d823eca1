// The clocks of this machine.
#pragma once

#include "platform/clock.h"

#include <chrono>

struct SystemClock : Clock {
    QDateTime LocalTime() override { return QDateTime::currentDateTime(); }
    std::int64_t timeGetTime() override {
        const auto now = std::chrono::steady_clock::now().time_since_epoch();
        return std::chrono::duration_cast<std::chrono::milliseconds>(now).count();
    }
};
