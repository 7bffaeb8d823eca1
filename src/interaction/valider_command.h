// The operator's menu.
#pragma once

struct Form_Main;

// Carries out the action of the menu's current row; a word that is not known does nothing.
void ValiderCommand(Form_Main& form);
