// Stepping through the choices of the menu's current row.
#pragma once

struct Form_Main;

// The menu has the focus and its current row is a list of choices.
bool OnListboxRow(const Form_Main& form);

// One choice back, from the first to the last; one on, from the last to the first.
void StepChoiceBack(Form_Main& form);
void StepChoiceForward(Form_Main& form);
