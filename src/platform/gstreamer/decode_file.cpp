// Decoding whole files to memory.
#include "platform/gstreamer/decode_file.h"

#include "platform/gstreamer/decoder.h"

#include <algorithm>
#include <cmath>

namespace {

// A decoder that delivers nothing for this long is given up.
constexpr std::chrono::seconds kStallLimit{20};

std::size_t SampleLimit(double seconds) {
    constexpr double kMost = 24.0 * 3600;
    const double bounded = std::isfinite(seconds) ? std::clamp(seconds, 0.0, kMost) : kMost;
    return static_cast<std::size_t>(std::llround(bounded * static_cast<double>(kFramesPerSecond))) * 2;
}

} // namespace

std::optional<DecodedSound> DecodeFile(const QString& path, double maxSeconds, QString* reason) {
    QString ignored;
    const std::unique_ptr<Decoder> decoder =
        Decoder::OpenWithin(OpeningLimits{}, path, reason != nullptr ? *reason : ignored);
    if (decoder == nullptr) {
        return std::nullopt;
    }
    const std::size_t limit = SampleLimit(maxSeconds);
    DecodedSound sound;
    PcmBlock block;
    // Damage after the first frames ends the sound there, as it does for a stream that is played.
    while (sound.samples.size() < limit && decoder->Read(block, kStallLimit) == Decoder::Outcome::kFrames) {
        sound.samples.insert(sound.samples.end(), block.samples.begin(), block.samples.end());
    }
    sound.samples.resize(std::min(sound.samples.size(), limit));
    return sound;
}

std::optional<std::int64_t> ProbeLength(const QString& path) {
    std::optional<MeasuredFile> file = WithinLimits<MeasuredFile>(
        OpeningLimits{}, [path](const std::atomic<bool>& abandoned) { return OpenToCount(path, abandoned); });
    const std::optional<std::int64_t> frames = file ? FramesOf(*file) : std::nullopt;
    return frames ? std::optional(*frames * kBytesPerFrame) : std::nullopt;
}
