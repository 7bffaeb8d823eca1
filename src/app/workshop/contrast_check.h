// Measuring the contrast between the texts of a theme and the pixels that can be behind them.
#pragma once

struct CheckedTheme;

// Reports every text whose contrast is below 4.5:1, the least that the Web Content Accessibility Guidelines
// allow.
void CheckContrast(CheckedTheme& theme);
