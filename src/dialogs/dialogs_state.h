// State by which the dialogs talk to their callers.
#pragma once

#include "core/integer.h"

#include <QString>

struct DialogsState {
    // The on-screen keyboard: width of the picture area at start, heading, text in and out, word on the
    // accept button, 1 when the text was accepted.
    Integer16 KeyboardMainWidth;
    QString KeyboardTitle;
    QString KeyboardText;
    QString KeyboardButton;
    Integer16 KeyboardResult;

    // Key assignment: the binding under change, its name, the code pressed or -1.
    Integer16 KeyAssignIndex;
    QString KeyAssignTitle;
    Integer16 KeyAssignCode;

    // The folder chosen in the folder chooser.
    QString SelectedDirectory;
};
