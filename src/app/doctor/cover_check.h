// Checking the covers of a folder's entries: pictures next to the music, and those in tags.
#pragma once

#include <QHash>
#include <QString>

struct CheckedFolder;

// The settings of a folder that decide about the pictures of its sub-folders.
struct FolderCoverSettings {
    bool showsCovers = false;
    bool showsBigCovers = false;
    // Whether the folder is shown as an entry of a list. The music folder itself is not.
    bool isEntry = false;
};

// The settings with which a folder is shown in the list of the folder above it.
using CoverSettingsOf = QHash<QString, FolderCoverSettings>;

// Reports covers that are never shown and why, tags that stop the program, and pictures that cannot be read.
// Keeps the settings for the sub-folders in `settingsOf`.
void CheckCovers(const CheckedFolder& checked, CoverSettingsOf& settingsOf);
