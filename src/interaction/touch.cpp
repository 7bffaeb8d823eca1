// Touch and mouse on the frame: press, drag of the queue, release, double tap.
#include "interaction/touch.h"

#include "core/conversions.h"
#include "core/run_time_error.h"
#include "interaction/touch_press.h"
#include "interaction/touch_targets.h"
#include "playback/engine.h"
#include "rendering/playlist_block.h"
#include "rendering/redraw_jukebox.h"
#include "shell/form_main.h"
#include "theme/load_theme.h"

#include <cmath>

namespace {

// A release this near to the press is a tap; a longer way is a drag.
constexpr int kTapDistance = 5;

// The touch mode is on and no other event is being handled.
bool MayAct(const Form_Main& form) {
    return form.TactileMode == u"true" && form.InputBusy == 0;
}

void DragQueue(Form_Main& form, float y) {
    form.TouchDeltaY = CInt16(form.TouchStartY.value() - static_cast<double>(y));
    if (form.PlaylistCount > 0) {
        ShowDraggedRows(form);
        RefreshMain(form);
    }
}

// The row under a tap: below the last entry beyond the queue, above the first one 0 or less.
// Deliberate D-22: the row's height is not scaled. One expects it to be; taps are read so on cabinets in the
// field.
Integer16 TappedRow(Form_Main& form, float y, double offset) {
    const double rowHeight = form.ImgPlaylistPlaylistHilight.Height();
    // Deliberate D-137: without the picture of the bar a tap raises 11, which leaves InputBusy set. One
    // expects the tap to select nothing. Rows have the height of that picture.
    if (rowHeight == 0) {
        throw RunTimeError(
            kDivisionByZero,
            ThemeFile(form, QStringLiteral("playlist_playlisthilight.png")) +
                QStringLiteral(
                    ": missing, or no picture (expected the bar of a queue's row): its height is 0"));
    }
    const double top = form.BlockPlaylistY.value() + form.BlockPlaylistPlaylistY.value() - offset;
    return CInt16(std::trunc((static_cast<double>(y) - top * form.ZoneScaleY) / rowHeight) + 1);
}

// Deliberate D-141: a row above the first one is selected as well, and the buttons raise 9 for it. One
// expects only entries to be selected. The release is compared with the last entry alone.
void SelectTappedRow(Form_Main& form, float y, double offset) {
    const Integer16 row = TappedRow(form, y, offset);
    if (row <= form.PlaylistCount) {
        form.PlaylistSelected = row;
        CopyPlaylistForTouch(form);
    }
}

void EndDrag(Form_Main& form, float y) {
    const double offset = ReleaseOffset(form);
    form.TouchScrollOffset = CInt16(offset);
    if (form.TouchDeltaY > -kTapDistance && form.TouchDeltaY < kTapDistance) {
        SelectTappedRow(form, y, offset);
    }
    form.TouchDragging = 0;
    form.TouchDeltaY = 0;
}

void PlaySelected(Form_Main& form) {
    form.PlaylistCurrent = form.PlaylistSelected;
    form.TrackChanging = 0;
    BassStopFile(form);
    form.Remain.clear();
    BassPlayFile(form, form.PlaylistPath(form.PlaylistCurrent));
    // The slot under the cursor names the track here as well, see D-12.
    form.NowPlayingPath = form.InfoPath(form.NumTrack);
    form.NowPlayingTitre = form.InfoTitre(form.NumTrack);
    RedrawJukebox(form);
}

} // namespace

void Picture_Main_MouseDown(Form_Main& form, Integer16 /*Button*/, Integer16 /*Shift*/, float X, float Y) {
    if (!MayAct(form)) {
        return;
    }
    form.InputBusy = 1;
    form.IdleTicks = 1;
    PressAt(form, X, Y);
    form.InputBusy = 0;
}

// Deliberate D-23: the cursor does not follow the pointer. One expects a slot under the pointer to be
// selected; the test stands behind a value of InputBusy that nothing ever sets.
void Picture_Main_MouseMove(Form_Main& form, Integer16 Button, Integer16 /*Shift*/, float X, float Y) {
    form.TouchLastX = CInt16(static_cast<double>(X));
    form.TouchLastY = CInt16(static_cast<double>(Y));
    if (!MayAct(form)) {
        return;
    }
    form.IdleTicks = 1;
    constexpr int kLeftButton = 1;
    if (Button == kLeftButton && form.TouchDragging == 1) {
        form.InputBusy = 1;
        DragQueue(form, Y);
        form.InputBusy = 0;
    }
}

void Picture_Main_MouseUp(Form_Main& form, Integer16 /*Button*/, Integer16 /*Shift*/, float /*X*/, float Y) {
    if (!MayAct(form)) {
        return;
    }
    form.InputBusy = 1;
    form.IdleTicks = 1;
    if (form.TouchDragging == 1 && form.PlaylistCount > 0) {
        EndDrag(form, Y);
    }
    form.ActiveBtn.clear();
    RedrawJukebox(form);
    form.InputBusy = 0;
}

void Picture_Main_DblClick(Form_Main& form) {
    if (!MayAct(form)) {
        return;
    }
    form.InputBusy = 1;
    form.IdleTicks = 1;
    const bool onQueue = OnQueue(form, form.TouchLastX.value(), form.TouchLastY.value());
    if (onQueue && form.PlaylistSelected != form.PlaylistCurrent) {
        PlaySelected(form);
    }
    form.InputBusy = 0;
}
