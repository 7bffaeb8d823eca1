// Waiting for a file to open.
#include "platform/gstreamer/opening.h"

#include <ctime>

std::chrono::nanoseconds ProcessWork() {
    timespec used{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &used);
    return std::chrono::seconds(used.tv_sec) + std::chrono::nanoseconds(used.tv_nsec);
}

QString OpeningTookTooLong() {
    return QStringLiteral("the file does not open in time");
}

bool EndsWithinLimits(const Errand& errand, const OpeningLimits& limits, const std::atomic<bool>* stop) {
    const std::chrono::nanoseconds before = limits.workSoFar();
    for (int look = 0; look < limits.looks; ++look) {
        if (errand.WaitFor(limits.lookEvery)) {
            return true;
        }
        if (limits.workSoFar() - before >= limits.work || (stop != nullptr && *stop)) {
            return false;
        }
    }
    return false;
}
