// Reading typed keys of theme.ini.
#include "theme/theme_reader.h"

#include "core/conversions.h"
#include "core/path_text.h"
#include "core/run_time_error.h"
#include "settings/config.h"
#include "settings/ini_files.h"
#include "settings/profile.h"
#include "state/form_main.h"
#include "state/paths.h"

ThemeReader::ThemeReader(Form_Main& form) : ThemeReader(form, ThemeFolder(form)) {}

ThemeReader::ThemeReader(Form_Main& form, const QString& folder)
    : form_(form), folder_(folder), path_(FileIn(form.files, folder, QStringLiteral("theme.ini"))),
      file_(IniFilesOf(form).Open(form.files, path_)) {}

Integer16 ThemeReader::Integer(const QString& section, const char* key) const {
    const QString value = Text(section, key);
    const auto place = [&] {
        return Place(section, QString::fromLatin1(key), QStringLiteral("a whole number"));
    };
    if (value.isEmpty()) {
        throw RunTimeError(kTypeMismatch, WhatIsMissing(place()));
    }
    return TellingWhere(place, [&] { return CInt16(value); });
}

QString ThemeReader::Text(const QString& section, const char* key) const {
    return Trim(file_.Value(section, QString::fromLatin1(key)));
}

QString ThemeReader::Place(const QString& section, const QString& key, const QString& expected) const {
    return QStringLiteral("%1, [%2] %3 (expected %4)").arg(path_, section, key, expected);
}

QString ThemeReader::WhatIsMissing(const QString& place) const {
    if (!form_.files.IsFolder(folder_)) {
        const QString words = QStringLiteral("%1 (expected the folder of a theme): there is no folder \"%2\"")
                                  .arg(ConfigPlace(form_, u"Main", u"Theme"), folder_);
        const QString delivered = DeliveredThemesFolder(form_);
        return delivered.isEmpty()
                   ? words
                   : words +
                         QStringLiteral(" and no folder \"%1\"").arg(PathIn(delivered, NameOfPath(folder_)));
    }
    if (!form_.files.Open(path_)) {
        return QStringLiteral(
                   "%1 (expected the keys of the theme): there is no such file, or it cannot be read")
            .arg(path_);
    }
    return place + QStringLiteral(": the key is missing or empty");
}
