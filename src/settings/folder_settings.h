// The settings that a folder may have of its own, in pathconfig.ini.
#pragma once

struct Form_Main;

// Reads the settings of the folder where browsing starts.
void ReadStartFolderSettings(Form_Main& form);

// Reads the display settings of the folder shown, as every drawing of the list does.
void ReadFolderSettings(Form_Main& form);
