// The speed of the wire.
#pragma once

#include <chrono>
#include <cstddef>

// Says how many bytes a line of a given speed has carried. Each byte takes ten bits. A line that was idle
// does not catch up, but for five milliseconds, in which nobody may have looked.
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
