// The speed of the wire.
#include "app/leds/pacer.h"

#include <algorithm>

namespace {

constexpr double kCatchUpSeconds = 0.005;

} // namespace

std::size_t Pacer::Take(std::size_t most, Time now) {
    if (bytesPerSecond_ <= 0) {
        return most;
    }
    const double elapsed = std::max(0.0, std::chrono::duration<double>(now - last_).count());
    last_ = now;
    // A slow line still has to be able to save up one byte.
    const double limit = std::max(1.0, bytesPerSecond_ * kCatchUpSeconds);
    credit_ = std::min(limit, credit_ + elapsed * bytesPerSecond_);
    const std::size_t bytes = std::min(most, static_cast<std::size_t>(credit_));
    credit_ -= static_cast<double>(bytes);
    return bytes;
}

void Pacer::Return(std::size_t bytes) {
    credit_ += static_cast<double>(bytes);
}
