// Reading typed keys of theme.ini.
#pragma once

#include "core/integer.h"

#include <QString>

class IniFile;
struct Form_Main;

// The keys of the current theme's file, blanks trimmed. The form outlives this object.
class ThemeReader {
public:
    explicit ThemeReader(Form_Main& form);

    // Raises 13 for a missing key or one that is no number, 6 for one beyond 16 bits. The detail names file,
    // section and key, or the file or folder alone when that is missing.
    Integer16 Integer(const QString& section, const char* key) const;
    // Empty when the key is missing.
    QString Text(const QString& section, const char* key) const;

    // File, section and key, and what is expected there, for the detail of an error.
    QString Place(const QString& section, const QString& key, const QString& expected) const;

private:
    // What is missing when the key of that place has no value.
    QString WhatIsMissing(const QString& place) const;

    Form_Main& form_;
    QString path_;
    const IniFile& file_;
};
