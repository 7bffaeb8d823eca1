// Moving the cursor and the focus.
#include "interaction/moves.h"

#include "interaction/menu.h"
#include "interaction/valider.h"
#include "playback/queue.h"
#include "rendering/command_block.h"
#include "rendering/main_block.h"
#include "rendering/page_anim.h"
#include "rendering/playlist_block.h"
#include "rendering/redraw_jukebox.h"
#include "state/form_main.h"
#include "state/pause.h"

#include <QStringList>

#include <algorithm>

namespace {

const QStringList kMainButtons = {QStringLiteral("preview"), QStringLiteral("stop"), QStringLiteral("play"),
                                  QStringLiteral("pause"), QStringLiteral("next")};
const QStringList kPlaylistButtons = {QStringLiteral("down"), QStringLiteral("up"), QStringLiteral("remove"),
                                      QStringLiteral("load"), QStringLiteral("save")};

void TurnPageBack(Form_Main& form) {
    form.library.CurrentPage = PageBefore(form);
    form.cursor.SelX = 2;
    PageAnim(form, QStringLiteral("-"));
}

void TurnPageForward(Form_Main& form) {
    form.library.CurrentPage = PageAfter(form);
    form.cursor.SelX = 1;
    PageAnim(form, QStringLiteral("+"));
}

bool HasNotMoved(const Form_Main& form, const CursorPlace& entry) {
    return form.cursor.SelX == entry.SelX && form.cursor.SelY == entry.SelY;
}

// Moves the focus among the buttons of the zone. A word that is not one of them does not change.
void StepButton(Form_Main& form, int step) {
    const QStringList& cycle = form.cursor.ActiveZone == u"main" ? kMainButtons : kPlaylistButtons;
    const qsizetype at = cycle.indexOf(form.cursor.ActiveBtn);
    if (at >= 0) {
        form.cursor.ActiveBtn = cycle[(at + step + cycle.size()) % cycle.size()];
    }
    SetButtonInfos(form);
    RedrawJukebox(form);
}

bool OnButtons(const Form_Main& form) {
    return form.cursor.ActiveZone == u"main" || form.cursor.ActiveZone == u"playlist";
}

// Moves up from row 1 to the last row of the previous column or page.
void LeaveColumnUpwards(Form_Main& form) {
    form.cursor.SelY = static_cast<float>(form.theme.ZoneListNbTracksParColonne.value());
    if (form.cursor.SelX != 1) {
        form.cursor.SelX -= 1;
        RedrawJukebox(form);
    } else if (form.library.NbPages > 1) {
        TurnPageBack(form);
    } else {
        form.cursor.SelX = 2;
        RedrawJukebox(form);
    }
}

// Moves down from the last row to the first row of the next column or page.
void LeaveColumnDownwards(Form_Main& form) {
    form.cursor.SelY = 1;
    if (form.cursor.SelX == 1) {
        form.cursor.SelX += 1;
        RedrawJukebox(form);
    } else if (form.library.NbPages > 1) {
        // Deliberate D-13: the page number wraps to 0 only beyond NbPages, so the empty page numbered NbPages
        // is reached. One would expect the page to wrap as for the right arrow; the frame that ends the turn
        // corrects the page.
        form.library.CurrentPage += 1;
        if (form.library.CurrentPage > form.library.NbPages) {
            form.library.CurrentPage = 0;
        }
        form.cursor.SelX = 1;
        PageAnim(form, QStringLiteral("+"));
    } else {
        form.cursor.SelX = 1;
        RedrawJukebox(form);
    }
}

void GoHome(Form_Main& form) {
    form.cursor.SelX = 1;
    form.cursor.SelY = 1;
    form.library.CurrentPage = 0;
    if (form.library.NbPages > 1) {
        PageAnim(form, QStringLiteral("+"));
    } else {
        RedrawJukebox(form);
    }
}

void MoveDownInList(Form_Main& form, const CursorPlace& entry) {
    form.cursor.SelY += 1;
    if (form.cursor.SelY == static_cast<float>(form.theme.ZoneListNbTracksParColonne.value() + 1)) {
        LeaveColumnDownwards(form);
    } else {
        RedrawJukebox(form);
    }
    if (HasNotMoved(form, entry)) {
        GoHome(form);
    }
}

void MoveRightInList(Form_Main& form, const CursorPlace& entry) {
    if (form.cursor.SelX != 2) {
        form.cursor.SelX += 1;
        RedrawJukebox(form);
    } else if (form.library.NbPages > 1) {
        TurnPageForward(form);
    }
    if (HasNotMoved(form, entry) && form.library.NbPages > 1) {
        TurnPageForward(form);
    }
}

void MoveLeftInList(Form_Main& form) {
    if (form.cursor.SelX != 1) {
        form.cursor.SelX -= 1;
        RedrawJukebox(form);
    } else if (form.library.NbPages > 1) {
        TurnPageBack(form);
    }
}

void MoveUpInList(Form_Main& form) {
    form.cursor.SelY -= 1;
    if (form.cursor.SelY == 0) {
        LeaveColumnUpwards(form);
    } else {
        RedrawJukebox(form);
    }
}

// Return the row above or below, wrapping between 1 and `last`.
Integer16 RowAbove(Integer16 row, Integer16 last) {
    return row - 1 < 1 ? last : row - 1;
}
Integer16 RowBelow(Integer16 row, Integer16 last) {
    return row + 1 > last ? Integer16(1) : row + 1;
}

using RowStep = Integer16 (*)(Integer16 row, Integer16 last);

void StepVertically(Form_Main& form, RowStep step) {
    if (form.cursor.ActiveZone == u"playlist") {
        form.queue.PlaylistSelected = step(form.queue.PlaylistSelected, form.queue.PlaylistCount);
        RedrawJukebox(form);
    } else if (form.cursor.ActiveZone == u"command") {
        form.menu.CommandCurrentId =
            step(form.menu.CommandCurrentId, form.menu.CommandRowCount(form.menu.CommandCurrentMenu));
        RedrawJukebox(form);
    }
}

// Scrolls the queue from the selected row to the playing one, one design pixel per step.
void SlideToPlaying(Form_Main& form) {
    const int rowHeight = form.assets.ImgPlaylistPlaylistHilight.Height();
    const int height =
        std::min(rowHeight * form.queue.PlaylistCount.value(), form.theme.BlockPlaylistPlaylist.H.value());
    const int from = (form.queue.PlaylistSelected.value() - 1) * rowHeight;
    const int to = (form.queue.PlaylistCurrent.value() - 1) * rowHeight;
    const int step = form.queue.PlaylistSelected > form.queue.PlaylistCurrent ? -1 : 1;
    for (int top = from; top != to + step; top += step) {
        CopyPlaylistRows(form, form.frame.Picture_Playlist, top, height);
        RefreshMain(form);
        Pause(form, 300);
    }
    SelectCurrent(form);
}

void Focus(Form_Main& form, const char* zone, const char* button) {
    form.cursor.ActiveZone = QString::fromLatin1(zone);
    form.cursor.ActiveBtn = QString::fromLatin1(button);
}

void Rotate(Form_Main& form) {
    if (form.cursor.ActiveZone == u"list") {
        Focus(form, "main", "pause");
    } else if (form.cursor.ActiveZone == u"main") {
        Focus(form, "playlist", "down");
    } else if (form.cursor.ActiveZone == u"playlist") {
        Focus(form, "command", "config");
    } else if (form.cursor.ActiveZone == u"command") {
        Focus(form, "list", "");
        form.menu.CommandCurrentMenu = 1;
        form.menu.CommandCurrentId = 1;
        DrawCommand(form);
    }
}

bool IsOn(const QString& shown, const QString& active) {
    return shown == u"true" && active == u"true";
}

void SkipZonesSwitchedOff(Form_Main& form) {
    if (form.cursor.ActiveZone == u"main" &&
        !IsOn(form.settings.ShowMainZone, form.settings.ActiveMainZone)) {
        Focus(form, "playlist", "down");
    }
    if (form.cursor.ActiveZone == u"playlist" &&
        !IsOn(form.settings.ShowPlaylistZone, form.settings.ActivePlaylistZone)) {
        Focus(form, "command", "config");
    }
    if (form.cursor.ActiveZone == u"command" &&
        !IsOn(form.settings.ShowCommandZone, form.settings.ActiveCommandZone)) {
        Focus(form, "list", "");
    }
}

// Returns the state of the information lines when the focus returns to the list.
QString InfosOfList(const Form_Main& form) {
    if (form.settings.ManageCoin == u"true" && form.coins.Credits == 0) {
        return QStringLiteral("insertcoin");
    }
    return form.queue.PlaylistCount > 0 ? QStringLiteral("nowplaying") : QStringLiteral("selecttrack");
}

} // namespace

