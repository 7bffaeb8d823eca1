// The preview of a theme in the configuration dialog.
#pragma once

#include <QString>

struct Form_Main;

// Fills Combo_Theme with the names of the themes and selects that of config.ini. Raises 76 without a folder
// of themes.
void ListThemes(Form_Main& form);

// Show the theme that Combo_Theme selects, without loading it: its pictures, and the labels and keys of its
// slots. Without a selection nothing is shown. A number of the theme that is missing or invalid ends the
// program with 13, one beyond 16 bits with 6.
void Combo_Theme_Change(Form_Main& form);
void Combo_Theme_Click(Form_Main& form);

// Writes the labels and keys of the slots shown to theme.ini of the selected theme, in one write. A file that
// cannot be written is logged and stays as it is.
void WriteSlots(Form_Main& form);
