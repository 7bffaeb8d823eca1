// Checking the theme of the home.
#pragma once

class FindingReport;
struct Form_Main;

// Adds everything that is wrong with the theme that the settings name, and loads it without a music folder.
// Returns false when the theme cannot be used to measure titles.
bool CheckThemeOfHome(Form_Main& form, FindingReport& report);
