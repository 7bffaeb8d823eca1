// The two facing pages of tracks, painted off screen in both looks.
#pragma once

struct Form_Main;

// Reads the folder's display settings, fills the page from the list and paints it on Picture_Cache and
// Picture_CacheHilight. Any error ends the program.
void DrawZoneList(Form_Main& form);
