// The media graphs of the cabinet: the theme's sounds, from memory through an output of their own.
#pragma once

#include "platform/gstreamer/audio_output_options.h"
#include "platform/media_graph.h"

#include <memory>

class AudioOutput;

class GstMediaGraphs : public MediaGraphs {
public:
    // The sounds' output holds less ahead than that of the music: a sound follows its key within 25 ms.
    static constexpr std::int64_t kSoundBufferTime = 20000;
    static constexpr std::int64_t kSoundLatencyTime = 5000;

    explicit GstMediaGraphs(AudioOutputOptions options = {kSoundBufferTime, kSoundLatencyTime});
    ~GstMediaGraphs() override;

    // The sounds outlive this object as long as somebody holds them. A sound holds its first minute at most.
    std::shared_ptr<MediaGraph> CreateGraph(const QString& name) override;

private:
    // Shared by all sounds, started by the first file.
    std::shared_ptr<AudioOutput> output_;
};
