// Reading theme.ini into the theme record and the slots.
#pragma once

struct Form_Main;

// Reads the theme record. Raises 13 for a number that is missing or invalid, 6 for one beyond 16 bits; the
// detail names file, section and key.
void ReadThemeRecord(Form_Main& form);

// Reads the slots of both pages from the theme file. A run-time error ends the program.
void LoadThemePositionPistes(Form_Main& form);
