// Checking whether a folder can be the application folder.
#pragma once

#include <QString>

struct Files;

// Whether the folder has a config.ini or a folder "themes", or a restore of one was interrupted in it.
bool HoldsJukebox(Files& files, const QString& folder);

// Returns why a folder cannot be the application folder: it does not exist, or it holds no jukebox. Empty
// when it can be. `given` is the folder as the command line names it.
QString FaultOfHome(Files& files, const QString& folder, const QString& given);

// Returns the message for an application folder that is in use. `holder` is the process that uses it, empty
// when that is unknown.
QString HomeInUse(const QString& folder, const QString& holder);
