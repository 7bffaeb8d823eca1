// Tests a path before it is opened, and keeps decoders from opening network connections.
#include "platform/gstreamer/local_file.h"

#include <sys/stat.h>

#include <cstring>

namespace {

// The file's URI, made of its path's bytes, so that every name on a disk has one.
QByteArray FileUri(const QByteArray& path) {
    gchar* absolute = g_canonicalize_filename(path.constData(), nullptr);
    gchar* uri = g_filename_to_uri(absolute, nullptr, nullptr);
    QByteArray result(uri);
    g_free(uri);
    g_free(absolute);
    return result;
}

// Lists of network addresses are not music. Skips every element that would open a connection for a local
// file. The numbers are those of GstAutoplugSelectResult, which no header declares.
gint SelectElement(GstElement*, GstPad*, GstCaps*, GstElementFactory* factory, gpointer) {
    constexpr gint kTry = 0;
    constexpr gint kSkip = 2;
    const gchar* kind = gst_element_factory_get_metadata(factory, GST_ELEMENT_METADATA_KLASS);
    const bool network = kind != nullptr && (std::strstr(kind, "Adaptive") != nullptr ||
                                             std::strstr(kind, "Network") != nullptr);
    return network ? kSkip : kTry;
}

} // namespace

bool IsPlainFile(const QByteArray& path, QString& reason) {
    struct stat status {};
    if (path.isEmpty() || path.contains('\0') || stat(path.constData(), &status) != 0) {
        reason = QStringLiteral("the file is missing");
        return false;
    }
    if (!S_ISREG(status.st_mode)) {
        reason = QStringLiteral("this is no file");
        return false;
    }
    if (status.st_size == 0) {
        reason = QStringLiteral("the file is empty");
        return false;
    }
    return true;
}

GstElement* MakeLocalSource(const QByteArray& path) {
    GstElement* source = gst_element_factory_make("uridecodebin", nullptr);
    if (source != nullptr) {
        g_object_set(source, "uri", FileUri(path).constData(), nullptr);
        g_signal_connect(source, "autoplug-select", G_CALLBACK(SelectElement), nullptr);
    }
    return source;
}
