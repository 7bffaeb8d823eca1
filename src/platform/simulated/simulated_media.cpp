// The simulated audio library and media graphs.
#include "platform/simulated/simulated_media.h"

#include "core/run_time_error.h"
#include "platform/gstreamer/probe_media.h"
#include "platform/gstreamer/spectrum.h"
#include "platform/simulated/calls.h"
#include "platform/simulated/simulated_time.h"
#include "platform/video_screen.h"

#include <QSize>

#include <algorithm>
#include <cmath>

namespace {

constexpr std::uint32_t kVersion = 0x02040000;
constexpr std::int64_t kFramesPerSecond = 44100;
constexpr std::int64_t kBytesPerFrame = 4;
constexpr auto kWindow = static_cast<std::int64_t>(kSpectrumFrames);
// The first decode covers this many seconds, each later one twice the seconds needed.
constexpr double kFirstDecode = 30;
constexpr double kLongestDecode = 1800;

} // namespace

SimulatedAudio::Stream* SimulatedAudio::Find(std::uint32_t handle) {
    const auto found = streams_.find(handle);
    return found == streams_.end() ? nullptr : &found->second;
}

std::uint32_t SimulatedAudio::BASS_GetVersion() {
    return failures_.Has("BASS_GetVersion") ? 0 : kVersion;
}

bool SimulatedAudio::BASS_Init(int /*device*/, int /*frequency*/, int /*flags*/) {
    record_.Add({QStringLiteral("BASS_Init")});
    return !failures_.Has("BASS_Init");
}

void SimulatedAudio::BASS_Free() {
    record_.Add({QStringLiteral("BASS_Free")});
    streams_.clear();
}

std::uint32_t SimulatedAudio::BASS_StreamCreateFile(const QString& path, std::uint32_t /*flags*/) {
    record_.Add({QStringLiteral("BASS_StreamCreateFile"), path});
    const std::optional<std::int64_t> bytes =
        failures_.Has("BASS_StreamCreateFile") ? std::nullopt : ProbeLength(path);
    if (bytes.value_or(0) < kBytesPerFrame) {
        return 0;
    }
    const PlayHead head(clock_, kFramesPerSecond, *bytes / kBytesPerFrame, AtEnd::kWraps);
    streams_.emplace(++lastHandle_, Stream{path, head, DecodedSound()});
    return lastHandle_;
}

bool SimulatedAudio::BASS_StreamFree(std::uint32_t handle) {
    record_.Add({QStringLiteral("BASS_StreamFree")});
    return !failures_.Has("BASS_StreamFree") && streams_.erase(handle) == 1;
}

// Music modules are another kind of stream, which does not exist here.
bool SimulatedAudio::BASS_MusicFree(std::uint32_t /*handle*/) {
    record_.Add({QStringLiteral("BASS_MusicFree")});
    return false;
}

bool SimulatedAudio::BASS_ChannelPlay(std::uint32_t handle, bool restart) {
    record_.Add({QStringLiteral("BASS_ChannelPlay")});
    Stream* stream = Find(handle);
    if (stream == nullptr || failures_.Has("BASS_ChannelPlay")) {
        return false;
    }
    if (restart) {
        stream->head.MoveTo(0);
    }
    stream->head.Run();
    return true;
}

bool SimulatedAudio::BASS_ChannelPause(std::uint32_t handle) {
    record_.Add({QStringLiteral("BASS_ChannelPause")});
    Stream* stream = Find(handle);
    if (stream == nullptr || !stream->head.Running() || failures_.Has("BASS_ChannelPause")) {
        return false;
    }
    stream->head.Halt();
    return true;
}

bool SimulatedAudio::BASS_ChannelStop(std::uint32_t handle) {
    record_.Add({QStringLiteral("BASS_ChannelStop")});
    Stream* stream = Find(handle);
    if (stream == nullptr || failures_.Has("BASS_ChannelStop")) {
        return false;
    }
    stream->head.Halt();
    stream->head.MoveTo(0);
    return true;
}

std::int64_t SimulatedAudio::BASS_ChannelGetLength(std::uint32_t handle) {
    const Stream* stream = Find(handle);
    return stream == nullptr || failures_.Has("BASS_ChannelGetLength")
               ? 0
               : stream->head.Length() * kBytesPerFrame;
}

std::int64_t SimulatedAudio::BASS_ChannelGetPosition(std::uint32_t handle) {
    const Stream* stream = Find(handle);
    return stream == nullptr || failures_.Has("BASS_ChannelGetPosition")
               ? 0
               : stream->head.Position() * kBytesPerFrame;
}

bool SimulatedAudio::BASS_ChannelSetPosition(std::uint32_t handle, std::int64_t bytes) {
    record_.Add({QStringLiteral("BASS_ChannelSetPosition"), CallNumber(bytes)});
    Stream* stream = Find(handle);
    if (stream == nullptr || bytes < 0 || bytes >= stream->head.Length() * kBytesPerFrame ||
        failures_.Has("BASS_ChannelSetPosition")) {
        return false;
    }
    stream->head.MoveTo(bytes / kBytesPerFrame);
    return true;
}

double SimulatedAudio::BASS_ChannelBytes2Seconds(std::uint32_t /*handle*/, std::int64_t bytes) {
    return static_cast<double>(bytes) / kBytesPerSecond;
}

