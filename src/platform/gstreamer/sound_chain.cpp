// Converting sound to the internal sample format.
#include "platform/gstreamer/sound_chain.h"

#include "platform/gstreamer/handles.h"
#include "platform/gstreamer/pcm.h"

namespace {

// A header with other values is damaged. Resampling from billions of hertz, or from one, would take minutes
// and gigabytes.
constexpr const char* kSaneCaps = "audio/x-raw, rate=(int)[1000, 768000], channels=(int)[1, 64]";

} // namespace

SoundChain AddSoundChain(GstElement* pipeline) {
    const auto add = [&](const char* kind) {
        GstElement* element = gst_element_factory_make(kind, nullptr);
        if (element != nullptr) {
            gst_bin_add(reinterpret_cast<GstBin*>(pipeline), element);
        }
        return element;
    };
    GstElement* gate = add("capsfilter");
    GstElement* convert = add("audioconvert");
    GstElement* resample = add("audioresample");
    GstElement* sink = add("appsink");
    if (gate == nullptr || convert == nullptr || resample == nullptr || sink == nullptr) {
        return {};
    }
    const CapsHandle wanted(gst_caps_from_string(kPcmCaps));
    const CapsHandle sane(gst_caps_from_string(kSaneCaps));
    g_object_set(gate, "caps", sane.get(), nullptr);
    // The same file must give the same samples each time, and silence must stay silence.
    gst_util_set_object_arg(reinterpret_cast<GObject*>(convert), "dithering", "none");
    g_object_set(sink, "caps", wanted.get(), "sync", FALSE, "max-buffers", 8U, nullptr);
    const bool linked = gst_element_link_many(gate, convert, resample, sink, nullptr) != FALSE;
    return linked ? SoundChain{gate, reinterpret_cast<GstAppSink*>(sink)} : SoundChain{};
}

void LinkFirstPad(GstPad* pad, GstElement* first) {
    const PadHandle sink(gst_element_get_static_pad(first, "sink"));
    if (gst_pad_is_linked(sink.get()) == FALSE) {
        gst_pad_link(pad, sink.get());
    }
}

bool IsLinked(GstElement* first) {
    const PadHandle sink(gst_element_get_static_pad(first, "sink"));
    return gst_pad_is_linked(sink.get()) != FALSE;
}
