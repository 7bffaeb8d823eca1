// Writing a file whole, safe from a power cut.
#pragma once

#include <QByteArray>
#include <QString>

struct Files;

// Replaces the file's content: written beside its place, synced, renamed over it, the folder synced. At every
// moment the file is the old or the new one, whole. A link is followed; the access rights stay. False, and
// the old file untouched, when any step fails.
bool WriteFileSafely(Files& files, const QString& path, const QByteArray& bytes);
