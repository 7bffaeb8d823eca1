// How often tracks and folders have been bought, in stats.ini.
#pragma once

struct Form_Main;

// Counts a pick of the slot: the track's title, the folder shown, each folder above it, in one write of the
// file. A count that is no number raises 13.
void CountPick(Form_Main& form, int slot);
