// Distinguishes a working pipeline from one that will never deliver anything.
#pragma once

#include "platform/gstreamer/handles.h"

#include <QString>

#include <atomic>

// Whether any thread of the pipeline moves data. A demuxer that finds nothing in its file may end without a
// message, so code that waits for data has to check.
bool AnythingRuns(GstElement* pipeline);

// The interval between checks of a pipeline that delivers nothing.
constexpr GstClockTime kLookEvery = GST_SECOND / 10;

// Waits for the first message of these types, which reports that a pipeline has started or why it failed.
// Returns null when no thread of the pipeline runs any more, and when `stop` is set.
MessageHandle WaitForVerdict(GstElement* pipeline, GstMessageType verdicts, const std::atomic<bool>& stop);

// The sentence of an error message.
QString TextOfError(GstMessage* message);

// Checks one pipeline repeatedly.
class IdleWatch {
public:
    // True when nothing ran at this check and at the one before. A single idle check may only catch one
    // thread handing over to the next.
    bool IsDead(GstElement* pipeline);
    // Notes that the pipeline has delivered something.
    void SeeWork() { idleLooks_ = 0; }

private:
    int idleLooks_ = 0;
};
