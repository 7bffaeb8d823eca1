// The operations of a running video.
#include "platform/gstreamer/video_graph.h"

#include "core/errand.h"
#include "core/run_time_error.h"
#include "platform/gstreamer/audio_output.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <utility>

namespace {

// The time for which a video that ends is waited for. A disk that does not answer can block it.
constexpr std::chrono::seconds kEndLimit{1};

struct OpenedVideo {
    std::unique_ptr<VideoReader> reader;
    QString reason;
};

double Seconds(std::int64_t frames) {
    return static_cast<double>(frames) / static_cast<double>(kFramesPerSecond);
}

} // namespace

VideoGraph::VideoGraph(VideoSurroundings surroundings) : surroundings_(std::move(surroundings)) {}

VideoGraph::~VideoGraph() {
    Leave();
}

// Ends the video that has been rendered, if there is one.
void VideoGraph::Leave() {
    if (!playback_) {
        return;
    }
    surroundings_.screen.Detach(*this);
    output_->Detach(*playback_);
    playback_->Abandon();
    const auto ending =
        Errand::Begin([playback = std::exchange(playback_, nullptr)]() mutable { playback.reset(); });
    if (ending) {
        ending->WaitFor(kEndLimit);
    }
}

void VideoGraph::RenderFile(const QString& path) {
    Leave();
    std::shared_ptr<AudioOutput> output = surroundings_.output();
    if (!output) {
        throw RunTimeError(kInvalidProcedureCall, path + QStringLiteral(": there is no sound output"));
    }
    std::optional<OpenedVideo> file =
        WithinLimits<OpenedVideo>(surroundings_.limits, [path](const std::atomic<bool>& abandoned) {
            OpenedVideo opened;
            opened.reader = VideoReader::Open(path, opened.reason, abandoned);
            return opened;
        });
    if (!file || !file->reader) {
        throw RunTimeError(kInvalidProcedureCall,
                           path + QStringLiteral(": ") + (file ? file->reason : OpeningTookTooLong()));
    }
    path_ = path;
    output_ = std::move(output);
    playback_ = std::make_shared<VideoPlayback>(std::move(file->reader));
    logged_ = {};
    output_->Attach(*playback_);
    surroundings_.screen.Attach(*this);
}

void VideoGraph::Run() {
    if (playback_) {
        playback_->Run();
        surroundings_.screen.Wake();
    }
}

void VideoGraph::Pause() {
    if (playback_) {
        playback_->Halt();
    }
}

void VideoGraph::Stop() {
    if (!playback_) {
        return;
    }
    playback_->Halt();
    const VideoCounts counts = playback_->Counts();
    if (counts.dropped > logged_.dropped) {
        surroundings_.log(QStringLiteral(" : Vidéo %1 : %2 images affichées, %3 perdues")
                              .arg(path_)
                              .arg(counts.shown - logged_.shown)
                              .arg(counts.dropped - logged_.dropped));
        logged_ = counts;
    }
}

double VideoGraph::Duration() {
    return playback_ ? Seconds(playback_->Length()) : 0;
}

double VideoGraph::CurrentPosition() {
    return playback_ ? Seconds(playback_->PositionAt(output_->HeardFrame())) : 0;
}

void VideoGraph::SetCurrentPosition(double seconds) {
    if (!playback_) {
        return;
    }
    const auto length = static_cast<double>(playback_->Length());
    const double frame = seconds * static_cast<double>(kFramesPerSecond);
    const double bounded = frame > 0 ? std::min(frame, length) : 0; // 0 for NaN
    if (!playback_->BeginSeek(std::llround(bounded))) {
        return;
    }
    if (!Errand::Begin([owned = playback_] { owned->Seek(); })) {
        playback_->Seek();
    }
    surroundings_.screen.Wake();
}

void VideoGraph::Place(const QString& owner, int left, int top, int width, int height) {
    // Larger surfaces than any screen would overflow the toolkit's sums.
    constexpr int kLargest = 1 << 28;
    place_ = QSize(std::min(width, kLargest), std::min(height, kLargest));
    surroundings_.screen.Place(owner, QRect(QPoint(left, top), place_));
}

int VideoGraph::Height() {
    return FittedSize(playback_ ? playback_->Shape() : QSize(), place_).height();
}

void VideoGraph::SetVisible(bool visible) {
    surroundings_.screen.SetVisible(visible);
}

std::optional<VideoPicture> VideoGraph::TakeDue() {
    return playback_->TakeDue(output_->HeardFrame());
}

std::optional<int> VideoGraph::NextDueIn() {
    const std::optional<std::int64_t> frames = playback_->NextDueIn(output_->HeardFrame());
    if (!frames) {
        return std::nullopt;
    }
    // Rounded up: a picture that is asked for too early is not due yet.
    return static_cast<int>((std::min(*frames, kFramesPerSecond) * 1000 + kFramesPerSecond - 1) /
                            kFramesPerSecond);
}
