// Starts GStreamer once.
#include "platform/gstreamer/start.h"

#include <gst/gst.h>

namespace {

bool Start() {
    // The search for a sound device would otherwise write a line to standard error every five seconds.
    g_setenv("ALSOFT_LOGLEVEL", "0", FALSE);
    return gst_init_check(nullptr, nullptr, nullptr) != FALSE;
}

} // namespace

bool StartGStreamer() {
    static const bool started = Start();
    return started;
}
