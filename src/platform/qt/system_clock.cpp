// Reading the clocks.
#include "platform/qt/system_clock.h"

#include <chrono>

QDateTime SystemClock::LocalTime() {
    return QDateTime::currentDateTime();
}

std::int64_t SystemClock::timeGetTime() {
    const auto now = std::chrono::steady_clock::now().time_since_epoch();
    return std::chrono::duration_cast<std::chrono::milliseconds>(now).count();
}
