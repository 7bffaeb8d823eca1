// Reading and writing single keys of the INI files.
#pragma once

#include <QString>

#include <functional>

class IniFile;
class IniFiles;
struct Form_Main;

// Returns the parsed copies of all INI files, which the form keeps.
IniFiles& IniFilesOf(Form_Main& form);

// Returns the current value of a key, at most 254 characters; empty when file, section or key is missing.
QString GetPrivateProfileString(Form_Main& form, const QString& path, const QString& section,
                                const QString& key);

// Replaces or appends a key, and creates file and section as needed. A file that cannot be written stays as
// it is, and no error is reported.
void WritePrivateProfileString(Form_Main& form, const QString& path, const QString& section,
                               const QString& key, const QString& value);

// Changes several keys in one write of the file: `change` reads and sets them. An exception in `change` is
// rethrown after the keys set so far have been written. Returns false when the file cannot be written; it
// stays as it is then.
bool ChangeProfile(Form_Main& form, const QString& path, const std::function<void(IniFile&)>& change);
