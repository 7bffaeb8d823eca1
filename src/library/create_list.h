// The folder shown as one sorted list.
#pragma once

#include <QString>

struct Form_Main;

// Points a folder list, or the file list, at a folder and reads it. A separator at the path's end is cut.
// Raises 76 for a path that names no folder; a folder that cannot be read is an empty list.
void PointDir1(Form_Main& form, const QString& path);
void PointDir2(Form_Main& form, const QString& path);
void PointFile1(Form_Main& form, const QString& path);
// Sets the file list's pattern, wildcards joined by ";", and reads the folder anew.
void SetFile1Pattern(Form_Main& form, const QString& pattern);

// Builds the sorted list of the folder of Dir1 in the order of its settings. NumTrack is then the number of
// entries. A run-time error (more than 32767 entries) ends the program.
void CreateList(Form_Main& form);
