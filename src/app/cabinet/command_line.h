// The command line of the cabinet.
#pragma once

#include <QString>
#include <QStringList>

#include <map>
#include <optional>

struct CommandLine {
    // The application folder as it was given; none when it is to be found.
    std::optional<QString> home;
    // Serial port number to device.
    std::map<int, QString> serialDevices;
    bool showHelp = false;
    bool showVersion = false;
    // What is wrong with the command line, for a person; empty when nothing is.
    QString error;
};

// `arguments` without the program's name, as made by TextOfPath. The last --home counts, and the last
// --serial of each number. Nothing is read beyond the first error.
CommandLine ParseCommandLine(const QStringList& arguments);

QString HelpText();
