// The single entry of all keys.
#pragma once

#include "core/integer.h"

struct Form_Main;

// A key goes down. KeyCode is a virtual-key code; Shift is not used. A key that finds InputBusy set is
// dropped.
void Form_KeyDown(Form_Main& form, Integer16 KeyCode, Integer16 Shift);
