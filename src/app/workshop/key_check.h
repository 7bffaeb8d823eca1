// Checking theme.ini itself: its encoding, its sections and keys, and each single value.
#pragma once

struct CheckedTheme;

// Opens theme.ini. Returns false, with a finding, when the jukebox would find no keys at all.
bool OpenThemeFile(CheckedTheme& theme);

// Reads every value and reports those that are missing, invalid or ignored.
void CheckKeys(CheckedTheme& theme);
