// Starts GStreamer once.
#include "platform/gstreamer/start.h"

#include <gst/gst.h>

namespace {

bool Start() {
    return gst_init_check(nullptr, nullptr, nullptr) != FALSE;
}

} // namespace

bool StartGStreamer() {
    static const bool started = Start();
    return started;
}
