// Counting held keys and timing their repeats.
#include "platform/evdev/held_keys.h"

#include <algorithm>

namespace {

// Milliseconds.
constexpr std::int64_t kBounce = 15;
constexpr std::int64_t kRepeatDelay = 500;
constexpr std::int64_t kRepeatInterval = 33;

} // namespace

bool HeldKeys::Take(const GamepadKey& change, std::int64_t now) {
    Held& held = held_[change.code];
    if (!change.isDown) {
        held.times = std::max(held.times - 1, 0);
        held.released = now;
        if (held.times == 0 && repeating_ == change.code) {
            repeating_ = 0;
        }
        return false;
    }
    ++held.times;
    repeating_ = change.code;
    nextRepeat_ = now + kRepeatDelay;
    return !held.released || now - *held.released >= kBounce;
}

std::optional<int> HeldKeys::TakeRepeat(std::int64_t now) {
    if (repeating_ == 0 || now < nextRepeat_) {
        return std::nullopt;
    }
    nextRepeat_ = now + kRepeatInterval;
    return repeating_;
}

std::optional<std::int64_t> HeldKeys::NextRepeat() const {
    return repeating_ == 0 ? std::nullopt : std::optional(nextRepeat_);
}
