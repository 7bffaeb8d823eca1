// Decodes whole files and finds their exact length.
#pragma once

#include <QString>

#include <cstdint>
#include <optional>
#include <vector>

// A file's sound in memory.
struct DecodedSound {
    // 16-bit stereo at 44100 Hz, left and right interleaved.
    std::vector<std::int16_t> samples;

    std::int64_t Frames() const { return static_cast<std::int64_t>(samples.size() / 2); }
    // The length in bytes, in the audio library's units.
    std::int64_t Bytes() const { return Frames() * 4; }
};

// Decodes at most this many seconds of a file. Returns nothing, and a sentence in `reason`, when the file is
// missing, cannot be decoded or has no sound. The same file gives the same samples each time. Opening takes
// at most five seconds of work and fifteen in all. Waits only for the disk and the decoder, and needs no
// event loop. From any thread.
std::optional<DecodedSound> DecodeFile(const QString& path, double maxSeconds, QString* reason = nullptr);

// The length of a file in bytes of its decoded form, 4 a frame: the stated length where it is correct,
// otherwise the length that decoding gives. Either way within 10 ms of DecodeFile without a limit. Returns
// nothing for a file that DecodeFile refuses. Takes a few milliseconds when the file states its length,
// otherwise about 2 ms for each second of music. Opening is bounded as in DecodeFile. From any thread.
std::optional<std::int64_t> ProbeLength(const QString& path);
