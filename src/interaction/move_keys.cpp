// What the four arrows do in the list, on the buttons, in the queue and in the menu.
#include "interaction/move_keys.h"

#include "interaction/cursor.h"
#include "interaction/info_lines.h"
#include "interaction/menu_choices.h"
#include "interaction/valider_command.h"
#include "rendering/page_anim.h"
#include "rendering/redraw_jukebox.h"
#include "shell/form_main.h"

#include <QStringList>

namespace {

const QStringList kMainButtons = {QStringLiteral("preview"), QStringLiteral("stop"), QStringLiteral("play"),
                                  QStringLiteral("pause"), QStringLiteral("next")};
const QStringList kPlaylistButtons = {QStringLiteral("down"), QStringLiteral("up"), QStringLiteral("remove"),
                                      QStringLiteral("load"), QStringLiteral("save")};

void TurnPageBack(Form_Main& form) {
    form.CurrentPage = PageBefore(form);
    form.SelX = 2;
    PageAnim(form, QStringLiteral("-"));
}

void TurnPageForward(Form_Main& form) {
    form.CurrentPage = PageAfter(form);
    form.SelX = 1;
    PageAnim(form, QStringLiteral("+"));
}

bool HasNotMoved(const Form_Main& form, const CursorPlace& entry) {
    return form.SelX == entry.SelX && form.SelY == entry.SelY;
}

// Moves the focus among the buttons of the zone. A word that is not in the cycle stays as it is.
void StepButton(Form_Main& form, int step) {
    const QStringList& cycle = form.ActiveZone == u"main" ? kMainButtons : kPlaylistButtons;
    const qsizetype at = cycle.indexOf(form.ActiveBtn);
    if (at >= 0) {
        form.ActiveBtn = cycle[(at + step + cycle.size()) % cycle.size()];
    }
    SetButtonInfos(form);
    RedrawJukebox(form);
}

bool OnButtons(const Form_Main& form) {
    return form.ActiveZone == u"main" || form.ActiveZone == u"playlist";
}

// Row 1 was left upwards: the last row of the column before.
void LeaveColumnUpwards(Form_Main& form) {
    form.SelY = static_cast<float>(form.ZoneListNbTracksParColonne.value());
    if (form.SelX != 1) {
        form.SelX -= 1;
        RedrawJukebox(form);
    } else if (form.NbPages > 1) {
        TurnPageBack(form);
    } else {
        form.SelX = 2;
        RedrawJukebox(form);
    }
}

// The last row was left downwards: the first row of the next column or page.
void LeaveColumnDownwards(Form_Main& form) {
    form.SelY = 1;
    if (form.SelX == 1) {
        form.SelX += 1;
        RedrawJukebox(form);
    } else if (form.NbPages > 1) {
        // Deliberate D-13: the page number returns to 0 only beyond NbPages, so that the empty page numbered
        // NbPages is reached. One expects the wrap of the right arrow; the frame that ends the turn repairs
        // the page.
        form.CurrentPage += 1;
        if (form.CurrentPage > form.NbPages) {
            form.CurrentPage = 0;
        }
        form.SelX = 1;
        PageAnim(form, QStringLiteral("+"));
    } else {
        form.SelX = 1;
        RedrawJukebox(form);
    }
}

void GoHome(Form_Main& form) {
    form.SelX = 1;
    form.SelY = 1;
    form.CurrentPage = 0;
    if (form.NbPages > 1) {
        PageAnim(form, QStringLiteral("+"));
    } else {
        RedrawJukebox(form);
    }
}

void MoveDownInList(Form_Main& form, const CursorPlace& entry) {
    form.SelY += 1;
    if (form.SelY == static_cast<float>(form.ZoneListNbTracksParColonne.value() + 1)) {
        LeaveColumnDownwards(form);
    } else {
        RedrawJukebox(form);
    }
    if (HasNotMoved(form, entry)) {
        GoHome(form);
    }
}

void MoveRightInList(Form_Main& form, const CursorPlace& entry) {
    if (form.SelX != 2) {
        form.SelX += 1;
        RedrawJukebox(form);
    } else if (form.NbPages > 1) {
        TurnPageForward(form);
    }
    if (HasNotMoved(form, entry) && form.NbPages > 1) {
        TurnPageForward(form);
    }
}

void MoveLeftInList(Form_Main& form) {
    if (form.SelX != 1) {
        form.SelX -= 1;
        RedrawJukebox(form);
    } else if (form.NbPages > 1) {
        TurnPageBack(form);
    }
}

void MoveUpInList(Form_Main& form) {
    form.SelY -= 1;
    if (form.SelY == 0) {
        LeaveColumnUpwards(form);
    } else {
        RedrawJukebox(form);
    }
}

// The number of a row one up or one down, going round between 1 and `last`.
Integer16 RowAbove(Integer16 row, Integer16 last) {
    return row - 1 < 1 ? last : row - 1;
}
Integer16 RowBelow(Integer16 row, Integer16 last) {
    return row + 1 > last ? Integer16(1) : row + 1;
}

using RowStep = Integer16 (*)(Integer16 row, Integer16 last);

void StepVertically(Form_Main& form, RowStep step) {
    if (form.ActiveZone == u"playlist") {
        form.PlaylistSelected = step(form.PlaylistSelected, form.PlaylistCount);
        RedrawJukebox(form);
    } else if (form.ActiveZone == u"command") {
        form.CommandCurrentId = step(form.CommandCurrentId, form.CommandRowCount(form.CommandCurrentMenu));
        RedrawJukebox(form);
    }
}

} // namespace

void MoveLeft(Form_Main& form) {
    form.TrackNumberInput.clear();
    if (form.ActiveZone == u"list") {
        MoveLeftInList(form);
    } else if (OnButtons(form)) {
        StepButton(form, -1);
    } else if (OnListboxRow(form)) {
        StepChoiceBack(form);
        ValiderCommand(form);
    }
}

void MoveRight(Form_Main& form, const CursorPlace& entry) {
    form.TrackNumberInput.clear();
    if (form.ActiveZone == u"list") {
        MoveRightInList(form, entry);
    } else if (OnButtons(form)) {
        StepButton(form, 1);
    } else if (OnListboxRow(form)) {
        StepChoiceForward(form);
        ValiderCommand(form);
    }
}

void MoveUp(Form_Main& form) {
    form.TrackNumberInput.clear();
    if (form.ActiveZone == u"list") {
        MoveUpInList(form);
    } else {
        StepVertically(form, RowAbove);
    }
}

void MoveDown(Form_Main& form, const CursorPlace& entry) {
    form.TrackNumberInput.clear();
    if (form.ActiveZone == u"list") {
        MoveDownInList(form, entry);
    } else {
        StepVertically(form, RowBelow);
    }
}
