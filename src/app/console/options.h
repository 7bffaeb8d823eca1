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
    // Words behind --fail that name no operation.
    QStringList unknownOperations;
    bool showHelp = false;
    bool showVersion = false;
};

// The program's arguments as options, or what is wrong with them. With --help or --version nothing else
// counts.
std::variant<ConsoleOptions, QString> ParseOptions(std::span<const QByteArray> arguments);

// How the program is called, for the answer to a wrong command line.
QString Usage();

// The answer to --help.
QString HelpText();
