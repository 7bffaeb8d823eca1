// Steps back: out of a folder, out of the playlists folder.
#pragma once

struct Form_Main;

// Steps back to the folder above, or to the place that was put aside when the playlists folder was opened.
// The folder where browsing started cannot be left.
void Retour(Form_Main& form);

// Goes back to the place that was put aside. Raises 76 when none was.
void ReturnToSavedPlace(Form_Main& form);
