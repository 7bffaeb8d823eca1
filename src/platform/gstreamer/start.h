// The one place that starts GStreamer.
#pragma once

// Starts GStreamer at the first call, once in the process. False when it cannot be started. From any thread.
bool StartGStreamer();
