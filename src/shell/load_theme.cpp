// Loading a theme, step by step.
#include "shell/load_theme.h"

#include "core/path_text.h"
#include "core/run_time_error.h"
#include "library/create_list.h"
#include "platform/fonts.h"
#include "platform/message_box.h"
#include "rendering/fit.h"
#include "rendering/playlist_block.h"
#include "rendering/redraw_jukebox.h"
#include "rendering/track_zone.h"
#include "state/form_main.h"
#include "state/log.h"
#include "state/paths.h"
#include "theme/load_assets.h"
#include "theme/read_theme.h"

namespace {

// Where the message tells the operator to copy a font that could not be installed.
const QString kSystemFonts = QStringLiteral("/usr/share/fonts/");

void InstallFont(Form_Main& form, const QString& name) {
    WriteLog(form, QStringLiteral(" : TTF ") + name);
    const QString path = PathIn(form.library.File1.Path, name);
    if (form.fonts.AddFontResource(path) > 0) {
        ForgetPlaylistTexts(form);
        WriteLog(form, QStringLiteral(" : AddFontResource ") + path);
        return;
    }
    WriteLog(form, QStringLiteral(" : Problème sur AddFontResource ") + path);
    form.messageBox.Show(
        QStringLiteral("Vantorix-Jukebox"),
        QStringLiteral("il y a eu un problème d'installation de la police de caractéres truetype sur votre "
                       "ordinateur. Copier le fichier '%1' du dossier '%2' dans le dossier '%3'")
            .arg(name, form.library.File1.Path, kSystemFonts));
}

void InstallFonts(Form_Main& form) {
    WriteLog(form, QStringLiteral(" : Deplacement file1 vers ") + ThemeFolder(form));
    PointFile1(form, ThemeFolder(form));
    SetFile1Pattern(form, QStringLiteral("*.ttf"));
    const QStringList fonts = form.library.File1.List;
    for (const QString& name : fonts) {
        InstallFont(form, name);
    }
}

void Load(Form_Main& form) {
    WriteLog(form, QStringLiteral(" : Chargement du theme ") + form.settings.Theme +
                       QStringLiteral(" (LoadTheme)"));
    ReadThemeRecord(form);
    WriteLog(form, QStringLiteral(" : Position Pistes"));
    LoadThemePositionPistes(form);
    InstallFonts(form);
    LoadImages(form);
    LoadSounds(form);
    Cls(form.frame.Picture_Main);
    FitToScreen(form);
    form.frame.LastDrawnSlot = -1;
    CreateList(form);
    DrawZoneList(form);
    RedrawJukebox(form);
}

} // namespace

void LoadTheme(Form_Main& form) {
    EndsProgram("LoadTheme", [&] { Load(form); });
}
