// What makes a folder an application folder.
#pragma once

#include <QString>

struct Files;

// The folder has a config.ini or a folder "themes".
bool HoldsJukebox(Files& files, const QString& folder);

// Why a folder cannot be the application folder: it does not exist, or it holds no jukebox. Empty when it
// can. `given` is the folder as the command line names it.
QString FaultOfHome(Files& files, const QString& folder, const QString& given);

// The application folder is in use; `holder` is the process that uses it, empty when that is not known.
QString HomeInUse(const QString& folder, const QString& holder);
