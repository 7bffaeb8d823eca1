// The command line of the cabinet.
#pragma once

#include <QString>
#include <QStringList>

#include <map>
#include <optional>

struct CommandLine {
    // The application folder as given; nothing when it must be found.
    std::optional<QString> home;
    // Serial port number to device.
    std::map<int, QString> serialDevices;
    // A task to carry out in place of starting the jukebox; at most one of them is set.
    std::optional<QString> setupFolder;
    std::optional<QString> backupFile;
    std::optional<QString> restoreFile;
    bool showHelp = false;
    bool showVersion = false;
    // The error in the command line, for a person; empty when there is none.
    QString error;
};

// `arguments` excludes the program's name and is made by TextOfPath. The last --home counts, and the last
// --serial of each number. Only one of --setup, --backup and --restore is allowed, once. Parsing stops at the
// first error.
CommandLine ParseCommandLine(const QStringList& arguments);

QString HelpText();
