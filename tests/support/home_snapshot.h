// The files of an application folder that a backup contains, and an application folder to back up, for tests.
#pragma once

#include "platform/files.h"
#include "support/home_folder.h"

#include <map>

using Snapshot = std::map<QString, QByteArray>;

// Adds every file below a folder by its path in it, and every folder with the content "folder".
inline void AddToSnapshot(Snapshot& snapshot, Files& files, const QString& folder, const QString& name) {
    const QString path = PathIn(folder, name);
    if (!files.IsFolder(path)) {
        if (const auto bytes = files.ReadWhole(path, 1 << 30)) {
            snapshot[name] = "file " + *bytes;
        }
        return;
    }
    snapshot[name] = "folder";
    for (const FolderEntry& entry : files.ListFolder(path).value_or(std::vector<FolderEntry>())) {
        AddToSnapshot(snapshot, files, folder, PathIn(name, entry.name));
    }
}

// What of an application folder is backed up.
inline Snapshot SnapshotOf(Files& files, const QString& home) {
    Snapshot snapshot;
    for (const char* const name : {"config.ini", "pathconfig.ini", "stats.ini", "playlists", "themes"}) {
        AddToSnapshot(snapshot, files, home, QString::fromLatin1(name));
    }
    return snapshot;
}

// An application folder "home" in a temporary one, with a file of each kind. `mark` is in the content of
// each.
inline void FillHome(HomeFolder& box, const QByteArray& mark) {
    for (const char* const folder : {"home", "home/playlists", "home/themes", "home/themes/own"}) {
        box.MakeFolder(QString::fromLatin1(folder));
    }
    for (const char* const file :
         {"home/config.ini", "home/stats.ini", "home/playlists/party.vtxpl", "home/themes/own/theme.ini"}) {
        box.Write(QString::fromLatin1(file), mark);
    }
}
