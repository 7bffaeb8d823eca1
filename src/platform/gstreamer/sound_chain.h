// The part of a pipeline that turns any sound into 16-bit stereo frames.
#pragma once

#include <gst/app/gstappsink.h>

struct SoundChain {
    // The first element, which refuses sound with damaged figures. Null when an element is not installed.
    GstElement* first = nullptr;
    GstAppSink* sink = nullptr;
};

// Adds the elements to a pipeline that is not running and links them. The sink does not wait for a clock, and
// holds at most eight buffers.
SoundChain AddSoundChain(GstElement* pipeline);

// Connects a source's new pad to the first element of a chain, unless that is connected already.
void LinkFirstPad(GstPad* pad, GstElement* first);
bool IsLinked(GstElement* first);
