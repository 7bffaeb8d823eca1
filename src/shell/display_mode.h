// Setting the display mode.
#pragma once

#include "core/integer.h"

struct Form_Main;

// Sets the display mode of the primary screen; the main window then covers it. A mode that is refused, or
// that needs a restart, changes nothing after a message box. Without modes (see DisplayChange) it does
// nothing.
void ChangeRes(Form_Main& form, Integer32 width, Integer32 height, Integer32 bits);

// Gives the main window the size of the primary screen in its current mode.
void CoverScreen(Form_Main& form);
