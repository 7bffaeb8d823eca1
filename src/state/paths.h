// Paths of the jukebox's files.
#pragma once

#include <QString>

struct Files;
struct Form_Main;

// Files and folders of the application folder.
QString ConfigPath(const Form_Main& form);         // config.ini
QString FolderSettingsPath(const Form_Main& form); // pathconfig.ini
QString StatsPath(const Form_Main& form);          // stats.ini
QString LogPath(const Form_Main& form);            // vantorix.log
QString PlaylistsFolder(const Form_Main& form);    // playlists

// The folder of all themes, and that of the current one.
QString ThemesFolder(const Form_Main& form);
QString ThemeFolder(Form_Main& form);

// The folder of all delivered themes; empty when there is none.
QString DeliveredThemesFolder(const Form_Main& form);

// The folder of a theme: that of the application folder if it exists, else the delivered one if that exists,
// else the path in the application folder.
QString FolderOfTheme(Form_Main& form, const QString& theme);
// The same without a form. `share` is empty when there are no delivered themes.
QString FolderOfTheme(Files& files, const QString& appFolder, const QString& share, const QString& theme);

// Returns the path of a file of the current theme as spelled on disk, ignoring case. Without such a file,
// returns the path with the given name.
QString ThemeFile(Form_Main& form, const QString& name);

// The same for a file of any folder.
QString FileIn(Files& files, const QString& folder, const QString& name);

// Returns the path of the file `name` in `folder` as spelled on disk: the exact name if it exists, else one
// that differs only in case. Empty when there is none.
QString FindFile(Files& files, const QString& folder, const QString& name);

// Returns true when there is a regular file at exactly this path.
bool FileExists(Files& files, const QString& path);