std::int64_t SimulatedAudio::BASS_ChannelSeconds2Bytes(std::uint32_t /*handle*/, double seconds) {
    constexpr double kMostSeconds = 1e9;
    const double bounded = std::isnan(seconds) ? 0 : std::clamp(seconds, -kMostSeconds, kMostSeconds);
    return std::llround(bounded * static_cast<double>(kFramesPerSecond)) * kBytesPerFrame;
}

bool SimulatedAudio::BASS_ChannelGetData(std::uint32_t handle, std::array<float, 512>& fft) {
    Stream* stream = Find(handle);
    if (stream == nullptr || !stream->head.Running() || failures_.Has("BASS_ChannelGetData")) {
        return false;
    }
    const std::int64_t position = stream->head.Position();
    if (!DecodeUpTo(*stream, std::min(position + kWindow, stream->head.Length()))) {
        return false;
    }
    // A window that reaches past the end continues at the beginning.
    std::array<std::int16_t, kSpectrumFrames * 2> window{};
    const std::int64_t frames = std::min(stream->sound.Frames(), stream->head.Length());
    for (std::size_t i = 0; i < kSpectrumFrames; ++i) {
        const auto frame =
            static_cast<std::size_t>((position + static_cast<std::int64_t>(i)) % stream->head.Length());
        if (static_cast<std::int64_t>(frame) < frames) {
            window[2 * i] = stream->sound.samples[2 * frame];
            window[2 * i + 1] = stream->sound.samples[2 * frame + 1];
        }
    }
    fft = SpectrumOf(window);
    return true;
}

// Decodes the first `frame` frames to memory. Returns false when that fails.
bool SimulatedAudio::DecodeUpTo(Stream& stream, std::int64_t frame) {
    if (stream.sound.Frames() >= frame) {
        return true;
    }
    const double needed = static_cast<double>(frame) / static_cast<double>(kFramesPerSecond);
    if (needed > kLongestDecode) {
        return false;
    }
    const double seconds = std::min(std::max(kFirstDecode, needed * 2), kLongestDecode);
    std::optional<DecodedSound> sound = DecodeFile(stream.path, seconds);
    if (!sound || sound->Frames() < frame) {
        return false;
    }
    stream.sound = std::move(*sound);
    return true;
}

namespace {

constexpr std::int64_t kMicrosecondsPerSecond = 1'000'000;

std::int64_t Microseconds(double seconds) {
    constexpr double kMostSeconds = 1e9;
    return std::llround(std::clamp(seconds, 0.0, kMostSeconds) * kMicrosecondsPerSecond);
}

class SimulatedGraph : public MediaGraph {
public:
    SimulatedGraph(QString name, const SimulatedClock& clock, CallRecord& record, const Failures& failures)
        : name_(std::move(name)), clock_(clock), record_(record), failures_(failures),
          head_(clock, kMicrosecondsPerSecond, 0, AtEnd::kStands) {}

    void RenderFile(const QString& path) override {
        record_.Add({name_, QStringLiteral("RenderFile"), path});
        const std::optional<MediaFacts> facts = failures_.Has("RenderFile") ? std::nullopt : ProbeMedia(path);
        if (!facts) {
            throw RunTimeError(kInvalidProcedureCall,
                               path + QStringLiteral(": missing, or no sound or video"));
        }
        duration_ = facts->seconds;
        picture_ = QSize(facts->pictureWidth, facts->pictureHeight);
        head_ = PlayHead(clock_, kMicrosecondsPerSecond, Microseconds(facts->seconds), AtEnd::kStands);
    }
    void Run() override {
        record_.Add({name_, QStringLiteral("Run")});
        RaiseIfFailing("Run");
        head_.Run();
    }
    void Pause() override {
        record_.Add({name_, QStringLiteral("Pause")});
        RaiseIfFailing("Pause");
        head_.Halt();
    }
    void Stop() override {
        record_.Add({name_, QStringLiteral("Stop")});
        RaiseIfFailing("Stop");
        head_.Halt();
    }
    double Duration() override { return duration_; }
    double CurrentPosition() override {
        return std::min(static_cast<double>(head_.Position()) / kMicrosecondsPerSecond, duration_);
    }
    void SetCurrentPosition(double seconds) override {
        record_.Add({name_, QStringLiteral("CurrentPosition"), seconds});
        RaiseIfFailing("CurrentPosition");
        head_.MoveTo(Microseconds(seconds));
    }
    void Place(const QString& owner, int left, int top, int width, int height) override {
        record_.Add({name_, QStringLiteral("Place"), owner, left, top, width, height});
        RaiseIfFailing("Place");
        place_ = QSize(width, height);
    }
    // The picture is as large as the rectangle and its aspect ratio allow.
    int Height() override { return FittedSize(picture_, place_).height(); }
    // Nothing is shown here.
    void SetVisible(bool /*visible*/) override {}

private:
    void RaiseIfFailing(const char* operation) const {
        if (failures_.Has(operation)) {
            throw RunTimeError(kInvalidProcedureCall,
                               QStringLiteral("%1.%2 fails").arg(name_, QLatin1StringView(operation)));
        }
    }

    QString name_;
    const SimulatedClock& clock_;
    CallRecord& record_;
    const Failures& failures_;
    PlayHead head_;
    double duration_ = 0;
    QSize picture_;
    QSize place_;
};

} // namespace

std::shared_ptr<MediaGraph> SimulatedGraphs::CreateGraph(const QString& name) {
    return std::make_shared<SimulatedGraph>(name, clock_, record_, failures_);
}
