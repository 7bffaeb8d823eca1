// What an output mixes.
#pragma once

#include <cstdint>
#include <span>

// Something that sounds. Its owner attaches it to an output and detaches it before it goes.
struct SoundSource {
    virtual ~SoundSource() = default;

    // Adds the next frames to `sums`, two values a frame. `firstFrame` is the number of the first of them
    // since the output was started. Called on the output's thread, every few milliseconds; must not wait for
    // anything.
    virtual void Mix(std::span<std::int32_t> sums, std::int64_t firstFrame) = 0;
};
