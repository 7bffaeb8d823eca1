// The configuration dialog: the operator's window for setting up a cabinet.
#pragma once

struct Form_Main;

// Opens the dialog: reads config.ini into its controls and shows the preview of the current theme. Raises 76
// without a folder of themes, and 6 for a key code beyond 16 bits; a theme whose preview fails ends the
// program.
void Form_Config_Load(Form_Main& form);

// Lets the operator choose the music folder.
void Command_Select_Click(Form_Main& form);

// Writes config.ini and the labels and keys of the selected theme's slots, each in one write, and closes the
// dialog. A file that cannot be written is logged and stays as it is.
void Form_Config_Command_OK_Click(Form_Main& form);

// Closes the dialog; nothing is written.
void Form_Config_Command_Cancel_Click(Form_Main& form);
