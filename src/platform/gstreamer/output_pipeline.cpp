// Application source, sound sink, and the clock that gives the audible frame.
#include "platform/gstreamer/output_pipeline.h"

#include "platform/gstreamer/pcm.h"

#include <algorithm>
#include <utility>

namespace {

constexpr GstClockTime kStartLimit = 3 * GST_SECOND;

GstClockTime TimeOfFrames(std::int64_t frames) {
    return gst_util_uint64_scale(static_cast<guint64>(frames), GST_SECOND, kFramesPerSecond);
}

// The sink that an automatic one has chosen, or the sink itself when it is a plain one. Available from READY
// on.
ElementHandle ChosenSink(GstElement* sink) {
    if (GST_IS_BIN(sink) && GST_BIN_NUMCHILDREN(reinterpret_cast<GstBin*>(sink)) > 0) {
        GObject* child = gst_child_proxy_get_child_by_index(reinterpret_cast<GstChildProxy*>(sink), 0);
        return ElementHandle(reinterpret_cast<GstElement*>(child));
    }
    return ElementHandle(static_cast<GstElement*>(gst_object_ref(sink)));
}

bool HasProperty(GstElement* element, const char* name) {
    return g_object_class_find_property(G_OBJECT_GET_CLASS(element), name) != nullptr;
}

} // namespace

bool OutputPipeline::CanUse(const QByteArray& sink) {
    return FactoryHandle(gst_element_factory_find(sink.constData())) != nullptr;
}

std::unique_ptr<OutputPipeline> OutputPipeline::Open(const AudioOutputOptions& options,
                                                     const QByteArray& sink, std::shared_ptr<Mixer> mixer) {
    std::unique_ptr<OutputPipeline> output(new OutputPipeline(options, std::move(mixer)));
    return output->Build(sink) && output->Play() ? std::move(output) : nullptr;
}

OutputPipeline::OutputPipeline(const AudioOutputOptions& options, std::shared_ptr<Mixer> mixer)
    : options_(options), period_(std::clamp<std::int64_t>(options.latencyTime * kFramesPerSecond / 1000000,
                                                          64, kFramesPerSecond)),
      mixer_(std::move(mixer)) {}

bool OutputPipeline::Build(const QByteArray& sinkName) {
    pipeline_.reset(gst_pipeline_new(nullptr));
    bus_.reset(gst_element_get_bus(pipeline_.get()));
    GstElement* source = gst_element_factory_make("appsrc", nullptr);
    GstElement* sink = gst_element_factory_make(sinkName.constData(), nullptr);
    for (GstElement* element : {source, sink}) {
        if (element != nullptr) {
            gst_bin_add(reinterpret_cast<GstBin*>(pipeline_.get()), element);
        }
    }
    if (source == nullptr || sink == nullptr || gst_element_link(source, sink) == FALSE) {
        return false;
    }
    const CapsHandle caps(gst_caps_from_string(kPcmCaps));
    g_object_set(source, "caps", caps.get(), "format", GST_FORMAT_TIME, "max-bytes",
                 static_cast<guint64>(period_ * kBytesPerFrame), nullptr);
    GstAppSrcCallbacks callbacks{};
    callbacks.need_data = NeedData;
    gst_app_src_set_callbacks(reinterpret_cast<GstAppSrc*>(source), &callbacks, this, nullptr);
    if (gst_element_set_state(pipeline_.get(), GST_STATE_READY) == GST_STATE_CHANGE_FAILURE) {
        return false;
    }
    const ElementHandle chosen = ChosenSink(sink);
    Tune(chosen.get());
    return sinkName == options_.silentSink || !IsSilentSink(chosen.get());
}

bool OutputPipeline::Play() {
    return gst_element_set_state(pipeline_.get(), GST_STATE_PLAYING) != GST_STATE_CHANGE_FAILURE &&
           gst_element_get_state(pipeline_.get(), nullptr, nullptr, kStartLimit) == GST_STATE_CHANGE_SUCCESS;
}

void OutputPipeline::Tune(GstElement* sink) const {
    if (HasProperty(sink, "buffer-time") && HasProperty(sink, "latency-time")) {
        g_object_set(sink, "buffer-time", static_cast<gint64>(options_.bufferTime), "latency-time",
                     static_cast<gint64>(options_.latencyTime), nullptr);
    }
    if (IsSilentSink(sink)) {
        g_object_set(sink, "sync", TRUE, nullptr);
    }
}

bool OutputPipeline::IsSilentSink(GstElement* sink) const {
    GstElementFactory* factory = gst_element_get_factory(sink);
    return factory != nullptr && options_.silentSink == gst_plugin_feature_get_name(factory);
}

void OutputPipeline::NeedData(GstAppSrc* source, guint, gpointer self) {
    static_cast<OutputPipeline*>(self)->PushPeriod(source);
}

void OutputPipeline::PushPeriod(GstAppSrc* source) {
    GstBuffer* buffer =
        gst_buffer_new_allocate(nullptr, static_cast<gsize>(period_ * kBytesPerFrame), nullptr);
    GstMapInfo map;
    if (gst_buffer_map(buffer, &map, GST_MAP_WRITE) != FALSE) {
        const std::int64_t first = mixer_->Draw(
            this, {reinterpret_cast<std::int16_t*>(map.data), static_cast<std::size_t>(period_) * 2});
        gst_buffer_unmap(buffer, &map);
        if (first >= 0) {
            offset_ = first - pushed_;
        }
    }
    GST_BUFFER_PTS(buffer) = TimeOfFrames(pushed_);
    pushed_ += period_;
    GST_BUFFER_DURATION(buffer) = TimeOfFrames(pushed_) - GST_BUFFER_PTS(buffer);
    gst_app_src_push_buffer(source, buffer);
}

// The sink's clock counts what has left the loudspeaker, so its running time is the audible position.
std::int64_t OutputPipeline::HeardFrame() {
    const std::int64_t drawn = mixer_->Drawn();
    const ClockHandle clock(gst_element_get_clock(pipeline_.get()));
    const GstClockTime now = clock != nullptr ? gst_clock_get_time(clock.get()) : 0;
    const GstClockTime base = gst_element_get_base_time(pipeline_.get());
    const guint64 frames = now > base ? gst_util_uint64_scale(now - base, kFramesPerSecond, GST_SECOND) : 0;
    return std::min(offset_ + static_cast<std::int64_t>(frames), drawn);
}

bool OutputPipeline::HasFailed() {
    bool failed = false;
    while (const MessageHandle message{gst_bus_pop(bus_.get())}) {
        failed = failed || GST_MESSAGE_TYPE(message.get()) == GST_MESSAGE_ERROR;
    }
    return failed;
}
