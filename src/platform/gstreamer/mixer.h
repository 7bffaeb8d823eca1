// Adds up what sounds, period by period.
#pragma once

#include "platform/gstreamer/sound_source.h"

#include <atomic>
#include <cstdint>
#include <mutex>
#include <span>
#include <vector>

// Only one pipeline at a time draws frames; another that runs beside it, because it is just starting or will
// not end, gets silence and moves nothing.
class Mixer {
public:
    // A source is mixed from the moment of its attachment, and no more when Detach has returned.
    void Attach(SoundSource& source);
    void Detach(SoundSource& source);
    // Names the one that draws from now on, by its address; null for none.
    void SetDrawer(const void* drawer);
    // Fills `samples`, two values a frame, with the next frames and gives the number of the first of them,
    // counted from 0; for any but the drawer with silence and -1. From the pipelines' threads.
    std::int64_t Draw(const void* drawer, std::span<std::int16_t> samples);
    // The frames drawn so far.
    std::int64_t Drawn() const { return drawn_; }

private:
    std::mutex mutex_;
    const void* drawer_ = nullptr;
    std::vector<SoundSource*> sources_;
    std::vector<std::int32_t> sums_;
    std::atomic<std::int64_t> drawn_{0};
};
