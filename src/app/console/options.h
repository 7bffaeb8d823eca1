// The command line of the console.
#pragma once

#include "platform/simulated/simulated_platform.h"

#include <QByteArray>
#include <QString>

#include <span>
#include <variant>
#include <vector>

struct ConsoleOptions {
    // The application folder: an absolute path without a separator at its end.
    QString home;
    SimulationOptions simulation;
    // Words after --fail that name no operation.
    QStringList unknownOperations;
    bool showHelp = false;
    bool showVersion = false;
};

// Returns the options in the program's arguments, or the error in them. With --help or --version everything
// else is ignored.
std::variant<ConsoleOptions, QString> ParseOptions(std::span<const QByteArray> arguments);

// The usage lines, for the answer to a wrong command line.
QString Usage();

// The answer to --help.
QString HelpText();
