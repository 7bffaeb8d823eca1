// The commands that query the jukebox and change nothing: its variables, calls, pictures.
#pragma once

#include "app/console/commands.h"

#include <QString>
#include <QStringList>

ParsedCommand ParseState(const QStringList& words);
ParsedCommand ParseCalls(const QStringList& words);
ParsedCommand ParseFrame(const QString& rest);
ParsedCommand ParseSurface(const QString& rest);
ParsedCommand ParseImage(const QString& rest);
ParsedCommand ParseTags(const QString& rest);

// The answer to a command that was refused.
JsonObject RefusalObject(const QString& reason);
