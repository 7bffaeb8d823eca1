// The media graphs of the cabinet: videos, and the theme's sounds, which are played from memory through an
// output of their own.
#pragma once

#include "platform/gstreamer/audio_output_options.h"
#include "platform/gstreamer/video_surroundings.h"
#include "platform/media_graph.h"

#include <memory>

class AudioOutput;

class GstMediaGraphs : public MediaGraphs {
public:
    // The sounds' output has a smaller buffer than the music's: a sound follows its key within 25 ms.
    static constexpr std::int64_t kSoundBufferTime = 20000;
    static constexpr std::int64_t kSoundLatencyTime = 5000;

    explicit GstMediaGraphs(VideoSurroundings video,
                            AudioOutputOptions options = {kSoundBufferTime, kSoundLatencyTime});
    ~GstMediaGraphs() override;

    // Sounds may outlive this object. A sound holds at most its first minute.
    std::shared_ptr<MediaGraph> CreateGraph(const QString& name) override;

private:
    const VideoSurroundings video_;
    // Shared by all sounds, started by the first file.
    std::shared_ptr<AudioOutput> output_;
};
