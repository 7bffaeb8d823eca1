// Starts GStreamer once.
#include "platform/gstreamer/start.h"

#include "platform/gstreamer/handles.h"

#include <gst/gst.h>

#include <csignal>

namespace {

// Excludes JACK from the automatic choice of a sound device, and OpenAL, which tries JACK as well. JACK's
// library waits forever for a lock in shared memory that a killed process has left, and no device is found
// from then on. A cabinet has no such server.
void LeaveOutJack() {
    for (const char* const sink : {"jackaudiosink", "openalsink"}) {
        if (const FactoryHandle factory{gst_element_factory_find(sink)}) {
            gst_plugin_feature_set_rank(reinterpret_cast<GstPluginFeature*>(factory.get()), GST_RANK_NONE);
        }
    }
}

// GStreamer's plugin scanner is a separate program and inherits the signal mask. It must end on SIGTERM even
// if the signals of this program are blocked.
bool InitialiseWithSignals() {
    sigset_t none;
    sigset_t before;
    sigemptyset(&none);
    pthread_sigmask(SIG_SETMASK, &none, &before);
    const bool done = gst_init_check(nullptr, nullptr, nullptr) != FALSE;
    pthread_sigmask(SIG_SETMASK, &before, nullptr);
    return done;
}

bool Start() {
    if (!InitialiseWithSignals()) {
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
