// Saved playlists.
#pragma once

#include <QString>

struct Form_Main;

// Fills the queue from a playlist file; entries whose file is gone are passed over. A file that is cut short
// raises 62 and leaves in the queue what had been read; a count that is no number raises 13.
void ReadPlaylistFile(Form_Main& form, const QString& path);

// Saves the queue under a name in the folder "playlists", replacing a file of that name: the count, then a
// path line and a title line an entry, each ended by CR LF. Raises 76 when the folder is missing, 75 when the
// file cannot be written.
void WritePlaylistFile(Form_Main& form, const QString& name);
