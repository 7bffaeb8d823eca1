// Adds up the durations of the packets of files that do not state their length.
#include "platform/gstreamer/length_scan.h"

#include "core/path_text.h"
#include "platform/gstreamer/handles.h"
#include "platform/gstreamer/pcm.h"
#include "platform/gstreamer/pipeline_state.h"
#include "platform/gstreamer/start.h"

#include <gst/app/gstappsink.h>

#include <sys/stat.h>

#include <algorithm>
#include <cstring>

namespace {

using Deadline = std::chrono::steady_clock::time_point;

void LinkSound(GstElement*, GstPad* pad, gpointer sinkElement) {
    const PadHandle sink(gst_element_get_static_pad(static_cast<GstElement*>(sinkElement), "sink"));
    const CapsHandle caps(gst_pad_query_caps(pad, nullptr));
    const bool sound =
        gst_caps_get_size(caps.get()) > 0 &&
        std::strncmp(gst_structure_get_name(gst_caps_get_structure(caps.get(), 0)), "audio/", 6) == 0;
    if (sound && gst_pad_is_linked(sink.get()) == FALSE) {
        gst_pad_link(pad, sink.get());
    }
}

// file source -> parser -> appsink, which `sink` returns.
PipelineHandle BuildScan(const QByteArray& path, GstAppSink*& sink) {
    PipelineHandle pipeline(gst_pipeline_new(nullptr));
    GstElement* source = gst_element_factory_make("filesrc", nullptr);
    GstElement* parser = gst_element_factory_make("parsebin", nullptr);
    GstElement* last = gst_element_factory_make("appsink", nullptr);
    for (GstElement* element : {source, parser, last}) {
        if (element == nullptr || gst_bin_add(reinterpret_cast<GstBin*>(pipeline.get()), element) == FALSE) {
            return nullptr;
        }
    }
    g_object_set(source, "location", path.constData(), nullptr);
    g_object_set(last, "sync", FALSE, "max-buffers", 64U, nullptr);
    g_signal_connect(parser, "pad-added", G_CALLBACK(LinkSound), last);
    sink = reinterpret_cast<GstAppSink*>(last);
    gst_element_link(source, parser);
    return pipeline;
}

bool HasError(GstBus* bus) {
    return MessageHandle(gst_bus_pop_filtered(bus, GST_MESSAGE_ERROR)) != nullptr;
}

// The part of the file that has been read so far.
struct Seen {
    GstClockTime first = GST_CLOCK_TIME_NONE;
    GstClockTime end = 0;
    guint64 bytes = 0;

    void Add(GstBuffer* packet) {
        bytes += gst_buffer_get_size(packet);
        const GstClockTime stamp = GST_BUFFER_PTS(packet);
        if (!GST_CLOCK_TIME_IS_VALID(stamp)) {
            return;
        }
        const GstClockTime duration = GST_BUFFER_DURATION(packet);
        first = GST_CLOCK_TIME_IS_VALID(first) ? first : stamp;
        end = std::max(end, stamp + (GST_CLOCK_TIME_IS_VALID(duration) ? duration : 0));
    }
    std::int64_t Frames() const {
        return GST_CLOCK_TIME_IS_VALID(first) && end > first
                   ? static_cast<std::int64_t>(
                         gst_util_uint64_scale_round(end - first, kFramesPerSecond, GST_SECOND))
                   : 0;
    }
    // The whole file's length if the rest is like the part that was read.
    std::int64_t ExpectedFrames(guint64 fileBytes) const {
        return bytes == 0 ? 0
                          : static_cast<std::int64_t>(gst_util_uint64_scale(
                                static_cast<guint64>(Frames()), std::max(fileBytes, bytes), bytes));
    }
};

} // namespace

ScannedLength ScanLength(const QString& path, const std::atomic<bool>& stop, Deadline deadline) {
    const QByteArray bytes = BytesOfPath(path);
    struct stat status {};
    GstAppSink* sink = nullptr;
    if (!StartGStreamer() || stat(bytes.constData(), &status) != 0 || !S_ISREG(status.st_mode)) {
        return {};
    }
    const PipelineHandle pipeline = BuildScan(bytes, sink);
    if (pipeline == nullptr ||
        gst_element_set_state(pipeline.get(), GST_STATE_PLAYING) == GST_STATE_CHANGE_FAILURE) {
        return {};
    }
    const BusHandle bus(gst_element_get_bus(pipeline.get()));
    Seen seen;
    IdleWatch watch;
    bool complete = false;
    while (!stop && std::chrono::steady_clock::now() < deadline) {
        const SampleHandle sample(gst_app_sink_try_pull_sample(sink, 20 * GST_MSECOND));
        if (sample != nullptr) {
            seen.Add(gst_sample_get_buffer(sample.get()));
        } else if (gst_app_sink_is_eos(sink) != FALSE || HasError(bus.get()) ||
                   watch.IsDead(pipeline.get())) {
            complete = true;
            break;
        }
    }
    return {complete ? seen.Frames() : seen.ExpectedFrames(static_cast<guint64>(status.st_size)), complete};
}
