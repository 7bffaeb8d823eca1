// Reading a folder's own settings with their fallbacks.
#include "settings/folder_settings.h"

#include "core/conversions.h"
#include "core/path_text.h"
#include "shell/form_main.h"

namespace {

// The two files that a folder's settings come from, looked at once for a batch of reads.
class FolderSettings {
public:
    explicit FolderSettings(Form_Main& form)
        : folders_(form.iniFiles.Open(form.files, PathIn(form.AppFolder, QStringLiteral("pathconfig.ini")))),
          cabinet_(form.iniFiles.Open(form.files, PathIn(form.AppFolder, QStringLiteral("config.ini")))),
          folder_(form.Dir1.Path) {}

    // The folder's own value of a key, blanks trimmed; empty when it has none.
    QString Own(QStringView key) const { return Trim(folders_.Value(folder_, key)); }

    QString OwnOr(QStringView key, const QString& otherwise) const {
        const QString own = Own(key);
        return own.isEmpty() ? otherwise : own;
    }

    // A yes-or-no setting in lower case: the folder's own value or, failing that, the cabinet's.
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
    form.Order = settings.OwnOr(u"Order", form.DefaultOrder);
    form.ShowBigtitle = settings.OwnOr(u"ShowBigtitle", kNo).toLower();
    form.ShowCoverFolder = settings.Switch(u"ShowCover");
    form.ShowFolderCover = settings.Switch(u"ShowFolderCover");
    form.ShowFileCover = settings.Switch(u"ShowFileCover");
    form.ShowTrackNumFolder = settings.Switch(u"ShowTrackNum");
    form.ShowMp3CoverTag = settings.Switch(u"ShowMp3CoverTag");
}

void ReadFolderSettings(Form_Main& form) {
    const FolderSettings settings(form);
    form.ShowBigtitle = settings.OwnOr(u"ShowBigtitle", kNo);
    form.ShowCover = settings.Switch(u"ShowCover");
    form.ShowBigCover = settings.Switch(u"ShowBigCover");
    form.ShowFolderCover = settings.Switch(u"ShowFolderCover");
    form.ShowFileCover = settings.Switch(u"ShowFileCover");
    form.ShowTrackNum = settings.Switch(u"ShowTrackNum");
    form.ShowMp3CoverTag = settings.Switch(u"ShowMp3CoverTag");
}
