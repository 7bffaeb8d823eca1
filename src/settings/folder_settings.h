// The settings that a folder can override in pathconfig.ini.
#pragma once

struct Form_Main;

// Reads the settings of the folder where browsing starts.
void ReadStartFolderSettings(Form_Main& form);

// Reads the display settings of the current folder. Called before every drawing of the list.
void ReadFolderSettings(Form_Main& form);
