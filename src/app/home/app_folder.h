// Where the jukebox keeps its settings, themes, playlists and log.
#pragma once

#include <QString>

#include <optional>

struct Files;

// The folder, or the reason why there is none.
struct AppFolderResult {
    QString folder;
    // The folder of the delivered files, whose themes are used when the application folder has none of that
    // name. Empty when nothing is installed, and when the application folder is the program's own: that one
    // is complete and may be on a stick.
    QString share;
    QString error;
};

// What the choice of the application folder depends on.
struct AppFolderSources {
    // The folder of --home, as given.
    std::optional<QString> home;
    // The folder of the running program.
    QString programFolder;
    // $XDG_DATA_HOME and $HOME; empty when unset.
    QString dataHome;
    QString userHome;
    // The folder of the delivered files, first choice; the second choice is "../share/vantorix" next to the
    // program.
    QString shareFolder;
};

// The sources of this process. `home` is the folder of --home, as given.
AppFolderSources SourcesOfAppFolder(const std::optional<QString>& home);

// Returns the folder of --home, which must hold a jukebox. Without --home: the program's folder if that holds
// one, otherwise $XDG_DATA_HOME/vantorix, which is created and filled from the share folder while it has no
// config.ini. The path has no separator at its end, except for the root.
AppFolderResult FindAppFolder(Files& files, const AppFolderSources& sources);

// Returns the path that FindAppFolder would take, without checking or making it; empty when there is none.
QString PlaceOfAppFolder(Files& files, const AppFolderSources& sources);

// Returns the folder of the delivered files that FindAppFolder would find; empty when there is none, and when
// the application folder is the program's own.
QString PlaceOfDelivered(Files& files, const AppFolderSources& sources);

// Copies the delivered playlists and config.ini unless they exist, config.ini last: an interrupted copy
// continues at the next start. Themes stay where they are delivered, so that an update reaches them; only a
// copy that an earlier version has begun is completed. Returns false when something could not be written.
bool FillAppFolder(Files& files, const QString& delivered, const QString& target);
