// Setting the display mode.
#pragma once

#include "core/integer.h"

struct Form_Main;

// Sets the display mode of the primary screen. A mode that is refused, or that needs a restart, changes nothing
// after a message box. Without modes (see DisplayChange) it does nothing.
void ChangeRes(Form_Main& form, Integer32 width, Integer32 height, Integer32 bits);
