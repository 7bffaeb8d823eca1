// Loading the cabinet's configuration.
#pragma once

struct Form_Main;

// Reads config.ini into the form. Without a music folder it opens the configuration dialog first. A run-time
// error in it ends the program.
void LoadConfig(Form_Main& form);
