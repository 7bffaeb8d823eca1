// The operator's menus.
#pragma once

struct Form_Main;

// Builds the menus and their current choices. Called once, at start.
void LoadCommand(Form_Main& form);
