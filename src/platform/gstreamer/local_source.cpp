// Files only: a list of addresses opens no connection.
#include "platform/gstreamer/local_source.h"

#include <cstring>

namespace {

// The file's address, made of its bytes, so that every name that a disk can hold has one.
QByteArray FileUri(const QByteArray& path) {
    gchar* absolute = g_canonicalize_filename(path.constData(), nullptr);
    gchar* uri = g_filename_to_uri(absolute, nullptr, nullptr);
    QByteArray result(uri);
    g_free(uri);
    g_free(absolute);
    return result;
}

// Lists of network addresses are not music: whatever would open a connection for a local file is passed over.
// The numbers are those of GstAutoplugSelectResult, which no header declares.
gint SelectElement(GstElement*, GstPad*, GstCaps*, GstElementFactory* factory, gpointer) {
    constexpr gint kTry = 0;
    constexpr gint kSkip = 2;
    const gchar* kind = gst_element_factory_get_metadata(factory, GST_ELEMENT_METADATA_KLASS);
    const bool network = kind != nullptr && (std::strstr(kind, "Adaptive") != nullptr ||
                                             std::strstr(kind, "Network") != nullptr);
    return network ? kSkip : kTry;
}

} // namespace

GstElement* MakeLocalSource(const QByteArray& path) {
    GstElement* source = gst_element_factory_make("uridecodebin", nullptr);
    if (source != nullptr) {
        g_object_set(source, "uri", FileUri(path).constData(), nullptr);
        g_signal_connect(source, "autoplug-select", G_CALLBACK(SelectElement), nullptr);
    }
    return source;
}
