// Touch on the frame: press, drag, release, double tap.
#include "interaction/touch.h"

#include "core/conversions.h"
#include "core/run_time_error.h"
#include "interaction/credits.h"
#include "interaction/folders.h"
#include "interaction/menu.h"
#include "interaction/moves.h"
#include "interaction/valider.h"
#include "platform/event_pump.h"
#include "playback/engine.h"
#include "playback/play_time.h"
#include "playback/queue.h"
#include "rendering/block_buttons.h"
#include "rendering/geometry.h"
#include "rendering/page_anim.h"
#include "rendering/playlist_block.h"
#include "rendering/redraw_jukebox.h"
#include "state/form_main.h"
#include "state/paths.h"

#include <cmath>
#include <span>

namespace {

// A release less than this many pixels from the press is a tap, otherwise a drag.
constexpr int kTapDistance = 5;

// Returns true when the touch mode is on and no other event is being handled.
bool MayAct(const Form_Main& form) {
    return form.settings.TactileMode == u"true" && form.shell.InputBusy == 0;
}

// A place on the frame, in its pixels.
struct Point {
    double x = 0;
    double y = 0;
};

// Returns whether the point is inside a rectangle of the theme, given in design pixels. The left and top
// edges are inside.
bool Hits(const Form_Main& form, const Box& box, const Point& point) {
    const double left = box.x * form.frame.ZoneScaleX;
    const double top = box.y * form.frame.ZoneScaleY;
    return point.x >= left && point.x < left + box.width * form.frame.ZoneScaleX && point.y >= top &&
           point.y < top + box.height * form.frame.ZoneScaleY;
}

// Returns whether the point is in the area of the queue's rows.
bool OnQueue(const Form_Main& form, const Point& point) {
    return Hits(form, InBlock(form.theme.BlockPlaylist, form.theme.BlockPlaylistPlaylist), point);
}

void DragQueue(Form_Main& form, float y) {
    form.touch.TouchDeltaY = CInt16(form.touch.TouchStartY.value() - static_cast<double>(y));
    if (form.queue.PlaylistCount > 0) {
        ShowDraggedRows(form);
        RefreshMain(form);
    }
}

// Returns the row under a tap: below the last entry a number beyond the queue, a row's height or more above
// the first entry 0 or less.
// Deliberate D-22: the row's height is not scaled. One would expect it to be; cabinets in the field interpret
// taps this way.
Integer16 TappedRow(Form_Main& form, float y, double offset) {
    const double rowHeight = form.assets.ImgPlaylistPlaylistHilight.Height();
    // Deliberate D-137: without the picture of the bar a tap raises 11, which leaves InputBusy set. One would
    // expect the tap to select nothing; rows have the height of that picture.
    if (rowHeight == 0) {
        throw RunTimeError(
            kDivisionByZero,
            ThemeFile(form, QStringLiteral("playlist_playlisthilight.png")) +
                QStringLiteral(
                    ": missing, or no picture (expected the bar of a queue's row): its height is 0"));
    }
    const double top =
        form.theme.BlockPlaylist.Y.value() + form.theme.BlockPlaylistPlaylist.Y.value() - offset;
    return CInt16(std::trunc((static_cast<double>(y) - top * form.frame.ZoneScaleY) / rowHeight) + 1);
}

// Deliberate D-141: a row above the first one is selected as well, and the buttons raise 9 for it. One would
// expect only entries to be selected; the release is compared only with the last entry.
void SelectTappedRow(Form_Main& form, float y, double offset) {
    const Integer16 row = TappedRow(form, y, offset);
    if (row <= form.queue.PlaylistCount) {
        form.queue.PlaylistSelected = row;
        CopyPlaylistForTouch(form);
    }
}

void EndDrag(Form_Main& form, float y) {
    const double offset = ReleaseOffset(form);
    form.touch.TouchScrollOffset = CInt16(offset);
    if (form.touch.TouchDeltaY > -kTapDistance && form.touch.TouchDeltaY < kTapDistance) {
        SelectTappedRow(form, y, offset);
    }
    form.touch.TouchDragging = 0;
    form.touch.TouchDeltaY = 0;
}

void PlaySelected(Form_Main& form) {
    MakeCurrent(form, form.queue.PlaylistSelected);
    form.player.TrackChanging = 0;
    BassStopFile(form);
    ForgetRemain(form);
    BassPlayFile(form, form.queue.PlaylistPath(form.queue.PlaylistCurrent));
    NameAfterSlotUnderCursor(form);
    RedrawJukebox(form);
}

void PressSlots(Form_Main& form, const Point& point) {
    for (int column = 1; column <= 2; ++column) {
        for (int row = 1; row <= form.theme.ZoneListNbTracksParColonne.value(); ++row) {
            if (Hits(form, SlotInCache(form, {column, row}), point)) {
                form.cursor.SelX = static_cast<float>(column);
                form.cursor.SelY = static_cast<float>(row);
                RedrawJukebox(form);
                form.library.NumTrack = SlotUnderCursor(form);
                Valider(form, form.library.NumTrack);
                RedrawJukebox(form);
            }
        }
    }
}

void PressQueue(Form_Main& form, const Point& point) {
    form.touch.TouchDragging = 0;
    if (OnQueue(form, point)) {
        form.touch.TouchStartY = CInt16(point.y);
        form.touch.TouchDragging = 1;
    }
}

void PressCoinBox(Form_Main& form, const Point& point) {
    if (form.settings.ManageCoin == u"true" &&
        Hits(form, InBlock(form.theme.BlockMain, form.theme.BlockMainInsertCoin), point)) {
        InsertCoin(form);
    }
}

void PressButtons(Form_Main& form, std::span<const ButtonRow> buttons, const Corner16& corner,
                  const Point& point) {
    for (const ButtonRow& row : buttons) {
        if (Hits(form, InBlock(corner, form.theme.*row.box), point)) {
            form.cursor.ActiveBtn = QString::fromLatin1(row.word);
        }
    }
}

void PressAllButtons(Form_Main& form, const Point& point) {
    form.cursor.ActiveBtn.clear();
    PressButtons(form, MainButtons(), form.theme.BlockMain, point);
    PressButtons(form, PlaylistButtons(), form.theme.BlockPlaylist, point);
}

bool HitsNavigation(const Form_Main& form, const Box16& button, const Point& point) {
    return Hits(form, InZone(form, button), point);
}

void PressNavigation(Form_Main& form, const Point& point) {
    if (HitsNavigation(form, form.theme.ZoneListNavigationBack, point) &&
        (form.library.DirLevel > 0 || form.library.Dir1.Path == PlaylistsFolder(form))) {
        Retour(form);
    }
    if (HitsNavigation(form, form.theme.ZoneListNavigationPreviewPage, point) && form.library.NbPages > 1) {
        form.library.CurrentPage = PageBefore(form);
        PageAnim(form, QStringLiteral("-"));
    }
    if (HitsNavigation(form, form.theme.ZoneListNavigationNextPage, point) && form.library.NbPages > 1) {
        form.library.CurrentPage = PageAfter(form);
        PageAnim(form, QStringLiteral("+"));
    }
}

// Returns the text rectangle of a menu row, which depends on the row's type.
Box RowText(const Form_Main& form, int row) {
    const bool isListBox = form.menu.CommandType(form.menu.CommandCurrentMenu, row) == u"listbox";
    Box text = InBlock(form.theme.BlockCommand,
                       isListBox ? form.theme.BlockCommandListBoxTexte : form.theme.BlockCommandBtnTexte);
    text.y += form.assets.ImgCommandListbox.Height() * (row - 1);
    return text;
}

void PressMenu(Form_Main& form, const Point& point) {
    const Integer16 menu = form.menu.CommandCurrentMenu;
    for (int row = 1; menu == form.menu.CommandCurrentMenu && row <= form.menu.CommandRowCount(menu).value();
         ++row) {
        if (!Hits(form, RowText(form, row), point)) {
            continue;
        }
        form.menu.CommandCurrentId = row;
        if (form.menu.CommandType(menu, row) == u"listbox") {
            StepChoiceForward(form);
            ValiderCommand(form);
        } else if (form.menu.CommandType(menu, row) == u"btn") {
            RefreshMain(form);
            ValiderCommand(form);
        }
    }
}

void ActOnButton(Form_Main& form) {
    if (form.cursor.ActiveBtn.isEmpty()) {
        return;
    }
    RedrawJukebox(form);
    form.pump.DoEvents();
    RefreshMain(form);
    form.pump.DoEvents();
    ValiderMain(form);
    ValiderPlaylist(form);
}

// Handles a press on slots, queue, coin box, buttons, navigation and menu. One press can have several
// effects; the action of a button comes last.
void PressAt(Form_Main& form, const Point& point) {
    PressSlots(form, point);
    PressQueue(form, point);
    PressCoinBox(form, point);
    PressAllButtons(form, point);
    PressNavigation(form, point);
    PressMenu(form, point);
    ActOnButton(form);
}

} // namespace

