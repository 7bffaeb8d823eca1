// The window that takes the next key, and the buttons that open it.
#pragma once

#include "core/integer.h"

struct Form_Main;

// Opens the window. The caller sets KeyAssignTitle, and KeyAssignCode to -1.
void Form_KeyAssign_Load(Form_Main& form);
// Stores any key and closes the window.
void Form_KeyAssign_KeyDown(Form_Main& form, Integer16 KeyCode);
// Closes the window without a key.
void Form_KeyAssign_Command_Cancel_Click(Form_Main& form);

// Bind a key to an action of the configuration dialog, or add one to the combination of a slot (from 0).
void Command_KeyAssign_Click(Form_Main& form, Integer16 Index);
void Command_ZoneListGauche_Click(Form_Main& form, Integer16 Index);
void Command_ZoneListDroite_Click(Form_Main& form, Integer16 Index);

// Clear the combination of a slot.
void Label_ZoneListGauche_DblClick(Form_Main& form, Integer16 Index);
void Label_ZoneListDroite_DblClick(Form_Main& form, Integer16 Index);
