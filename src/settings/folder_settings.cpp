// Reading a folder's own settings with their fallbacks.
#include "settings/folder_settings.h"

#include "core/conversions.h"
#include "settings/profile.h"
#include "shell/form_main.h"

QString FolderSetting(Form_Main& form, const QString& key) {
    return Trim(GetPrivateProfileString(form, form.AppFolder + QStringLiteral("/pathconfig.ini"),
                                        form.Dir1.Path, key));
}

QString FolderSwitch(Form_Main& form, const QString& key) {
    const QString own = FolderSetting(form, key);
    const QString value =
        own.isEmpty() ? Trim(GetPrivateProfileString(form, form.AppFolder + QStringLiteral("/config.ini"),
                                                     QStringLiteral("Main"), key))
                      : own;
    return value.toLower();
}

void ReadStartFolderSettings(Form_Main& form) {
    const QString order = FolderSetting(form, QStringLiteral("Order"));
    form.Order = order.isEmpty() ? form.DefaultOrder : order;
    const QString bigTitle = FolderSetting(form, QStringLiteral("ShowBigtitle")).toLower();
    form.ShowBigtitle = bigTitle.isEmpty() ? QStringLiteral("false") : bigTitle;
    form.ShowCoverFolder = FolderSwitch(form, QStringLiteral("ShowCover"));
    form.ShowFolderCover = FolderSwitch(form, QStringLiteral("ShowFolderCover"));
    form.ShowFileCover = FolderSwitch(form, QStringLiteral("ShowFileCover"));
    form.ShowTrackNumFolder = FolderSwitch(form, QStringLiteral("ShowTrackNum"));
    form.ShowMp3CoverTag = FolderSwitch(form, QStringLiteral("ShowMp3CoverTag"));
}

void ReadFolderSettings(Form_Main& form) {
    const QString bigTitle = FolderSetting(form, QStringLiteral("ShowBigtitle"));
    form.ShowBigtitle = bigTitle.isEmpty() ? QStringLiteral("false") : bigTitle;
    form.ShowCover = FolderSwitch(form, QStringLiteral("ShowCover"));
    form.ShowBigCover = FolderSwitch(form, QStringLiteral("ShowBigCover"));
    form.ShowFolderCover = FolderSwitch(form, QStringLiteral("ShowFolderCover"));
    form.ShowFileCover = FolderSwitch(form, QStringLiteral("ShowFileCover"));
    form.ShowTrackNum = FolderSwitch(form, QStringLiteral("ShowTrackNum"));
    form.ShowMp3CoverTag = FolderSwitch(form, QStringLiteral("ShowMp3CoverTag"));
}
