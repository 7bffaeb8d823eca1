// The two ways into the configuration dialog.
#pragma once

struct Form_Main;

// By key: the list stays in its folder afterwards.
void OpenConfigByKey(Form_Main& form);

// By the menu: the list goes back to the music folder.
void OpenConfigByMenu(Form_Main& form);
