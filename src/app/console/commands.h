// The console's commands: from a line of text to its effect.
#pragma once

#include "app/console/console.h"

#include <QString>

class RunTimeError;

// The command of a line, or the reason why it has none.
struct ParsedCommand {
    // Empty when the line is unknown or malformed.
    Command command;
    QString reason;
};

// True for a blank line and for one that begins with "#".
bool IsNoCommand(const QString& line);

ParsedCommand ParseCommand(const QString& line);

// Returns a command that does nothing and answers with the reason.
Command Refuse(const QString& reason);

// A run-time error in the form of the answers: number, text, detail.
JsonObject ErrorObject(const RunTimeError& error);
