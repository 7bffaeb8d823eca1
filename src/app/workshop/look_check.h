// Comparing the looks of buttons, slots and keys: each state must be visible, and nothing else may change.
#pragma once

struct CheckedTheme;

void CheckLooks(CheckedTheme& theme);
