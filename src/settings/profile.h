// Reading and writing single keys of the INI files.
#pragma once

#include <QString>

#include <functional>

class IniFile;
struct Form_Main;

// The value of a key as the file has it now, at most 254 characters; empty when file, section or key is
// missing.
QString GetPrivateProfileString(Form_Main& form, const QString& path, const QString& section,
                                const QString& key);

// Replaces or appends a key, creating file and section as needed. A file that cannot be written is left as it
// is, and nothing is reported.
void WritePrivateProfileString(Form_Main& form, const QString& path, const QString& section,
                               const QString& key, const QString& value);

// Changes several keys in one write of the file: `change` reads and sets them. A run-time error in it goes on
// after what it had set until then has been written.
void ChangeProfile(Form_Main& form, const QString& path, const std::function<void(IniFile&)>& change);
