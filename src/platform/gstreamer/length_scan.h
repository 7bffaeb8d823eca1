// Finds the length of a file without decoding it.
#pragma once

#include <QString>

#include <atomic>
#include <chrono>
#include <cstdint>

struct ScannedLength {
    // In frames: exact with `complete`, otherwise an estimate from the part that was read. 0 when nothing is
    // known.
    std::int64_t frames = 0;
    bool complete = false;
};

// Reads a file until its end, until `stop` is set or until the deadline. Takes about 15 ms for a minute of
// music. From any thread.
ScannedLength ScanLength(const QString& path, const std::atomic<bool>& stop,
                         std::chrono::steady_clock::time_point deadline);
