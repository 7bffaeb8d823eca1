// One line of a benchmark's table, and the clock it is measured with.
#pragma once

#include <QString>

#include <algorithm>
#include <ctime>
#include <limits>
#include <vector>

struct BenchRow {
    QString subject;
    double milliseconds = 0;
};

// The processor time of this process in milliseconds: unlike the wall's clock it does not count other
// programs.
inline double ProcessorTime() {
    timespec time{};
    ::clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) / 1e6;
}

// The processor time of the fastest of `rounds` runs in milliseconds: what the work costs when nothing
// disturbs it.
template <typename Work>
double FastestRun(int rounds, Work&& work) {
    double fastest = std::numeric_limits<double>::max();
    for (int round = 0; round < rounds; ++round) {
        const double start = ProcessorTime();
        work();
        fastest = std::min(fastest, ProcessorTime() - start);
    }
    return fastest;
}
