// Looking into a media file.
#include "platform/gstreamer/probe_media.h"

#include "core/path_text.h"
#include "platform/gstreamer/decode_file.h"
#include "platform/gstreamer/handles.h"
#include "platform/gstreamer/local_source.h"
#include "platform/gstreamer/pcm.h"
#include "platform/gstreamer/plain_file.h"
#include "platform/gstreamer/start.h"

namespace {

// A file that has not opened after so many looks is given up: a disk that sleeps takes ten seconds to wake
// up. Looks are counted, not the time that passes: a machine that stood still in between loses one.
constexpr GstClockTime kLook = GST_SECOND / 10;
constexpr int kOpenLooks = 200;
constexpr const char* kNoStreams = "vantorix-no-streams";

// What the streams of a file have told so far.
struct Opening {
    GstBin* pipeline = nullptr;
    GstElement* source = nullptr;
    int streams = 0;
    MediaFacts facts;
};

void NotePictureSize(Opening& opening, const GstStructure* format) {
    gint width = 0;
    gint height = 0;
    gint pixelWidth = 1;
    gint pixelHeight = 1;
    gst_structure_get_int(format, "width", &width);
    gst_structure_get_int(format, "height", &height);
    gst_structure_get_fraction(format, "pixel-aspect-ratio", &pixelWidth, &pixelHeight);
    if (width > 0 && height > 0 && pixelWidth > 0 && pixelHeight > 0) {
        opening.facts.pictureWidth =
            static_cast<int>(gst_util_uint64_scale_int(static_cast<guint64>(width), pixelWidth, pixelHeight));
        opening.facts.pictureHeight = height;
    }
}

// Every stream ends in a sink of its own, which holds its first piece.
void TakeStream(GstElement*, GstPad* pad, gpointer data) {
    Opening& opening = *static_cast<Opening*>(data);
    GstElement* sink = gst_element_factory_make("fakesink", nullptr);
    if (sink == nullptr) {
        return;
    }
    gst_bin_add(opening.pipeline, sink);
    const PadHandle target(gst_element_get_static_pad(sink, "sink"));
    gst_pad_link(pad, target.get());
    gst_element_sync_state_with_parent(sink);
    ++opening.streams;
}

// The streams know their formats once each has its first piece. The first one with a picture counts.
gboolean LookAtStream(GstElement*, GstPad* pad, gpointer data) {
    Opening& opening = *static_cast<Opening*>(data);
    const CapsHandle caps(gst_pad_get_current_caps(pad));
    if (caps != nullptr && opening.facts.pictureHeight == 0) {
        NotePictureSize(opening, gst_caps_get_structure(caps.get(), 0));
    }
    return TRUE;
}

void TellWhenEmpty(GstElement* source, gpointer data) {
    if (static_cast<Opening*>(data)->streams == 0) {
        gst_element_post_message(source, gst_message_new_application(reinterpret_cast<GstObject*>(source),
                                                                     gst_structure_new_empty(kNoStreams)));
    }
}

PipelineHandle BuildPipeline(const QByteArray& path, Opening& opening) {
    PipelineHandle pipeline(gst_pipeline_new(nullptr));
    GstElement* source = MakeLocalSource(path);
    if (source == nullptr) {
        return nullptr;
    }
    opening.pipeline = reinterpret_cast<GstBin*>(pipeline.get());
    opening.source = source;
    gst_bin_add(opening.pipeline, source);
    const CapsHandle decoded(gst_caps_from_string("video/x-raw; audio/x-raw"));
    g_object_set(source, "caps", decoded.get(), "expose-all-streams", TRUE, nullptr);
    g_signal_connect(source, "pad-added", G_CALLBACK(TakeStream), &opening);
    g_signal_connect(source, "no-more-pads", G_CALLBACK(TellWhenEmpty), &opening);
    return pipeline;
}

// Waits until every stream has its first piece.
bool Opens(GstElement* pipeline) {
    if (gst_element_set_state(pipeline, GST_STATE_PAUSED) == GST_STATE_CHANGE_FAILURE) {
        return false;
    }
    const BusHandle bus(gst_element_get_bus(pipeline));
    const auto events = static_cast<GstMessageType>(GST_MESSAGE_ERROR | GST_MESSAGE_ASYNC_DONE |
                                                    GST_MESSAGE_EOS | GST_MESSAGE_APPLICATION);
    for (int look = 0; look < kOpenLooks; ++look) {
        if (const MessageHandle message{gst_bus_timed_pop_filtered(bus.get(), kLook, events)}) {
            return GST_MESSAGE_TYPE(message.get()) == GST_MESSAGE_ASYNC_DONE;
        }
    }
    return false;
}

} // namespace

std::optional<MediaFacts> ProbeMedia(const QString& path) {
    const QByteArray bytes = BytesOfPath(path);
    QString ignored;
    if (!IsPlainFile(bytes, ignored) || !StartGStreamer()) {
        return std::nullopt;
    }
    Opening opening;
    const PipelineHandle pipeline = BuildPipeline(bytes, opening);
    if (pipeline == nullptr || !Opens(pipeline.get())) {
        return std::nullopt;
    }
    gst_element_foreach_src_pad(opening.source, LookAtStream, &opening);
    gint64 time = -1;
    gst_element_query_duration(pipeline.get(), GST_FORMAT_TIME, &time);
    if (opening.facts.pictureHeight > 0 && time > 0) {
        opening.facts.seconds = static_cast<double>(time) / static_cast<double>(GST_SECOND);
        return opening.facts;
    }
    const std::optional<std::int64_t> length = ProbeLength(path);
    if (!length) {
        return std::nullopt;
    }
    opening.facts.seconds =
        static_cast<double>(*length) / static_cast<double>(kBytesPerFrame * kFramesPerSecond);
    return opening.facts;
}
