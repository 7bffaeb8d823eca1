// Making the graphs; theme sounds, decoded once and started without delay.
#include "platform/gstreamer/media_graph.h"

#include "core/run_time_error.h"
#include "platform/gstreamer/audio_output.h"
#include "platform/gstreamer/decode_file.h"
#include "platform/gstreamer/decode_mp3.h"
#include "platform/gstreamer/opening.h"
#include "platform/gstreamer/pcm.h"
#include "platform/gstreamer/video_graph.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace {

constexpr double kLongestSound = 60.0;

struct Loaded {
    std::optional<DecodedSound> sound;
    QString reason;
};

Loaded LoadSound(const QString& path) {
    Loaded file;
    file.sound = DecodeMp3(path, kLongestSound);
    if (!file.sound) {
        file.sound = DecodeFile(path, kLongestSound, &file.reason);
    }
    return file;
}

class SoundGraph final : public MediaGraph, public SoundSource {
public:
    explicit SoundGraph(std::shared_ptr<AudioOutput> output) : output_(std::move(output)) {
        output_->Attach(*this);
    }
    ~SoundGraph() override { output_->Detach(*this); }
    SoundGraph(const SoundGraph&) = delete;
    SoundGraph& operator=(const SoundGraph&) = delete;

    void RenderFile(const QString& path) override {
        std::optional<Loaded> file = WithinLimits<Loaded>(
            OpeningLimits{}, [path](const std::atomic<bool>&) { return LoadSound(path); });
        if (!file || !file->sound) {
            throw RunTimeError(kInvalidProcedureCall,
                               path + QStringLiteral(": ") + (file ? file->reason : OpeningTookTooLong()));
        }
        // Without an output the sound loads but stays silent.
        output_->Start();
        const std::lock_guard lock(mutex_);
        samples_.swap(file->sound->samples);
        next_ = 0;
        running_ = false;
    }

    void Run() override { SetRunning(true); }
    void Pause() override { SetRunning(false); }

    void Stop() override {
        const std::lock_guard lock(mutex_);
        running_ = false;
        next_ = 0;
    }

    double Duration() override {
        const std::lock_guard lock(mutex_);
        return Seconds(samples_.size());
    }

    double CurrentPosition() override {
        const std::lock_guard lock(mutex_);
        return Seconds(next_);
    }

    // A time outside the sound is moved to the nearer end.
    void SetCurrentPosition(double seconds) override {
        const std::lock_guard lock(mutex_);
        const double frames = seconds * static_cast<double>(kFramesPerSecond);
        const std::size_t last = samples_.size() / 2;
        const double bounded = std::min(frames, static_cast<double>(last));
        next_ = bounded > 0.0 ? static_cast<std::size_t>(std::llround(bounded)) * 2 : 0;
    }

    // A sound has no picture.
    void Place(const QString&, int, int, int, int) override {}
    int Height() override { return 0; }
    void SetVisible(bool) override {}

    void Mix(std::span<std::int32_t> sums, std::int64_t) override {
        const std::lock_guard lock(mutex_);
        const std::size_t count = running_ ? std::min(sums.size(), samples_.size() - next_) : 0;
        for (std::size_t i = 0; i < count; ++i) {
            sums[i] += samples_[next_ + i];
        }
        next_ += count;
    }

private:
    static double Seconds(std::size_t samples) {
        const std::size_t frames = samples / 2;
        return static_cast<double>(frames) / static_cast<double>(kFramesPerSecond);
    }

    void SetRunning(bool running) {
        const std::lock_guard lock(mutex_);
        running_ = running;
    }

    const std::shared_ptr<AudioOutput> output_;
    std::mutex mutex_;
    std::vector<std::int16_t> samples_;
    std::size_t next_ = 0;
    bool running_ = false;
};

} // namespace

GstMediaGraphs::GstMediaGraphs(VideoSurroundings video, AudioOutputOptions options)
    : video_(std::move(video)), output_(std::make_shared<AudioOutput>(std::move(options))) {}

GstMediaGraphs::~GstMediaGraphs() = default;

std::shared_ptr<MediaGraph> GstMediaGraphs::CreateGraph(const QString& name) {
    if (name == QStringLiteral("Video")) {
        return std::make_shared<VideoGraph>(video_);
    }
    return std::make_shared<SoundGraph>(output_);
}
