// Going to the folder of the saved playlists, and saving one there.
#pragma once

struct Form_Main;

// Remembers the folder and page shown, for the way back out of the playlists folder.
void PutPlaceAside(Form_Main& form);

// Points the lists at the folder "playlists" of the application folder. Raises 76 when it is missing.
void PointAtPlaylists(Form_Main& form);

// Shows that folder from its first page on.
void ShowPlaylists(Form_Main& form);

// Asks for a name with the on-screen keyboard and saves the queue under it.
void SavePlaylist(Form_Main& form);
