// Starts GStreamer.
#pragma once

// Starts GStreamer at the first call in the process. Returns false when it cannot be started. From any
// thread.
bool StartGStreamer();