void MoveLeft(Form_Main& form) {
    form.cursor.TrackNumberInput.clear();
    if (form.cursor.ActiveZone == u"list") {
        MoveLeftInList(form);
    } else if (OnButtons(form)) {
        StepButton(form, -1);
    } else if (OnListboxRow(form)) {
        StepChoiceBack(form);
        ValiderCommand(form);
    }
}

void MoveRight(Form_Main& form, const CursorPlace& entry) {
    form.cursor.TrackNumberInput.clear();
    if (form.cursor.ActiveZone == u"list") {
        MoveRightInList(form, entry);
    } else if (OnButtons(form)) {
        StepButton(form, 1);
    } else if (OnListboxRow(form)) {
        StepChoiceForward(form);
        ValiderCommand(form);
    }
}

void MoveUp(Form_Main& form) {
    form.cursor.TrackNumberInput.clear();
    if (form.cursor.ActiveZone == u"list") {
        MoveUpInList(form);
    } else {
        StepVertically(form, RowAbove);
    }
}

void MoveDown(Form_Main& form, const CursorPlace& entry) {
    form.cursor.TrackNumberInput.clear();
    if (form.cursor.ActiveZone == u"list") {
        MoveDownInList(form, entry);
    } else {
        StepVertically(form, RowBelow);
    }
}

Integer16 PageBefore(const Form_Main& form) {
    const Integer16 page = form.library.CurrentPage - 1;
    return page < 0 ? form.library.NbPages - 1 : page;
}

Integer16 PageAfter(const Form_Main& form) {
    const Integer16 page = form.library.CurrentPage + 1;
    return page >= form.library.NbPages ? Integer16(0) : page;
}

void GoToNextZone(Form_Main& form) {
    form.cursor.TrackNumberInput.clear();
    if (form.cursor.ActiveZone == u"playlist" && form.queue.PlaylistSelected != form.queue.PlaylistCurrent) {
        SlideToPlaying(form);
    }
    Rotate(form);
    SkipZonesSwitchedOff(form);
    SetButtonInfos(form);
    if (form.frame.BlockMainInfos == u"btn") {
        SetInfos(form, InfosOfList(form));
    }
    RedrawJukebox(form);
}
