// Owners of GStreamer's reference-counted objects.
#pragma once

#include <gst/gst.h>

#include <memory>

struct ReleaseObject {
    void operator()(gpointer object) const { gst_object_unref(object); }
};
struct ReleaseMiniObject {
    void operator()(GstMessage* message) const { gst_message_unref(message); }
    void operator()(GstSample* sample) const { gst_sample_unref(sample); }
    void operator()(GstCaps* caps) const { gst_caps_unref(caps); }
};
// Stops a pipeline and its threads before it releases it.
struct EndPipeline {
    void operator()(GstElement* pipeline) const {
        gst_element_set_state(pipeline, GST_STATE_NULL);
        gst_object_unref(pipeline);
    }
};

using ElementHandle = std::unique_ptr<GstElement, ReleaseObject>;
using PipelineHandle = std::unique_ptr<GstElement, EndPipeline>;
using PadHandle = std::unique_ptr<GstPad, ReleaseObject>;
using BusHandle = std::unique_ptr<GstBus, ReleaseObject>;
using ClockHandle = std::unique_ptr<GstClock, ReleaseObject>;
using FactoryHandle = std::unique_ptr<GstElementFactory, ReleaseObject>;
using MessageHandle = std::unique_ptr<GstMessage, ReleaseMiniObject>;
using SampleHandle = std::unique_ptr<GstSample, ReleaseMiniObject>;
using CapsHandle = std::unique_ptr<GstCaps, ReleaseMiniObject>;
