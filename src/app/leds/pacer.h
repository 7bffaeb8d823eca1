// The speed of the wire.
#pragma once

#include <chrono>
#include <cstddef>

// Limits reading to the speed of a line, with ten bits for each byte. Idle time is not made up for, except
// for five milliseconds between two calls.
class Pacer {
public:
    using Time = std::chrono::steady_clock::time_point;

    // 0 bits a second: no limit.
    explicit Pacer(int bitsPerSecond) : bytesPerSecond_(bitsPerSecond / 10.0) {}

    // Bytes that may be read now, `most` at most. What is returned counts as read.
    std::size_t Take(std::size_t most, Time now);
    // Gives back bytes that were not there.
    void Return(std::size_t bytes);

private:
    double bytesPerSecond_;
    double credit_ = 0;
    Time last_{};
};
