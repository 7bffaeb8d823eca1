// From a key to its action: the guard, the order of the keys, what each does.
#include "interaction/key_dispatcher.h"

#include "core/conversions.h"
#include "core/run_time_error.h"
#include "interaction/direct_selection.h"
#include "interaction/folder_moves.h"
#include "interaction/move_keys.h"
#include "interaction/next_zone.h"
#include "interaction/open_config.h"
#include "interaction/valider.h"
#include "interaction/valider_command.h"
#include "interaction/valider_main.h"
#include "interaction/valider_playlist.h"
#include "platform/event_pump.h"
#include "platform/windows.h"
#include "playback/credits.h"
#include "playback/engine.h"
#include "rendering/geometry.h"
#include "rendering/playlist_block.h"
#include "rendering/redraw_jukebox.h"
#include "settings/config_values.h"
#include "shell/display_mode.h"
#include "shell/exit.h"
#include "shell/form_main.h"
#include "shell/log.h"

#include <array>

namespace {

// Seeks to ten seconds before the end: the letter F.
// Deliberate D-26: the key is fixed and comes before all bindings, so that slots labelled F cannot be typed.
// One expects a binding for it; engineers use the key to try the change of tracks.
constexpr int kSeekKey = 70;

// A transport key lends the focus' button its own word for the action.
void LendButton(Form_Main& form, const char* word) {
    const QString before = form.ActiveBtn;
    form.ActiveBtn = QString::fromLatin1(word);
    ValiderMain(form);
    form.ActiveBtn = before;
    DrawPlaylist(form);
    RedrawJukebox(form);
}

void Quit(Form_Main& form) {
    form.TrackNumberInput.clear();
    if (form.Fullscreen == u"true") {
        WriteLog(form, QStringLiteral(" Retour résolution d'origine %1 x %2 x %3")
                           .arg(form.ScreenWidth.value())
                           .arg(form.ScreenHeight.value())
                           .arg(form.ScreenBits.value()));
        ChangeRes(form, form.ScreenWidth.value(), form.ScreenHeight.value(), form.ScreenBits.value());
    }
    form.pump.DoEvents();
    WriteLog(form, QStringLiteral(" Fin "));
    ExitJukebox(form);
}

void Confirm(Form_Main& form) {
    form.TrackNumberInput.clear();
    if (form.ActiveZone == u"list") {
        Valider(form, form.NumTrack);
    } else if (form.ActiveZone == u"main") {
        ValiderMain(form);
        RedrawJukebox(form);
    } else if (form.ActiveZone == u"playlist") {
        ValiderPlaylist(form);
        RedrawJukebox(form);
    } else if (form.ActiveZone == u"command") {
        ValiderCommand(form);
    }
}

void StepBack(Form_Main& form) {
    form.TrackNumberInput.clear();
    if (form.ActiveZone == u"list") {
        Retour(form);
    }
}

void TakeCoin(Form_Main& form) {
    if (form.ManageCoin == u"true") {
        InsertCoin(form);
    }
}

struct KeyRow {
    QString SettingsState::*binding;
    const char* name;
    void (*action)(Form_Main& form, const CursorPlace& entry);
};

using S = SettingsState;

// clang-format off
constexpr std::array kKeys = {
    KeyRow{&S::KeyPreview,      "Preview",      [](Form_Main& f, const CursorPlace&) { LendButton(f, "preview"); }},
    KeyRow{&S::KeyStop,         "Stop",         [](Form_Main& f, const CursorPlace&) { LendButton(f, "stop"); }},
    KeyRow{&S::KeyPlay,         "Play",         [](Form_Main& f, const CursorPlace&) { LendButton(f, "play"); }},
    KeyRow{&S::KeyPause,        "Pause",        [](Form_Main& f, const CursorPlace&) { LendButton(f, "pause"); }},
    KeyRow{&S::KeyNext,         "Next",         [](Form_Main& f, const CursorPlace&) { LendButton(f, "next"); }},
    KeyRow{&S::KeyConfig,       "Config",       [](Form_Main& f, const CursorPlace&) { OpenConfigByKey(f); }},
    KeyRow{&S::KeyQuitter,      "Quitter",      [](Form_Main& f, const CursorPlace&) { Quit(f); }},
    KeyRow{&S::KeyValider,      "Valider",      [](Form_Main& f, const CursorPlace&) { Confirm(f); }},
    KeyRow{&S::KeyRetour,       "retour",       [](Form_Main& f, const CursorPlace&) { StepBack(f); }},
    KeyRow{&S::KeyGauche,       "gauche",       [](Form_Main& f, const CursorPlace&) { MoveLeft(f); }},
    KeyRow{&S::KeyDroite,       "droite",       MoveRight},
    KeyRow{&S::KeyHaut,         "haut",         [](Form_Main& f, const CursorPlace&) { MoveUp(f); }},
    KeyRow{&S::KeyBas,          "bas",          MoveDown},
    KeyRow{&S::KeyGotoNextZone, "gotonextzone", [](Form_Main& f, const CursorPlace&) { GoToNextZone(f); }},
    KeyRow{&S::KeyInsertCoin,   "insertcoin",   [](Form_Main& f, const CursorPlace&) { TakeCoin(f); }},
};
// clang-format on

static_assert(kKeys.size() == 15);

void LogSlot(Form_Main& form) {
    WriteLog(form, QStringLiteral(" NumTrack : %1").arg(form.NumTrack.value()));
    WriteLog(form, QStringLiteral(" InfoPath : ") + form.InfoPath(form.NumTrack));
    WriteLog(form, QStringLiteral(" InfoType : ") + form.InfoType(form.NumTrack));
    WriteLog(form, QStringLiteral(" InfoTitre : ") + form.InfoTitre(form.NumTrack));
}

// Tries the keys in their order. A binding that is no number raises 13 at the moment of its test.
// Deliberate D-25: such a binding ends the handler with InputBusy set, so that all input and the heartbeat
// stop for good. One expects the guard to be taken back; no handler's end restores anything.
void ActOnKey(Form_Main& form, Integer16 code, const CursorPlace& entry) {
    if (code == kSeekKey) {
        return SeekNearEnd(form);
    }
    for (const KeyRow& row : kKeys) {
        const QString& binding = form.*row.binding;
        const auto where = [&] {
            return ConfigPlace(form, u"Key", QString::fromLatin1(row.name)) +
                   QStringLiteral(" (expected a key code)");
        };
        if (TellingWhere(where, [&] { return CInt16(binding); }) == code) {
            return row.action(form, entry);
        }
    }
    SelectDirectly(form, code);
}

} // namespace

void Form_KeyDown(Form_Main& form, Integer16 KeyCode, Integer16 /*Shift*/) {
    form.VideoRunning = 0;
    const CursorPlace entry{form.SelX, form.SelY};
    const auto where = [&] {
        return form.CurrentPath + QStringLiteral(" (expected at most 100 folders inside one another)");
    };
    TellingWhere(where, [&] {
        form.DirHistorySelX(form.DirLevel) = CInt16(static_cast<double>(form.SelX));
        form.DirHistorySelY(form.DirLevel) = CInt16(static_cast<double>(form.SelY));
    });
    if (form.InputBusy != 0) {
        return;
    }
    form.InputBusy = 1;
    form.windows.MousePointer(QStringLiteral("Screen"), kPointerHourglass);
    form.IdleTicks = 1;
    form.NumTrack = SlotUnderCursor(form);
    LogSlot(form);
    ActOnKey(form, KeyCode, entry);
    form.windows.MousePointer(QStringLiteral("Screen"), kPointerDefault);
    form.InputBusy = 0;
}
