// Going back from a folder, and the folder of saved playlists.
#pragma once

struct Form_Main;

// Returns to the folder above or, when the entry under the cursor is a playlist, to the saved place. Does
// nothing in the folder where browsing started.
void Retour(Form_Main& form);

// Returns to the saved place. Raises 76 when no place was saved.
void ReturnToSavedPlace(Form_Main& form);

// Saves the folder and page shown, for the return from the playlists folder.
void PutPlaceAside(Form_Main& form);

// Points the lists at the folder "playlists" of the application folder. Raises 76 when it is missing.
void PointAtPlaylists(Form_Main& form);

// Shows the first page of that folder.
void ShowPlaylists(Form_Main& form);

// Prompts for a name with the on-screen keyboard and saves the queue under it.
void SavePlaylist(Form_Main& form);
