// Finds how long a file is by going through it without decoding.
#pragma once

#include <QString>

#include <atomic>
#include <chrono>
#include <cstdint>

struct ScannedLength {
    // Frames; with `complete` what the file has, otherwise what the part that was seen lets expect. 0 when
    // nothing is known.
    std::int64_t frames = 0;
    bool complete = false;
};

// Goes through a file, a minute of music in some 15 ms, until it is done, `stop` is set or the deadline has
// come. From any thread.
ScannedLength ScanLength(const QString& path, const std::atomic<bool>& stop,
                         std::chrono::steady_clock::time_point deadline);
