// The internal sample format: 16-bit stereo frames at 44100 Hz.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

constexpr std::int64_t kFramesPerSecond = 44100;
constexpr std::int64_t kBytesPerFrame = 4;
// The format as GStreamer caps.
constexpr const char* kPcmCaps =
    "audio/x-raw, format=(string)S16LE, rate=(int)44100, channels=(int)2, layout=(string)interleaved";

// Two lengths of a file that differ by less than 10 ms count as equal.
constexpr bool IsSameLength(std::int64_t a, std::int64_t b) {
    return a - b < kFramesPerSecond / 100 && b - a < kFramesPerSecond / 100;
}

// Decoded frames, left and right interleaved, and the position of the first one in its file.
struct PcmBlock {
    std::vector<std::int16_t> samples;
    std::int64_t position = 0;

    std::int64_t Frames() const { return static_cast<std::int64_t>(samples.size() / 2); }
};
