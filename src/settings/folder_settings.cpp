// Reading a folder's own settings, with their fallbacks.
#include "settings/folder_settings.h"

#include "core/conversions.h"
#include "settings/ini_files.h"
#include "settings/profile.h"
#include "state/form_main.h"
#include "state/paths.h"

namespace {

// The two files that a folder's settings come from, opened once for several reads.
class FolderSettings {
public:
    explicit FolderSettings(Form_Main& form)
        : folders_(IniFilesOf(form).Open(form.files, FolderSettingsPath(form))),
          cabinet_(IniFilesOf(form).Open(form.files, ConfigPath(form))), folder_(form.library.Dir1.Path) {}

    // Returns the folder's own value of a key, blanks trimmed; empty when it has none.
    QString Own(QStringView key) const { return Trim(folders_.Value(folder_, key)); }

    QString OwnOr(QStringView key, const QString& otherwise) const {
        const QString own = Own(key);
        return own.isEmpty() ? otherwise : own;
    }

    // Returns a yes-or-no setting in lower case: the folder's own value or, without one, the cabinet's.
    QString Switch(QStringView key) const {
        return OwnOr(key, Trim(cabinet_.Value(QStringLiteral("Main"), key))).toLower();
    }

private:
    const IniFile& folders_;
    const IniFile& cabinet_;
    QString folder_;
};

const QString kNo = QStringLiteral("false");

} // namespace

void ReadStartFolderSettings(Form_Main& form) {
    const FolderSettings settings(form);
    form.library.Order = settings.OwnOr(u"Order", form.settings.DefaultOrder);
    form.settings.ShowBigtitle = settings.OwnOr(u"ShowBigtitle", kNo).toLower();
    form.settings.ShowCoverFolder = settings.Switch(u"ShowCover");
    form.settings.ShowFolderCover = settings.Switch(u"ShowFolderCover");
    form.settings.ShowFileCover = settings.Switch(u"ShowFileCover");
    form.settings.ShowTrackNumFolder = settings.Switch(u"ShowTrackNum");
    form.settings.ShowMp3CoverTag = settings.Switch(u"ShowMp3CoverTag");
}

void ReadFolderSettings(Form_Main& form) {
    const FolderSettings settings(form);
    form.settings.ShowBigtitle = settings.OwnOr(u"ShowBigtitle", kNo);
    form.settings.ShowCover = settings.Switch(u"ShowCover");
    form.settings.ShowBigCover = settings.Switch(u"ShowBigCover");
    form.settings.ShowFolderCover = settings.Switch(u"ShowFolderCover");
    form.settings.ShowFileCover = settings.Switch(u"ShowFileCover");
    form.settings.ShowTrackNum = settings.Switch(u"ShowTrackNum");
    form.settings.ShowMp3CoverTag = settings.Switch(u"ShowMp3CoverTag");
}
