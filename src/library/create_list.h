// Listing a folder as one sorted list.
#pragma once

#include <QString>
#include <QStringList>

#include <vector>

struct FolderEntry;
struct FolderList;
struct Form_Main;

// Point a folder list, or the file list, at a folder and read it. A separator at the path's end is removed.
// Raises 76 when there is no such folder; a folder that cannot be read gives an empty list.
void PointDir1(Form_Main& form, const QString& path);
void PointDir2(Form_Main& form, const QString& path);
void PointFolderList(Form_Main& form, FolderList& list, const QString& path);
void PointFile1(Form_Main& form, const QString& path);
// Returns the folders among the entries of a folder that are not hidden, as full paths in name order.
QStringList FolderPathsOf(const QString& folder, const std::vector<FolderEntry>& entries);
// Sets the file list's pattern, wildcards joined by ";", and reads the folder again.
void SetFile1Pattern(Form_Main& form, const QString& pattern);

// Points the lists at the music folder of the configuration and makes it the current path. Raises 76, naming
// the key, when there is no such folder.
void PointAtStartFolder(Form_Main& form);

// Builds the sorted list of the folder of Dir1 in the order of its settings, and sets NumTrack to the number
// of entries. A run-time error, for instance at more than 32767 entries, ends the program.
void CreateList(Form_Main& form);
