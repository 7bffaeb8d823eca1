// Adding in 32 bits, clipping to 16.
#include "platform/gstreamer/mixer.h"

#include <algorithm>
#include <limits>

void Mixer::Attach(SoundSource& source) {
    const std::lock_guard lock(mutex_);
    sources_.push_back(&source);
}

void Mixer::Detach(SoundSource& source) {
    const std::lock_guard lock(mutex_);
    std::erase(sources_, &source);
}

void Mixer::SetDrawer(const void* drawer) {
    const std::lock_guard lock(mutex_);
    drawer_ = drawer;
}

std::int64_t Mixer::Draw(const void* drawer, std::span<std::int16_t> samples) {
    const std::lock_guard lock(mutex_);
    if (drawer != drawer_) {
        std::fill(samples.begin(), samples.end(), std::int16_t{0});
        return -1;
    }
    const std::int64_t first = drawn_;
    sums_.assign(samples.size(), 0);
    for (SoundSource* source : sources_) {
        source->Mix(sums_, first);
    }
    using Limits = std::numeric_limits<std::int16_t>;
    std::transform(sums_.begin(), sums_.end(), samples.begin(), [](std::int32_t sum) {
        return static_cast<std::int16_t>(std::clamp<std::int32_t>(sum, Limits::min(), Limits::max()));
    });
    drawn_ = first + static_cast<std::int64_t>(samples.size() / 2);
    return first;
}
