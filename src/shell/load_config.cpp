// Loading the configuration, step by step.
#include "shell/load_config.h"

#include "core/conversions.h"
#include "core/run_time_error.h"
#include "platform/dialogs.h"
#include "platform/event_pump.h"
#include "platform/windows.h"
#include "settings/config.h"
#include "shell/display_mode.h"
#include "shell/exit.h"
#include "state/form_main.h"
#include "state/log.h"
#include "state/paths.h"
#include "state/pointers.h"

#include <algorithm>

namespace {

// The first run: the operator chooses a music folder, or the program ends.
void AskStartPath(Form_Main& form) {
    form.settings.StartPath = form.shell.AppFolder;
    form.shell.Timer1.Enabled = false;
    form.windows.MousePointer(QStringLiteral("Screen"), kPointerArrow);
    form.dialogs.ShowModal(QStringLiteral("Form_Config"));
    form.windows.MousePointer(QStringLiteral("Screen"), kPointerHourglass);
    form.shell.Timer1.Enabled = true;
    form.settings.StartPath = ReadStartPath(form);
    if (!form.settings.StartPath.isEmpty()) {
        return;
    }
    WriteLog(form, QStringLiteral(" : Aucun dossier de musique choisi, fin du programme"));
    if (form.settings.Fullscreen == u"true") {
        WriteLog(form, QStringLiteral(" : Changement de la résolution d'écran"));
        ChangeRes(form, form.shell.ScreenWidth.value(), form.shell.ScreenHeight.value(),
                  form.shell.ScreenBits.value());
    }
    form.pump.DoEvents();
    ExitJukebox(form);
}

// Sets the mode that FullscreenSize gives: width, "x", height, a blank, depth and "bits". Without the "x" or
// the blank there is no number. Blanks around the numbers do no harm.
void SetScreenMode(Form_Main& form) {
    const QString& size = form.settings.FullscreenSize;
    const qsizetype x = size.indexOf(u'x');
    const QString width = size.left(std::max<qsizetype>(x, 0));
    const QString afterX = Trim(size.mid(x + 1));
    const qsizetype blank = afterX.indexOf(u' ');
    const QString height = afterX.left(std::max<qsizetype>(blank, 0));
    QString bits = afterX.mid(blank + 1);
    bits.remove(QStringLiteral("bits"));
    const auto where = [&] {
        return QStringLiteral("%1, [Main] FullscreenSize \"%2\" (expected like \"1024x768 32bits\")")
            .arg(ConfigPath(form), size);
    };
    TellingWhere(where, [&] {
        const Integer32 pixelsAcross = CInt32(width);
        const Integer32 pixelsDown = CInt32(height);
        ChangeRes(form, pixelsAcross, pixelsDown, CInt32(bits));
    });
    WriteLog(form, QStringLiteral(" : Changement de la résolution d'écran"));
}

void Load(Form_Main& form) {
    WriteLog(form, QStringLiteral(
                       " : Récupération des parametres de config dans le fichier config.ini (LoadConfig)"));
    form.settings.StartPath = ReadStartPath(form);
    if (form.settings.StartPath.isEmpty()) {
        AskStartPath(form);
    }
    ReadScreenKeys(form);
    if (form.settings.Fullscreen == u"true") {
        SetScreenMode(form);
    }
    CoverScreen(form);
    form.pump.DoEvents();
    ReadPlacementKeys(form);
    SetModePointers(form);
    ReadOtherKeys(form);
    WriteLog(form, QStringLiteral(" : Fin chargement config "));
}

} // namespace

void LoadConfig(Form_Main& form) {
    EndsProgram("LoadConfig", [&] { Load(form); });
}
