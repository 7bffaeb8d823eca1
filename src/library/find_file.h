// Files and folders named by a rule, found whatever the case of their letters.
#pragma once

#include <QString>

struct Files;

// The path of the file `name` in `folder` as it is on disk: the exact name first, else one that differs in
// case only. Empty when there is none.
QString FindFile(Files& files, const QString& folder, const QString& name);

// A regular file of exactly this path.
bool FileExists(Files& files, const QString& path);
