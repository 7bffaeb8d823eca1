// Limits for opening a file: how much work it may take, and how long it may wait.
#pragma once

#include "core/errand.h"

#include <QString>

#include <atomic>
#include <chrono>
#include <exception>
#include <functional>
#include <memory>
#include <optional>
#include <utility>

// CPU time used by all threads of this process so far.
std::chrono::nanoseconds ProcessWork();

// Work is CPU time, so a machine that is suspended or busy with other programs does not make a good file
// fail. Waits are counted, not timed, so a suspended machine loses one wait. A sleeping disk takes ten
// seconds to spin up; together with the work this makes fifteen seconds of waits.
struct OpeningLimits {
    std::chrono::nanoseconds work = std::chrono::seconds(5);
    int looks = 150;
    std::chrono::milliseconds lookEvery{100};
    std::function<std::chrono::nanoseconds()> workSoFar = ProcessWork;
};

// The reason for a file that was given up.
QString OpeningTookTooLong();

// Waits for an errand. Returns false when a limit is reached or `stop` is set before it has ended.
bool EndsWithinLimits(const Errand& errand, const OpeningLimits& limits,
                      const std::atomic<bool>* stop = nullptr);

// Runs `routine` on a separate thread and returns its result. Returns nothing when a limit is reached, `stop`
// is set, or the system has no more threads. `abandoned` is set once nobody waits for the routine; it should
// end soon then, and must own everything it uses. Rethrows an exception of the routine.
template <typename Result>
std::optional<Result> WithinLimits(const OpeningLimits& limits,
                                   std::function<Result(const std::atomic<bool>& abandoned)> routine,
                                   const std::atomic<bool>* stop = nullptr) {
    struct Attempt {
        std::atomic<bool> abandoned{false};
        std::optional<Result> result;
        std::exception_ptr error;
    };
    const auto attempt = std::make_shared<Attempt>();
    const std::optional<Errand> errand = Errand::Begin([attempt, work = std::move(routine)] {
        try {
            attempt->result = work(attempt->abandoned);
        } catch (...) {
            attempt->error = std::current_exception();
        }
    });
    if (!errand || !EndsWithinLimits(*errand, limits, stop)) {
        attempt->abandoned = true;
        return std::nullopt;
    }
    if (attempt->error) {
        std::rethrow_exception(attempt->error);
    }
    return std::move(attempt->result);
}
