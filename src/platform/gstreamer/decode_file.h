// Decodes whole files, and finds their exact length, in one call.
#pragma once

#include <QString>

#include <cstdint>
#include <optional>
#include <vector>

// A file's sound in memory.
struct DecodedSound {
    // 16-bit stereo at 44100 Hz, left and right in turn.
    std::vector<std::int16_t> samples;

    std::int64_t Frames() const { return static_cast<std::int64_t>(samples.size() / 2); }
    // The length in bytes, as the audio library counts them.
    std::int64_t Bytes() const { return Frames() * 4; }
};

// Decodes a file up to a number of seconds; more of it is cut off. Nothing, and a sentence in `reason`, when
// the file is missing, cannot be decoded or holds no sound. The same file gives the same samples each time.
// Opening takes five seconds of work and fifteen in all at most. Waits for nothing but the disk and the
// decoder, and needs no event loop. From any thread.
std::optional<DecodedSound> DecodeFile(const QString& path, double maxSeconds, QString* reason = nullptr);

// The length of a file in bytes of its decoded form, 4 a frame: what the file says where that is true,
// otherwise what decoding all of it gives. Either way within 10 ms of DecodeFile without a limit. Nothing for
// a file that DecodeFile refuses. Takes a few milliseconds when the file tells its length, else some 2 ms for
// a second of music. Opening is bounded as in DecodeFile. From any thread.
std::optional<std::int64_t> ProbeLength(const QString& path);
