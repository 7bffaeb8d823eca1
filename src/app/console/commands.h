// The console's commands: from a line of text to what it does.
#pragma once

#include "app/console/console.h"

#include <QString>

class RunTimeError;

// What a line asks for, or why it asks for nothing.
struct ParsedCommand {
    // Empty: the line is unknown or badly formed.
    Command command;
    QString reason;
};

// A blank line, or one that begins with "#".
bool IsNoCommand(const QString& line);

ParsedCommand ParseCommand(const QString& line);

// A command that does nothing and is answered with the reason.
Command Refuse(const QString& reason);

// A run-time error as the answers tell it: number, text, detail.
JsonObject ErrorObject(const RunTimeError& error);
