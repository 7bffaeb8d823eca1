// Starts GStreamer once.
#include "platform/gstreamer/start.h"

#include "platform/gstreamer/handles.h"

#include <gst/gst.h>

namespace {

// The search for a sound device is to leave JACK out, and OpenAL, which tries JACK as well: its library waits
// for ever for a lock in memory that a killed process has left, and no device is found from then on. A
// cabinet has no such server.
void LeaveOutJack() {
    for (const char* const sink : {"jackaudiosink", "openalsink"}) {
        if (const FactoryHandle factory{gst_element_factory_find(sink)}) {
            gst_plugin_feature_set_rank(reinterpret_cast<GstPluginFeature*>(factory.get()), GST_RANK_NONE);
        }
    }
}

bool Start() {
    if (gst_init_check(nullptr, nullptr, nullptr) == FALSE) {
        return false;
    }
    LeaveOutJack();
    return true;
}

} // namespace

bool StartGStreamer() {
    static const bool started = Start();
    return started;
}
