// The counts of picked tracks and folders in stats.ini.
#pragma once

struct Form_Main;

// Counts a pick of the slot: increments the track's title, the folder shown and each folder above it except
// the root, in one write of the file. Raises 13 for a count that is not a number.
void CountPick(Form_Main& form, int slot);
