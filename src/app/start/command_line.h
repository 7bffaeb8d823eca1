// The command line of the cabinet.
#pragma once

#include <QSize>
#include <QString>
#include <QStringList>

#include <map>
#include <optional>
#include <vector>

struct CommandLine {
    // The application folder as given; nothing when it must be found.
    std::optional<QString> home;
    // Serial port number to device.
    std::map<int, QString> serialDevices;

    // A task to carry out in place of starting the jukebox; at most one of these is set.
    std::optional<QString> setupFolder;
    std::optional<QString> backupFile;
    std::optional<QString> restoreFile;
    // The music folder to check; empty for that of config.ini.
    std::optional<QString> checkedFolder;
    // The name or folder of the theme to check.
    std::optional<QString> checkedTheme;

    // Of --check and --check-theme: one JSON object a line.
    bool asJson = false;
    // Of --check: opens every file.
    bool isDeep = false;
    // Of --check-theme: the folder for pictures of every situation.
    std::optional<QString> framesFolder;
    // Of --frames: the sizes of the screens in pixels; empty for a choice of common ones.
    std::vector<QSize> sizes;
    // Of --check-theme: shows the theme in a window and reads it again when one of its files is saved.
    bool isWatching = false;

    bool showHelp = false;
    bool showVersion = false;
    // The error in the command line, for a person; empty when there is none.
    QString error;
};

// `arguments` excludes the program's name and is made by TextOfPath. The last --home counts, and the last
// --serial of each number. Only one task is allowed, once. Parsing stops at the first error.
CommandLine ParseCommandLine(const QStringList& arguments);

QString HelpText();
