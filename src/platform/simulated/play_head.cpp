// Working out where a running position stands now.
#include "platform/simulated/play_head.h"

#include "platform/simulated/simulated_clock.h"

#include <algorithm>

namespace {

constexpr std::int64_t kMillion = 1'000'000;

} // namespace

PlayHead::PlayHead(const SimulatedClock& clock, std::int64_t unitsPerSecond, std::int64_t length, AtEnd atEnd)
    : clock_(&clock), unitsPerSecond_(unitsPerSecond), length_(std::max<std::int64_t>(length, 1)),
      atEnd_(atEnd), since_(clock.Microseconds()) {}

std::int64_t PlayHead::Position() const {
    PlayHead now = *this;
    now.Settle();
    return now.base_;
}

void PlayHead::Run() {
    Settle();
    running_ = true;
}

void PlayHead::Halt() {
    Settle();
    running_ = false;
}

void PlayHead::MoveTo(std::int64_t position) {
    Settle();
    base_ = std::clamp<std::int64_t>(position, 0, atEnd_ == AtEnd::kStands ? length_ : length_ - 1);
    millionths_ = 0;
}

std::int64_t PlayHead::Bounded(std::int64_t position) const {
    return atEnd_ == AtEnd::kWraps ? position % length_ : std::min(position, length_);
}

// Takes the time since the last settling into the base.
void PlayHead::Settle() {
    const std::int64_t now = clock_->Microseconds();
    const std::int64_t elapsed = running_ ? now - since_ : 0;
    since_ = now;
    const std::int64_t parts = (elapsed % kMillion) * unitsPerSecond_ + millionths_;
    base_ = Bounded(base_ + (elapsed / kMillion) * unitsPerSecond_ + parts / kMillion);
    millionths_ = parts % kMillion;
}
