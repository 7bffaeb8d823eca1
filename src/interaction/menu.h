// The rows of the menu, and the configuration dialog.
#pragma once

struct Form_Main;

// Performs the action of the menu's current row; an unknown action does nothing.
void ValiderCommand(Form_Main& form);

// Returns true when the menu has the focus and its current row is a list of choices.
bool OnListboxRow(const Form_Main& form);

// Select the previous choice, wrapping from the first to the last, or the next one, wrapping from the last to
// the first.
void StepChoiceBack(Form_Main& form);
void StepChoiceForward(Form_Main& form);

// Opens the configuration dialog by key. The list stays in its folder.
void OpenConfigByKey(Form_Main& form);

// Opens the configuration dialog from the menu. The list returns to the music folder.
void OpenConfigByMenu(Form_Main& form);
