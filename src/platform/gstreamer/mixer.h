// Adds up sound sources, period by period.
#pragma once

#include <atomic>
#include <cstdint>
#include <mutex>
#include <span>
#include <vector>

// A source of sound. Its owner attaches it to an output and detaches it before it is destroyed.
struct SoundSource {
    virtual ~SoundSource() = default;

    // Adds the next frames to `sums`, two values a frame. `firstFrame` is the number of the first of them
    // since the output was started. Called on the output's thread every few milliseconds; must not block.
    virtual void Mix(std::span<std::int32_t> sums, std::int64_t firstFrame) = 0;
};

// Only one pipeline at a time draws frames. Another that runs at the same time, because it is starting or
// does not end, gets silence and does not advance the position.
class Mixer {
public:
    // A source is mixed from its attachment until Detach returns.
    void Attach(SoundSource& source);
    void Detach(SoundSource& source);
    // Sets the pipeline that draws from now on, by its address; null for none.
    void SetDrawer(const void* drawer);
    // Fills `samples`, two values a frame, with the next frames and returns the number of the first of them,
    // counted from 0. Any other pipeline gets silence and -1. Called on the pipelines' threads.
    std::int64_t Draw(const void* drawer, std::span<std::int16_t> samples);
    // The number of frames drawn so far.
    std::int64_t Drawn() const { return drawn_; }

private:
    std::mutex mutex_;
    const void* drawer_ = nullptr;
    std::vector<SoundSource*> sources_;
    std::vector<std::int32_t> sums_;
    std::atomic<std::int64_t> drawn_{0};
};
