// Handling pressed keys, and direct selection by typed key codes.
#include "interaction/keys.h"

#include "core/conversions.h"
#include "core/run_time_error.h"
#include "interaction/credits.h"
#include "interaction/folders.h"
#include "interaction/menu.h"
#include "interaction/moves.h"
#include "interaction/valider.h"
#include "platform/event_pump.h"
#include "platform/windows.h"
#include "playback/engine.h"
#include "rendering/geometry.h"
#include "rendering/playlist_block.h"
#include "rendering/redraw_jukebox.h"
#include "settings/config.h"
#include "state/form_main.h"
#include "state/log.h"

#include <array>

namespace {

// The letter F seeks to ten seconds before the end.
// Deliberate D-26: the key is fixed and tested before all bindings, so slots labelled F cannot be typed. One
// would expect a binding for it; engineers use the key to test the change of tracks.
constexpr int kSeekKey = 70;

// Performs the action of a transport key: sets ActiveBtn to the button's word for the call.
void LendButton(Form_Main& form, const char* word) {
    const QString before = form.cursor.ActiveBtn;
    form.cursor.ActiveBtn = QString::fromLatin1(word);
    ValiderMain(form);
    form.cursor.ActiveBtn = before;
    DrawPlaylist(form);
    RedrawJukebox(form);
}

void Quit(Form_Main& form) {
    form.cursor.TrackNumberInput.clear();
    if (form.settings.Fullscreen == u"true") {
        WriteLog(form, QStringLiteral(" Retour résolution d'origine %1 x %2 x %3")
                           .arg(form.shell.ScreenWidth.value())
                           .arg(form.shell.ScreenHeight.value())
                           .arg(form.shell.ScreenBits.value()));
        form.roof.ChangeRes(form, form.shell.ScreenWidth.value(), form.shell.ScreenHeight.value(),
                            form.shell.ScreenBits.value());
    }
    form.pump.DoEvents();
    WriteLog(form, QStringLiteral(" Fin "));
    form.roof.ExitJukebox(form);
}

void Confirm(Form_Main& form) {
    form.cursor.TrackNumberInput.clear();
    if (form.cursor.ActiveZone == u"list") {
        Valider(form, form.library.NumTrack);
    } else if (form.cursor.ActiveZone == u"main") {
        ValiderMain(form);
        RedrawJukebox(form);
    } else if (form.cursor.ActiveZone == u"playlist") {
        ValiderPlaylist(form);
        RedrawJukebox(form);
    } else if (form.cursor.ActiveZone == u"command") {
        ValiderCommand(form);
    }
}

void StepBack(Form_Main& form) {
    form.cursor.TrackNumberInput.clear();
    if (form.cursor.ActiveZone == u"list") {
        Retour(form);
    }
}

void TakeCoin(Form_Main& form) {
    if (form.settings.ManageCoin == u"true") {
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
    WriteLog(form, QStringLiteral(" NumTrack : %1").arg(form.library.NumTrack.value()));
    WriteLog(form, QStringLiteral(" InfoPath : ") + form.library.InfoPath(form.library.NumTrack));
    WriteLog(form, QStringLiteral(" InfoType : ") + form.library.InfoType(form.library.NumTrack));
    WriteLog(form, QStringLiteral(" InfoTitre : ") + form.library.InfoTitre(form.library.NumTrack));
}

// Compares the code with the bindings, in the order of the table. A binding that is not a number raises 13
// when it is compared.
// Deliberate D-25: such a binding ends the handler with InputBusy set, so all input and the heartbeat stop
// for good. One would expect InputBusy to be reset; no handler restores anything when it ends by an error.
void ActOnKey(Form_Main& form, Integer16 code, const CursorPlace& entry) {
    if (code == kSeekKey) {
        return SeekNearEnd(form);
    }
    for (const KeyRow& row : kKeys) {
        const QString& binding = form.settings.*row.binding;
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

// The placeholder for the page letter in a slot's codes.
const QString kPageLetter = QStringLiteral("33");

bool BeginsWithLetter(const QString& input) {
    const double code = Val(input.left(2));
    return code >= 'A' && code <= 'Z';
}

// Returns the slot's codes with the page letter in them: A and B on the first pair of pages, then C and D.
QString WithPageLetter(const Form_Main& form, QString keys, int column) {
    const Integer16 letter = Integer16(64) + form.library.CurrentPage * 2 + column;
    return keys.replace(kPageLetter, QString::number(letter.value()));
}

void Hit(Form_Main& form, int column, int row) {
    form.cursor.SelX = static_cast<float>(column);
    form.cursor.SelY = static_cast<float>(row);
    RedrawJukebox(form);
    form.library.NumTrack = SlotUnderCursor(form);
    StretchSlot(form, form.frame.Picture_CacheHilight, form.library.NumTrack);
    RefreshMain(form);
    form.pump.DoEvents();
    Valider(form, form.library.NumTrack);
    form.pump.DoEvents();
    RedrawJukebox(form);
    form.cursor.TrackNumberInput.clear();
}

enum class Match { kNone, kPartly, kWhole, kUndecided };

// How the input matches one slot. kUndecided keeps the result of earlier slots.
Match MatchSlot(const Form_Main& form, int column, int row) {
    const QString& input = form.cursor.TrackNumberInput;
    QString keys = form.slots.ZoneListPisteNumSaisieKeys(column, row);
    Match match = keys.startsWith(input) ? Match::kPartly : Match::kUndecided;
    if (keys == input) {
        return Match::kWhole;
    }
    if (keys.contains(kPageLetter) && BeginsWithLetter(input)) {
        match = Match::kPartly;
        keys = WithPageLetter(form, keys, column);
        if (keys == input) {
            return Match::kWhole;
        }
    }
    return input.size() > keys.size() ? Match::kNone : match;
}

} // namespace

void Form_KeyDown(Form_Main& form, Integer16 KeyCode, Integer16 /*Shift*/) {
    form.player.VideoRunning = 0;
    const CursorPlace entry{form.cursor.SelX, form.cursor.SelY};
    const auto where = [&] {
        return form.library.CurrentPath +
               QStringLiteral(" (expected at most 100 folders inside one another)");
    };
    TellingWhere(where, [&] {
        form.library.DirHistorySelX(form.library.DirLevel) = CInt16(static_cast<double>(form.cursor.SelX));
        form.library.DirHistorySelY(form.library.DirLevel) = CInt16(static_cast<double>(form.cursor.SelY));
    });
    if (form.shell.InputBusy != 0) {
        return;
    }
    form.shell.InputBusy = 1;
    form.windows.MousePointer(QStringLiteral("Screen"), kPointerHourglass);
    form.shell.IdleTicks = 1;
    form.library.NumTrack = SlotUnderCursor(form);
    LogSlot(form);
    ActOnKey(form, KeyCode, entry);
    form.windows.MousePointer(QStringLiteral("Screen"), kPointerDefault);
    form.shell.InputBusy = 0;
}

void SelectDirectly(Form_Main& form, Integer16 code) {
    const QString number = QString::number(code.value());
    form.cursor.TrackNumberInput =
        form.cursor.TrackNumberInput.isEmpty() ? number : form.cursor.TrackNumberInput + u'|' + number;
    bool canMatch = false;
    for (int column = 1; column <= 2; ++column) {
        for (int row = 1; row <= form.theme.ZoneListNbTracksParColonne.value(); ++row) {
            const Match match = MatchSlot(form, column, row);
            if (match == Match::kWhole) {
                return Hit(form, column, row);
            }
            if (match != Match::kUndecided) {
                canMatch = match == Match::kPartly;
            }
        }
    }
    if (!canMatch) {
        form.cursor.TrackNumberInput.clear();
    }
}
