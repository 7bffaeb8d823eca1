// Checking the threads of a pipeline.
#include "platform/gstreamer/pipeline_state.h"

namespace {

gboolean StopAtRunningPad(GstElement*, GstPad* pad, gpointer found) {
    *static_cast<bool*>(found) = gst_pad_get_task_state(pad) == GST_TASK_STARTED;
    return *static_cast<bool*>(found) ? FALSE : TRUE;
}

} // namespace

bool AnythingRuns(GstElement* pipeline) {
    GstIterator* elements = gst_bin_iterate_recurse(reinterpret_cast<GstBin*>(pipeline));
    GValue item = G_VALUE_INIT;
    bool found = false;
    GstIteratorResult result = GST_ITERATOR_OK;
    while (!found && (result = gst_iterator_next(elements, &item)) == GST_ITERATOR_OK) {
        gst_element_foreach_pad(static_cast<GstElement*>(g_value_get_object(&item)), StopAtRunningPad,
                                &found);
        g_value_reset(&item);
    }
    g_value_unset(&item);
    gst_iterator_free(elements);
    // A pipeline that changes during the check is running.
    return found || result == GST_ITERATOR_RESYNC;
}

QString TextOfError(GstMessage* message) {
    GError* error = nullptr;
    gst_message_parse_error(message, &error, nullptr);
    QString text = QString::fromUtf8(error->message);
    g_error_free(error);
    return text;
}

bool IdleWatch::IsDead(GstElement* pipeline) {
    idleLooks_ = AnythingRuns(pipeline) ? 0 : idleLooks_ + 1;
    return idleLooks_ > 1;
}

MessageHandle WaitForVerdict(GstElement* pipeline, GstMessageType verdicts, const std::atomic<bool>& stop) {
    const BusHandle bus(gst_element_get_bus(pipeline));
    IdleWatch watch;
    while (!stop && !watch.IsDead(pipeline)) {
        if (MessageHandle message{gst_bus_timed_pop_filtered(bus.get(), kLookEvery, verdicts)}) {
            return message;
        }
    }
    return nullptr;
}
