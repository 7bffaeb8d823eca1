// The theme's keys and pictures for the on-screen keyboard.
#pragma once

struct Form_Main;

// Loads the two pictures of the keys. A missing or broken picture leaves its object empty.
void LoadKeyboardPictures(Form_Main& form);

// Reads the section "keyboard" of theme.ini. Raises 13 for a number that is missing or invalid, 6 for one
// beyond 16 bits, 9 for more than 100 lines or columns.
void ReadKeyboardTheme(Form_Main& form);
