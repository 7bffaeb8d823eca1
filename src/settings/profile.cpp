// Single keys of the INI files.
#include "settings/profile.h"

#include "shell/form_main.h"

QString GetPrivateProfileString(Form_Main& form, const QString& path, const QString& section,
                                const QString& key) {
    return form.iniFiles.Open(form.files, path).Value(section, key);
}

void WritePrivateProfileString(Form_Main& form, const QString& path, const QString& section,
                               const QString& key, const QString& value) {
    form.iniFiles.Write(form.files, path, section, key, value);
}

void ChangeProfile(Form_Main& form, const QString& path, const std::function<void(IniFile&)>& change) {
    form.iniFiles.Change(form.files, path, change);
}
