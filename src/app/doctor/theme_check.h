// Loading the theme of the home as the jukebox does at its start.
#pragma once

class FindingReport;
struct Form_Main;

// Loads the theme that the settings name, without a music folder, and reports an error that stops the
// program. Returns false when the theme cannot be used to measure titles. All other checks of a theme belong
// here, too.
bool CheckThemeOfHome(Form_Main& form, FindingReport& report);
