// Reading the facts of a media file.
#include "platform/gstreamer/probe_media.h"

#include "core/path_text.h"
#include "platform/gstreamer/decoder.h"
#include "platform/gstreamer/handles.h"
#include "platform/gstreamer/local_file.h"
#include "platform/gstreamer/pcm.h"
#include "platform/gstreamer/start.h"

namespace {

constexpr const char* kNoStreams = "vantorix-no-streams";

// What is known of the file's streams so far.
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

// Connects every stream to its own sink, which holds its first buffer.
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

// A stream's format is known once it has its first buffer. The first stream with a picture counts.
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

// Waits until every stream has its first buffer.
bool Opens(GstElement* pipeline, const std::atomic<bool>& stop) {
    if (gst_element_set_state(pipeline, GST_STATE_PAUSED) == GST_STATE_CHANGE_FAILURE) {
        return false;
    }
    const auto events = static_cast<GstMessageType>(GST_MESSAGE_ERROR | GST_MESSAGE_ASYNC_DONE |
                                                    GST_MESSAGE_EOS | GST_MESSAGE_APPLICATION);
    const MessageHandle message = WaitForVerdict(pipeline, events, stop);
    return message != nullptr && GST_MESSAGE_TYPE(message.get()) == GST_MESSAGE_ASYNC_DONE;
}

// The facts that the streams state; `seconds` stays 0 when the length must be measured.
std::optional<MediaFacts> LookAtStreams(const QString& path, const std::atomic<bool>& stop) {
    const QByteArray bytes = BytesOfPath(path);
    QString ignored;
    if (!IsPlainFile(bytes, ignored) || !StartGStreamer()) {
        return std::nullopt;
    }
    Opening opening;
    const PipelineHandle pipeline = BuildPipeline(bytes, opening);
    if (pipeline == nullptr || !Opens(pipeline.get(), stop)) {
        return std::nullopt;
    }
    gst_element_foreach_src_pad(opening.source, LookAtStream, &opening);
    gint64 time = -1;
    gst_element_query_duration(pipeline.get(), GST_FORMAT_TIME, &time);
    if (opening.facts.pictureHeight > 0 && time > 0) {
        opening.facts.seconds = static_cast<double>(time) / static_cast<double>(GST_SECOND);
    }
    return opening.facts;
}

struct ProbedFile {
    std::optional<MediaFacts> facts;
    // Open when its length must be counted.
    MeasuredFile sound;
};

ProbedFile OpenFile(const QString& path, const std::atomic<bool>& stop) {
    ProbedFile file{LookAtStreams(path, stop), {}};
    if (file.facts && file.facts->seconds == 0) {
        file.sound = OpenToCount(path, stop);
    }
    return file;
}

} // namespace

std::optional<MediaFacts> ProbeMedia(const QString& path) {
    std::optional<ProbedFile> file = WithinLimits<ProbedFile>(
        OpeningLimits{}, [path](const std::atomic<bool>& abandoned) { return OpenFile(path, abandoned); });
    if (!file || !file->facts || file->facts->seconds > 0) {
        return file ? file->facts : std::nullopt;
    }
    const std::optional<std::int64_t> frames = FramesOf(file->sound);
    if (!frames) {
        return std::nullopt;
    }
    file->facts->seconds = static_cast<double>(*frames) / static_cast<double>(kFramesPerSecond);
    return file->facts;
}
