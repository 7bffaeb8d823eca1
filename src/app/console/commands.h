// The console's commands: from a line of text to its effect.
#pragma once

#include "app/console/console.h"

#include <QString>

#include <vector>

class RunTimeError;
struct InputEvent;

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

// Hands events to the jukebox in turn. The first error is the answer and drops the rest.
JsonObject HandOver(Console& console, const std::vector<InputEvent>& events);

// A run-time error in the form of the answers: number, text, detail.
JsonObject ErrorObject(const RunTimeError& error);
