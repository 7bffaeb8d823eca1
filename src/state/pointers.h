// The mouse pointer of the main form.
#pragma once

struct Form_Main;

// Sets the pointer of the form, its frame and its video surface: the form's own pointer, which is invisible,
// when TactileMode is "false", else the default one.
void SetModePointers(Form_Main& form);
