// Limits for opening a file: how much work it may take, and how long it may wait.
#pragma once

#include "platform/gstreamer/errand.h"

#include <QString>

#include <atomic>
#include <chrono>
#include <exception>
#include <functional>
#include <memory>
#include <optional>
#include <utility>

// CPU time that all threads of this process have used so far.
std::chrono::nanoseconds ProcessWork();

// Work is CPU time, so a machine that stands still or is busy with other programs costs a good file nothing.
// Waiting is counted in looks, not read from a clock, so a suspended machine loses one look. A disk that
// sleeps takes ten seconds to wake up; together with the work that makes fifteen seconds of looks.
struct OpeningLimits {
    std::chrono::nanoseconds work = std::chrono::seconds(5);
    int looks = 150;
    std::chrono::milliseconds lookEvery{100};
    std::function<std::chrono::nanoseconds()> workSoFar = ProcessWork;
};

// The reason to give for a file that is given up.
QString OpeningTookTooLong();

// Waits for an errand. False when a limit is reached or `stop` is set before it has ended.
bool EndsWithinLimits(const Errand& errand, const OpeningLimits& limits,
                      const std::atomic<bool>* stop = nullptr);

// Runs `routine` on a thread of its own and gives back its result; nothing when a limit is reached, `stop` is
// set, or there is no thread to run it. The routine's argument is set once nobody waits for it any more; it
// should end soon then, and must own whatever it uses. An exception of the routine is rethrown.
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
