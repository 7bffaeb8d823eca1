// Copying a folder so that a power cut leaves no half of it.
#pragma once

#include <QString>

struct Files;

// Where a folder of the application folder is put together before it gets its name. A crash can leave one
// there; the next copy and the next start remove it.
QString CopyInProgress(const QString& appFolder);

// Copies a folder with everything in it, following links. The copy is made as the folder `temporary`, which
// must be on the same file system, is synced and then renamed to `to`, whose parent is made if it is missing.
// Returns false when something could not be read or written, or when `to` exists; no part of the copy is left
// then.
bool CopyFolderSafely(Files& files, const QString& from, const QString& to, const QString& temporary);
