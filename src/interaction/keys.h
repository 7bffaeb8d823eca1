// Keys of the main form, and direct selection by typed key codes.
#pragma once

#include "core/integer.h"

struct Form_Main;

// Handles a pressed key. KeyCode is a virtual-key code; Shift is not used. The key is dropped while InputBusy
// is set.
void Form_KeyDown(Form_Main& form, Integer16 KeyCode, Integer16 Shift);

// Appends a key code to the input. Confirms the slot whose codes equal the input; keeps the input while a
// slot can still match, else clears it.
void SelectDirectly(Form_Main& form, Integer16 code);