void Picture_Main_MouseDown(Form_Main& form, Integer16 /*Button*/, Integer16 /*Shift*/, float X, float Y) {
    if (!MayAct(form)) {
        return;
    }
    form.shell.InputBusy = 1;
    form.shell.IdleTicks = 1;
    PressAt(form, {static_cast<double>(X), static_cast<double>(Y)});
    form.shell.InputBusy = 0;
}

// Deliberate D-23: the cursor does not follow the pointer. One would expect the slot under the pointer to be
// selected; that requires a value of InputBusy that is never set.
void Picture_Main_MouseMove(Form_Main& form, Integer16 Button, Integer16 /*Shift*/, float X, float Y) {
    form.touch.TouchLastX = CInt16(static_cast<double>(X));
    form.touch.TouchLastY = CInt16(static_cast<double>(Y));
    if (!MayAct(form)) {
        return;
    }
    form.shell.IdleTicks = 1;
    constexpr int kLeftButton = 1;
    if (Button == kLeftButton && form.touch.TouchDragging == 1) {
        form.shell.InputBusy = 1;
        DragQueue(form, Y);
        form.shell.InputBusy = 0;
    }
}

void Picture_Main_MouseUp(Form_Main& form, Integer16 /*Button*/, Integer16 /*Shift*/, float /*X*/, float Y) {
    if (!MayAct(form)) {
        return;
    }
    form.shell.InputBusy = 1;
    form.shell.IdleTicks = 1;
    if (form.touch.TouchDragging == 1 && form.queue.PlaylistCount > 0) {
        EndDrag(form, Y);
    }
    form.cursor.ActiveBtn.clear();
    RedrawJukebox(form);
    form.shell.InputBusy = 0;
}

void Picture_Main_DblClick(Form_Main& form) {
    if (!MayAct(form)) {
        return;
    }
    form.shell.InputBusy = 1;
    form.shell.IdleTicks = 1;
    const bool onQueue = OnQueue(form, {static_cast<double>(form.touch.TouchLastX.value()),
                                        static_cast<double>(form.touch.TouchLastY.value())});
    if (onQueue && form.queue.PlaylistSelected != form.queue.PlaylistCurrent) {
        PlaySelected(form);
    }
    form.shell.InputBusy = 0;
}
