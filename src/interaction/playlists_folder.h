// Going to the folder of the saved playlists, and saving one there.
#pragma once

struct Form_Main;

// Remembers the folder and page shown, for the way back out of the playlists folder.
void PutPlaceAside(Form_Main& form);

// Shows the folder "playlists" of the application folder from its first page on. Raises 76 when it is
// missing.
void GoToPlaylists(Form_Main& form);

// Asks for a name with the on-screen keyboard and saves the queue under it.
void SavePlaylist(Form_Main& form);
