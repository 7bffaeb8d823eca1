// The mouse pointers.
#pragma once

struct Form_Main;

// Gives the form, its frame and its video surface the pointer of the mode: without touch the form's own,
// which is invisible, else the default one.
void SetModePointers(Form_Main& form);
