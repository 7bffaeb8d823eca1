// Variables of the key assignment and the folder chooser. Only the console reads them.
#pragma once

#include "core/integer.h"

#include <QString>

struct DialogsState {
    // Key assignment: the binding being changed, its name, and the code of the pressed key or -1.
    Integer16 KeyAssignIndex;
    QString KeyAssignTitle;
    Integer16 KeyAssignCode;

    // The folder chosen in the folder chooser.
    QString SelectedDirectory;
};
