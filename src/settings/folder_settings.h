// The settings that a folder may have of its own, in pathconfig.ini.
#pragma once

#include <QString>

struct Form_Main;

// A folder's own value of a key, blanks trimmed; empty when it has none.
QString FolderSetting(Form_Main& form, const QString& key);

// A yes-or-no setting in lower case: the folder's own value or, failing that, that of config.ini.
QString FolderSwitch(Form_Main& form, const QString& key);

// Reads the settings of the folder where browsing starts.
void ReadStartFolderSettings(Form_Main& form);

// Reads the display settings of the folder shown, as every drawing of the list does.
void ReadFolderSettings(Form_Main& form);
