// Local files: which of them can be decoded, and the pipeline source that reads one.
#pragma once

#include <QByteArray>
#include <QString>

#include <gst/gst.h>

// Whether this is a regular file that is not empty: a pipe would block a decoder forever. If not, `reason` is
// a sentence that says why.
bool IsPlainFile(const QByteArray& path, QString& reason);

// An element that opens any kind of media file; `path` holds the bytes of its path. Returns null when the
// element is not installed.
GstElement* MakeLocalSource(const QByteArray& path);
