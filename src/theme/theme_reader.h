// Reading typed keys of theme.ini.
#pragma once

#include "core/integer.h"

#include <QString>

class IniFile;

// The keys of one theme file, blanks trimmed.
class ThemeReader {
public:
    ThemeReader(const IniFile& file, QString path) : file_(file), path_(std::move(path)) {}

    // Raises 13 for a missing key or one that is no number, 6 for one beyond 16 bits, telling file, section
    // and key.
    Integer16 Integer(const QString& section, const char* key) const;
    // Empty when the key is missing.
    QString Text(const QString& section, const char* key) const;

private:
    const IniFile& file_;
    QString path_;
};
