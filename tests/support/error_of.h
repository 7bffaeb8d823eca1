// Finds the error that a body raises, for tests.
#pragma once

#include "core/run_time_error.h"

#include <utility>

// Returns the number of the run-time error that the body raises, or 0.
template <typename Body>
int ErrorOf(Body&& body) {
    try {
        std::forward<Body>(body)();
    } catch (const RunTimeError& error) {
        return error.number;
    }
    return 0;
}
