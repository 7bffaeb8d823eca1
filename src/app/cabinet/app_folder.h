// Where the jukebox keeps its settings, themes, playlists and log.
#pragma once

#include <QString>

#include <optional>

struct Files;

// The folder, or why there is none.
struct AppFolderResult {
    QString folder;
    QString error;
};

// What the rule for the application folder looks at.
struct AppFolderSources {
    // The folder of --home, as given.
    std::optional<QString> home;
    // The folder of the running program.
    QString programFolder;
    // $XDG_DATA_HOME and $HOME; empty when unset.
    QString dataHome;
    QString userHome;
    // The folder of what is delivered beside the program, first choice; second choice is "../share/vantorix"
    // beside the program.
    QString shareFolder;
};

// The folder of --home, which must hold a jukebox; without it the program's folder if that holds one; else
// $XDG_DATA_HOME/vantorix, which is made and filled from the share folder while it has no config.ini. No
// separator at its end, except for the root.
AppFolderResult FindAppFolder(Files& files, const AppFolderSources& sources);

// Copies every file of the delivered folder that is missing in the target, config.ini as the last one: a copy
// that breaks off goes on at the next start. False when something could not be written.
bool FillAppFolder(Files& files, const QString& delivered, const QString& target);
