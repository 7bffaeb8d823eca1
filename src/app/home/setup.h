// Setting the music folder without a screen.
#pragma once

#include <QString>
#include <QStringList>

#include <chrono>

struct Files;

// What was set, or why nothing was.
struct SetupResult {
    // The folder as it is written to config.ini.
    QString folder;
    // The music files and videos found in it. With `isMore` the search ended at its deadline.
    int tracks = 0;
    bool isMore = false;
    // Empty when the folder is set.
    QString error;
};

// Sets StartPath in the config.ini of the application folder, which keeps every other byte. A relative folder
// is made absolute. A missing config.ini starts from the delivered one in `share`; without any settings the
// jukebox would have neither keys nor blocks. Requires the lock of the application folder, because a running
// jukebox writes config.ini too. Looks for music no longer than `patience`.
SetupResult SetMusicFolder(Files& files, const QString& home, const QString& share, const QString& folder,
                           std::chrono::milliseconds patience);

// Returns the names of the application folder's own themes that are used in place of delivered ones of the
// same name.
QStringList ThemesThatHideDelivered(Files& files, const QString& home, const QString& share);
