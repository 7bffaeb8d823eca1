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
};

// The arguments behind the program's name as options, or what is wrong with them.
std::variant<ConsoleOptions, QString> ParseOptions(std::span<const QByteArray> arguments);

// How the program is called, several lines.
QString Usage();
