// Opening the configuration dialog, choosing the music folder, OK and Cancel.
#include "dialogs/config_dialog.h"

#include "core/conversions.h"
#include "dialogs/key_bindings.h"
#include "dialogs/theme_preview.h"
#include "platform/dialogs.h"
#include "settings/config.h"
#include "settings/ini_file.h"
#include "settings/profile.h"
#include "state/form_main.h"
#include "state/log.h"
#include "state/paths.h"

#include <array>
#include <optional>

namespace {

const QString kSection = QStringLiteral("Main");
const QString kTrue = QStringLiteral("true");
const QString kFalse = QStringLiteral("false");

// From a value of config.ini to the value of its control, and back.
using Conversion = QString (*)(const QString& value);

QString AsItIs(const QString& value) {
    return value;
}

QString YesOrNo(const QString& value) {
    return Trim(value).toLower() == u"true" ? kTrue : kFalse;
}

QString OrientationShown(const QString& value) {
    return Trim(value).toLower() == u"vertical" ? QStringLiteral("vertical") : QStringLiteral("horizontal");
}

QString OrderShown(const QString& value) {
    const QString order = Trim(value).toLower();
    return order == u"alpha"       ? QStringLiteral("Alpha")
           : order == u"playcount" ? QStringLiteral("Playing Count")
                                   : QString();
}

QString OrderWritten(const QString& entry) {
    return entry == u"Alpha"           ? QStringLiteral("alpha")
           : entry == u"Playing Count" ? QStringLiteral("playcount")
                                       : QString();
}

struct ControlRow {
    QString ConfigDialogState::*control;
    const char* key;
    Conversion shown; // null: the control is filled by other means
    Conversion written;
};

#define SHOWN_TEXT AsItIs, AsItIs
#define SHOWN_CAPTION AsItIs, AsItIs
#define SHOWN_YES_OR_NO YesOrNo, AsItIs
#define SHOWN_ORIENTATION OrientationShown, AsItIs
#define SHOWN_ORDER OrderShown, OrderWritten
#define SHOWN_THEME nullptr, AsItIs
#define CONTROL_ROW(kind, control, key) ControlRow{&ConfigDialogState::control, key, SHOWN_##kind},

constexpr std::array kControls = {CONFIG_CONTROLS(CONTROL_ROW)};
static_assert(kControls.size() == 27);

#undef CONTROL_ROW
#undef SHOWN_TEXT
#undef SHOWN_CAPTION
#undef SHOWN_YES_OR_NO
#undef SHOWN_ORIENTATION
#undef SHOWN_ORDER
#undef SHOWN_THEME

void ShowSettings(Form_Main& form) {
    for (const ControlRow& row : kControls) {
        if (row.shown != nullptr) {
            form.config.*row.control = row.shown(
                GetPrivateProfileString(form, ConfigPath(form), kSection, QString::fromLatin1(row.key)));
        }
    }
    ReadTactileMode(form);
}

void ShowStartPath(Form_Main& form) {
    form.settings.StartPath = form.config.Label_StartPath;
    const bool isMissing = form.settings.StartPath.isEmpty();
    form.config.Label12IsRed = isMissing;
    form.config.Command_OKEnabled = !isMissing;
}

void WriteSettings(Form_Main& form) {
    const bool isWritten = ChangeProfile(form, ConfigPath(form), [&](IniFile& file) {
        for (const ControlRow& row : kControls) {
            file.SetValue(kSection, QString::fromLatin1(row.key), row.written(form.config.*row.control));
        }
        SetBindings(form, file);
    });
    if (!isWritten) {
        WriteLog(form, QStringLiteral(" : Impossible d'écrire ") + ConfigPath(form));
    }
}

void Close(Form_Main& form) {
    WriteLog(form, QStringLiteral(" : Quitter fenetre de config"));
    form.config.Visible = false;
}

} // namespace

void Form_Config_Load(Form_Main& form) {
    WriteLog(form, QStringLiteral(" : Fenetre de Config"));
    ShowSettings(form);
    ShowStartPath(form);
    ListThemes(form);
    Combo_Theme_Change(form);
    ShowBindings(form);
    form.config.Visible = true;
}

void Command_Select_Click(Form_Main& form) {
    form.folderDialog.SelectedDirectory.clear();
    form.dialogs.ShowModal(QStringLiteral("Form_SelectDirectory"));
    if (!form.folderDialog.SelectedDirectory.isEmpty()) {
        form.config.Label12IsRed = false;
        form.config.Label_StartPath = form.folderDialog.SelectedDirectory;
        form.config.Command_OKEnabled = true;
    }
}

// Deliberate D-145: OK changes the theme that is selected, not only config.ini. One would expect a file of
// the cabinet's own; the keys of a slot are kept with its place.
void Form_Config_Command_OK_Click(Form_Main& form) {
    WriteLog(form, QStringLiteral(" : Modification config"));
    form.settings.StartPath = form.config.Label_StartPath;
    WriteSettings(form);
    WriteSlots(form);
    Close(form);
}

void Form_Config_Command_Cancel_Click(Form_Main& form) {
    Close(form);
}
