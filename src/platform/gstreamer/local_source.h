// A pipeline's source that reads a file of this machine and nothing else.
#pragma once

#include <QByteArray>

#include <gst/gst.h>

// An element that opens any kind of media from a file, named by the bytes of its path. Null when it is not
// installed.
GstElement* MakeLocalSource(const QByteArray& path);
