// The media graph of a video: pictures on a screen, sound in the music's output.
#pragma once

#include "platform/gstreamer/video_playback.h"
#include "platform/gstreamer/video_surroundings.h"
#include "platform/media_graph.h"

#include <memory>

class AudioOutput;

// Without a file that has been rendered, the operations have no effect and all figures are 0.
class VideoGraph final : public MediaGraph, private VideoPictures {
public:
    explicit VideoGraph(VideoSurroundings surroundings);
    ~VideoGraph() override;
    VideoGraph(const VideoGraph&) = delete;
    VideoGraph& operator=(const VideoGraph&) = delete;

    void RenderFile(const QString& path) override;
    void Run() override;
    void Pause() override;
    // Logs how many pictures came too late to be shown, if any did.
    void Stop() override;
    double Duration() override;
    double CurrentPosition() override;
    // A time outside the video is moved to the nearer end. Returns before the disk has been read.
    void SetCurrentPosition(double seconds) override;
    void Place(const QString& owner, int left, int top, int width, int height) override;
    int Height() override;
    void SetVisible(bool visible) override;

private:
    std::optional<VideoPicture> TakeDue() override;
    std::optional<int> NextDueIn() override;

    void Leave();

    const VideoSurroundings surroundings_;
    QString path_;
    std::shared_ptr<AudioOutput> output_;
    // Shared with an errand that seeks or ends.
    std::shared_ptr<VideoPlayback> playback_;
    VideoCounts logged_;
    QSize place_;
};
