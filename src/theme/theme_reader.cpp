// Reading typed keys of theme.ini.
#include "theme/theme_reader.h"

#include "core/conversions.h"
#include "core/run_time_error.h"
#include "settings/ini_file.h"

Integer16 ThemeReader::Integer(const QString& section, const char* key) const {
    const QString value = Text(section, key);
    const auto where = [&] {
        return QStringLiteral("%1, [%2] %3 (expected a whole number)")
            .arg(path_, section, QString::fromLatin1(key));
    };
    return TellingWhere(where, [&] { return CInt16(value); });
}

QString ThemeReader::Text(const QString& section, const char* key) const {
    return Trim(file_.Value(section, QString::fromLatin1(key)));
}
