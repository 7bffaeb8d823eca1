// State by which the dialogs talk to their callers.
#pragma once

#include "core/integer.h"
#include "dialogs/keyboard_state.h"

#include <QString>

struct DialogsState : KeyboardState {
    // Key assignment: the binding under change, its name, the code pressed or -1.
    Integer16 KeyAssignIndex;
    QString KeyAssignTitle;
    Integer16 KeyAssignCode;

    // The folder chosen in the folder chooser.
    QString SelectedDirectory;
};
