// Checking config.ini, pathconfig.ini, stats.ini and the playlists.
#pragma once

#include <QString>

class FindingReport;
struct Files;
struct Form_Main;

// Reports keys of config.ini that are unknown, missing, doubled or out of range, and what the jukebox does
// with each.
void CheckConfig(Files& files, const QString& home, FindingReport& report);

// Reports settings of folders that are gone or have no effect, and counts that are not numbers.
void CheckFolderSettings(Files& files, const QString& home, FindingReport& report);
void CheckStats(Files& files, const QString& home, FindingReport& report);

// Reports playlists that are damaged or name files that are gone. Uses the form's queue.
void CheckPlaylists(Form_Main& form, FindingReport& report);

// Reports a music folder that config.ini cannot hold.
void CheckFolderName(const QString& folder, FindingReport& report);
