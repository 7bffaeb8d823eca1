// One running pipeline from the mixer to a sound sink.
#pragma once

#include "platform/gstreamer/audio_output_options.h"
#include "platform/gstreamer/handles.h"
#include "platform/gstreamer/mixer.h"

#include <gst/app/gstappsrc.h>

#include <atomic>
#include <cstdint>
#include <memory>

class OutputPipeline {
public:
    // Whether this kind of sink is installed.
    static bool CanUse(const QByteArray& sink);
    // Builds a pipeline with this kind of sink and starts it. Returns null when that fails or takes more than
    // some seconds, and when a sink other than the silent one would be silent. A sound server that hangs
    // blocks the caller.
    static std::unique_ptr<OutputPipeline> Open(const AudioOutputOptions& options, const QByteArray& sink,
                                                std::shared_ptr<Mixer> mixer);
    // Ends the pipeline. The mixer must draw for another one by then. A sound server that hangs blocks the
    // caller.
    ~OutputPipeline() = default;

    // The number of the mixer's frame that leaves the loudspeaker now.
    std::int64_t HeardFrame();
    bool HasFailed();

private:
    OutputPipeline(const AudioOutputOptions& options, std::shared_ptr<Mixer> mixer);
    bool Build(const QByteArray& sink);
    bool Play();
    void Tune(GstElement* sink) const;
    bool IsSilentSink(GstElement* sink) const;
    static void NeedData(GstAppSrc* source, guint length, gpointer self);
    void PushPeriod(GstAppSrc* source);

    const AudioOutputOptions options_;
    const std::int64_t period_;
    const std::shared_ptr<Mixer> mixer_;
    std::int64_t pushed_ = 0;
    // The mixer's number of this pipeline's first frame, known once the first frame is drawn.
    std::atomic<std::int64_t> offset_{0};
    BusHandle bus_;
    // Destroyed first: its threads use all of the above.
    PipelineHandle pipeline_;
};
