// Choosing a slot by typing its key codes.
#pragma once

#include "core/integer.h"

struct Form_Main;

// Takes one more key code: validates the slot whose codes have been typed, keeps the input while a slot can
// still match, else forgets it.
void SelectDirectly(Form_Main& form, Integer16 code);
