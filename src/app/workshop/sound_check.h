// Checking the sounds of a theme: that they can be played, and that they are equally loud.
#pragma once

struct CheckedTheme;

void CheckSounds(CheckedTheme& theme);
