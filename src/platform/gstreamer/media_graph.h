// The media graphs of the cabinet: the theme's sounds, played from memory through an output of their own.
#pragma once

#include "platform/gstreamer/audio_output_options.h"
#include "platform/media_graph.h"

#include <memory>

class AudioOutput;

class GstMediaGraphs : public MediaGraphs {
public:
    // The sounds' output has a smaller buffer than the music's: a sound follows its key within 25 ms.
    static constexpr std::int64_t kSoundBufferTime = 20000;
    static constexpr std::int64_t kSoundLatencyTime = 5000;

    explicit GstMediaGraphs(AudioOutputOptions options = {kSoundBufferTime, kSoundLatencyTime});
    ~GstMediaGraphs() override;

    // Sounds may outlive this object. A sound holds at most its first minute.
    std::shared_ptr<MediaGraph> CreateGraph(const QString& name) override;

private:
    // Shared by all sounds, started by the first file.
    std::shared_ptr<AudioOutput> output_;
};
