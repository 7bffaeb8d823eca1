// Replacing a whole file so that a power cut cannot damage it.
#pragma once

#include <QByteArray>
#include <QString>

struct Files;

// Replaces the file's content: writes a temporary file next to it, syncs it, renames it over the file and
// syncs the folder. At every moment the file is completely old or completely new. Links are followed, access
// rights are kept. Returns false, with the old file unchanged, when a step up to the rename fails.
bool WriteFileSafely(Files& files, const QString& path, const QByteArray& bytes);
