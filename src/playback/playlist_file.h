// Reading and writing saved playlists.
#pragma once

#include <QString>

struct Form_Main;

// Replaces the queue with the entries of a playlist file; skips entries whose file does not exist. Raises 75
// when the file cannot be read, 13 when the number of entries is not a number, 62 when the file is cut short,
// 9 beyond 1000 entries. After 62 or 9 the queue holds the entries read so far.
void ReadPlaylistFile(Form_Main& form, const QString& path);

// Saves the queue in the folder "playlists" under the name and the date, replacing a file of that name: the
// number of entries, then a path line and a title line per entry, each ending in CR LF. Raises 76 when the
// folder is missing, 75 when the name contains "/" or the file cannot be written.
void WritePlaylistFile(Form_Main& form, const QString& name);
