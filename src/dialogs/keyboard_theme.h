// What the on-screen keyboard takes from the theme.
#pragma once

struct Form_Main;

// Loads the two pictures of the keys; one that is missing or broken leaves its object empty.
void LoadKeyboardPictures(Form_Main& form);

// Reads the section "keyboard" of theme.ini. Raises 13 for a missing number or one that is none, 6 for one
// beyond 16 bits, 9 for more than 100 lines or columns.
void ReadKeyboardTheme(Form_Main& form);
