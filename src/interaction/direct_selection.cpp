// Choosing a slot by typing its key codes.
#include "interaction/direct_selection.h"

#include "core/conversions.h"
#include "interaction/valider.h"
#include "platform/event_pump.h"
#include "rendering/geometry.h"
#include "rendering/redraw_jukebox.h"
#include "shell/form_main.h"

namespace {

// Stands in a slot's codes for the letter of the page.
const QString kPageLetter = QStringLiteral("33");

bool BeginsWithLetter(const QString& input) {
    const double code = Val(input.left(2));
    return code >= 'A' && code <= 'Z';
}

// The slot's codes with the page's letter in them: A and B on the first pair of pages, then C and D.
QString WithPageLetter(const Form_Main& form, QString keys, int column) {
    const Integer16 letter = Integer16(64) + form.CurrentPage * 2 + column;
    return keys.replace(kPageLetter, QString::number(letter.value()));
}

void Hit(Form_Main& form, int column, int row) {
    form.SelX = static_cast<float>(column);
    form.SelY = static_cast<float>(row);
    RedrawJukebox(form);
    form.NumTrack = SlotUnderCursor(form);
    StretchSlot(form, form.Picture_CacheHilight, form.NumTrack);
    RefreshMain(form);
    form.pump.DoEvents();
    Valider(form, form.NumTrack);
    form.pump.DoEvents();
    RedrawJukebox(form);
    form.TrackNumberInput.clear();
}

enum class Match { kNone, kPartly, kWhole, kUndecided };

// How the input stands to one slot. kUndecided leaves what earlier slots said.
Match MatchSlot(const Form_Main& form, int column, int row) {
    const QString& input = form.TrackNumberInput;
    QString keys = form.ZoneListPisteNumSaisieKeys(column, row);
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

void SelectDirectly(Form_Main& form, Integer16 code) {
    const QString number = QString::number(code.value());
    form.TrackNumberInput = form.TrackNumberInput.isEmpty() ? number : form.TrackNumberInput + u'|' + number;
    bool canMatch = false;
    for (int column = 1; column <= 2; ++column) {
        for (int row = 1; row <= form.ZoneListNbTracksParColonne.value(); ++row) {
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
        form.TrackNumberInput.clear();
    }
}
