// Routines of higher rooms that lower rooms call.
#pragma once

#include "core/integer.h"

struct Form_Main;

// Passed in with the form, so that no lower room includes a header of a higher one. Each routine is
// documented where it is declared; shell/hand_down.cpp fills in the pointers.
struct Roof {
    void (*LoadConfig)(Form_Main& form);
    void (*LoadTheme)(Form_Main& form);
    void (*ChangeRes)(Form_Main& form, Integer32 width, Integer32 height, Integer32 bits);
    // Does not return.
    void (*ExitJukebox)(Form_Main& form);
    void (*DrawMiniVideo)(Form_Main& form);
    void (*HideMiniVideo)(Form_Main& form);
    void (*SendToController)(Form_Main& form, const char* command);
};
