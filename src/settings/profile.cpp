// Reading and writing single keys of the INI files.
#include "settings/profile.h"

#include "settings/ini_files.h"
#include "state/form_main.h"

IniFiles& IniFilesOf(Form_Main& form) {
    if (!form.settings.iniFiles) {
        form.settings.iniFiles = std::make_shared<IniFiles>();
    }
    return *form.settings.iniFiles;
}

QString GetPrivateProfileString(Form_Main& form, const QString& path, const QString& section,
                                const QString& key) {
    return IniFilesOf(form).Open(form.files, path).Value(section, key);
}

void WritePrivateProfileString(Form_Main& form, const QString& path, const QString& section,
                               const QString& key, const QString& value) {
    IniFilesOf(form).Write(form.files, path, section, key, value);
}

bool ChangeProfile(Form_Main& form, const QString& path, const std::function<void(IniFile&)>& change) {
    return IniFilesOf(form).Change(form.files, path, change);
}
