// What the controls of the dialogs show in the tests.
#pragma once

#include "platform/dialog_controls.h"

#include <map>

// Looks by the text of the control's name, "Label_Key(0)".
struct DialogModel {
    std::map<QString, ControlLook> looks = {};
    // Those of the theme.
    int rows = 10;

    ControlLook Look(const ControlName& name) const;
    ControlLook& operator[](const char* name) { return looks.at(QString::fromLatin1(name)); }
};

// Every control of Form_Config with believable values, for a theme of `rows` rows.
DialogModel ConfigModel(int rows);
DialogModel KeyModel();
// A folder with `children` folders in it.
DialogModel FolderModel(int children);
