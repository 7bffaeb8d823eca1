// The window in which the operator chooses the music folder.
#pragma once

#include <QString>

struct Form_Main;

// Opens the window at StartPath, or at the application folder when that is empty or gone. ReadOpenFolder
// follows once the window is on the screen, since a folder of a slow medium may take long to be read.
void Form_SelectDirectory_Load(Form_Main& form);
void ReadOpenFolder(Form_Main& form);

// Opens the folder of the drive that Drive1 shows.
void Drive1_Change(Form_Main& form);
// Opens the highlighted folder.
void Dir1_DblClick(Form_Main& form);
// Hands over the highlighted folder, or else the open one, and closes the window.
void Form_SelectDirectory_Command_OK_Click(Form_Main& form);
void Form_SelectDirectory_Command_Cancel_Click(Form_Main& form);

// Returns the highlighted folder, or else the open one.
QString ChosenFolder(const Form_Main& form);
