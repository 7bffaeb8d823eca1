// Tells a pipeline that works from one that never will.
#pragma once

#include "platform/gstreamer/handles.h"

#include <atomic>

// Whether any thread of the pipeline moves data. A demuxer that finds nothing in its file may end without
// telling anybody, so an element that waits for data has to look.
bool AnythingRuns(GstElement* pipeline);

// How often a pipeline that gives nothing is looked at.
constexpr GstClockTime kLookEvery = GST_SECOND / 10;

// Waits for the first message of these types: whether a pipeline has started, or why not. Null when no thread
// of the pipeline runs any more, and when `stop` is set.
MessageHandle WaitForVerdict(GstElement* pipeline, GstMessageType verdicts, const std::atomic<bool>& stop);

// Looks at one pipeline again and again.
class IdleWatch {
public:
    // Nothing ran at this look and at the one before: a single idle look may show one thread that is handing
    // over to the next.
    bool IsDead(GstElement* pipeline);
    // The pipeline has given something.
    void SeeWork() { idleLooks_ = 0; }

private:
    int idleLooks_ = 0;
};
