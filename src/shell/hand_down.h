// Routines of higher rooms that lower rooms call.
#pragma once

#include "state/roof.h"

// Returns the routines of the jukebox for a new form.
Roof HandDown();
