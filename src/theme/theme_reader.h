// Reading typed keys of theme.ini.
#pragma once

#include "core/integer.h"

#include <QString>

class IniFile;
struct Form_Main;

// Reads the keys of a theme's file, with blanks trimmed. The form must outlive this object.
class ThemeReader {
public:
    // Reads the current theme.
    explicit ThemeReader(Form_Main& form);
    // Reads the theme in a folder.
    ThemeReader(Form_Main& form, const QString& folder);

    // Raises 13 for a number that is missing or invalid, 6 for one beyond 16 bits. The detail names file,
    // section and key, or only the file or folder when that is missing.
    Integer16 Integer(const QString& section, const char* key) const;
    // Returns an empty text when the key is missing.
    QString Text(const QString& section, const char* key) const;

    // Returns file, section, key and what is expected there, for the detail of an error.
    QString Place(const QString& section, const QString& key, const QString& expected) const;

private:
    // Returns what is missing when the key at `place` has no value: the folder, the file or the key itself.
    QString WhatIsMissing(const QString& place) const;

    Form_Main& form_;
    QString folder_;
    QString path_;
    const IniFile& file_;
};
