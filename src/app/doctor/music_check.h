// Checking what a folder lists and what it does not list.
#pragma once

#include <QString>

class FindingReport;
struct CheckedFolder;

// Reports files that are not listed, files and folders that cannot be read or played, folders that are empty,
// too large or too deep, and what does not belong into a music library.
void CheckMusic(const CheckedFolder& checked);

// Whether a folder of this name was made by a system or a program and holds no music.
bool IsJunkFolder(const QString& name);

// Report links that are found on the way through the library.
void ReportLoop(FindingReport& report, const QString& link, const QString& target);
void ReportSecondPath(FindingReport& report, const QString& path);
