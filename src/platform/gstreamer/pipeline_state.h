// Tells a pipeline that works from one that never will.
#pragma once

#include <gst/gst.h>

// Whether any thread of the pipeline moves data. A demuxer that finds nothing in its file may end without
// telling anybody, so an element that waits for data has to look.
bool AnythingRuns(GstElement* pipeline);
