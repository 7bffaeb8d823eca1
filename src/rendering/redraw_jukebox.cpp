// The whole frame, step by step.
#include "rendering/redraw_jukebox.h"

#include "core/conversions.h"
#include "core/media_kind.h"
#include "core/path_text.h"
#include "library/covers.h"
#include "library/tag_covers.h"
#include "platform/windows.h"
#include "playback/engine.h"
#include "playback/remain.h"
#include "rendering/block_buttons.h"
#include "rendering/command_block.h"
#include "rendering/geometry.h"
#include "rendering/main_block.h"
#include "rendering/playlist_block.h"
#include "rendering/track_zone.h"
#include "rendering/video_surfaces.h"
#include "shell/form_main.h"
#include "shell/log.h"
#include "shell/pointers.h"

namespace {

// From this many idle ticks on the big cover gives way.
constexpr int kIdle = 20;

void ClampCursor(Form_Main& form) {
    if (form.SelX < 1) {
        form.SelX = 1;
    }
    if (form.SelY < 1) {
        form.SelY = 1;
    }
}

// An empty page: on to the other end of the list.
void LeaveEmptyPage(Form_Main& form) {
    if (form.CurrentPage == 0) {
        form.CurrentPage = form.NbPages;
        form.SelX = 2;
        form.SelY = static_cast<float>(form.ZoneListNbTracksParColonne.value());
    } else {
        form.CurrentPage = 0;
        form.SelX = 1;
        form.SelY = 1;
    }
    DrawZoneList(form);
}

// Puts the cursor back on the last real entry when it stands on an empty slot.
void RepairCursor(Form_Main& form) {
    form.NumTrack = SlotUnderCursor(form);
    while (form.SelX > 0 && form.InfoType(form.NumTrack).isEmpty()) {
        form.SelY -= 1;
        if (form.SelY == 0) {
            form.SelX -= 1;
            form.SelY = static_cast<float>(form.ZoneListNbTracksParColonne.value());
        }
        form.NumTrack = SlotUnderCursor(form);
        if (form.NumTrack == -1) {
            LeaveEmptyPage(form);
            return;
        }
    }
}

void CopyZone(Form_Main& form) {
    const Surface& cache = form.Picture_Cache;
    StretchBlt(form.Picture_Main, ScaledBox(form, 0, 0, cache.Width(), cache.Height()), cache,
               {0, 0, cache.Width(), cache.Height()});
}

void DrawNavigation(Form_Main& form, Integer16 x, Integer16 y, Integer16 width, Integer16 height) {
    Box to = ScaledBox(form, 0, 0, width.value(), height.value());
    to.x = CInt32(x.value() * form.ZoneScaleX + form.ZoneListX.value()).value();
    to.y = CInt32(y.value() * form.ZoneScaleY + form.ZoneListY.value()).value();
    form.ImgZoneListNavigation.Render(form.Picture_Main, to.x, to.y, to.width, to.height, x.value(),
                                      y.value(), width.value(), height.value());
}

void DrawTouchMarks(Form_Main& form) {
    if (form.NbPages > 1) {
        DrawNavigation(form, form.ZoneListNavigationPreviewPagex, form.ZoneListNavigationPreviewPageY,
                       form.ZoneListNavigationPreviewPageWidth, form.ZoneListNavigationPreviewPageHeight);
        DrawNavigation(form, form.ZoneListNavigationNextPagex, form.ZoneListNavigationNextPageY,
                       form.ZoneListNavigationNextPageWidth, form.ZoneListNavigationNextPageHeight);
    }
    if (form.Dir1.Path == PathIn(form.AppFolder, QStringLiteral("playlists")) || form.DirLevel > 0) {
        DrawNavigation(form, form.ZoneListNavigationBackx, form.ZoneListNavigationBackY,
                       form.ZoneListNavigationBackWidth, form.ZoneListNavigationBackHeight);
    }
}

void MarkSelection(Form_Main& form) {
    if (form.TactileMode == u"true") {
        DrawTouchMarks(form);
    } else if (form.ActiveZone == u"list") {
        const SlotPlace place{static_cast<int>(form.SelX), static_cast<int>(form.SelY)};
        StretchBlt(form.Picture_Main, SlotOnScreen(form, place), form.Picture_CacheHilight,
                   SlotInCache(form, place));
    }
}

void DrawQueueMark(Form_Main& form, const LatePicture& mark, int slot) {
    const SlotPlace place = PlaceOfSlot(form, slot);
    const auto [column, row] = place;
    const Box to = SlotOnScreen(form, place);
    mark.Render(
        form.Picture_Main, to.x, to.y, to.width, to.height, form.ZoneListPisteHilightX(column, row).value(),
        form.ZoneListPisteHilightY(column, row).value(), form.ZoneListPisteHilightW(column, row).value(),
        form.ZoneListPisteHilightH(column, row).value());
}

// Marks the page's entries that wait or play; a track queued twice is marked once an entry, the last one on
// top.
void MarkQueue(Form_Main& form) {
    if (form.NowPlayingPath.isEmpty()) {
        return;
    }
    for (int slot = 0; slot <= 2 * form.ZoneListNbTracksParColonne.value(); ++slot) {
        const QString& path = form.InfoPath(slot);
        for (int entry = 0; !path.isEmpty() && entry <= form.PlaylistCount.value(); ++entry) {
            if (path == form.PlaylistPath(entry)) {
                const bool current = form.PlaylistCurrent == entry;
                DrawQueueMark(form, current ? form.ImgZoneListNowPlaying : form.ImgZoneListComingNext, slot);
            }
        }
    }
}

// Paints a picture at a block's corner, in the size of `sized`; in its own when that one is missing.
void DrawBlock(Form_Main& form, const LatePicture& image, const LatePicture& sized, Integer16 x,
               Integer16 y) {
    const Box to = ScaledBox(form, x.value(), y.value(), sized.Width(), sized.Height());
    image.Render(form.Picture_Main, to.x, to.y, to.width, to.height);
}

void UpdateRemain(Form_Main& form) {
    form.Remain.clear();
    if (form.IsPlaying != 0) {
        const PlayTime time = ReadPlayTime(form);
        form.Remain = RemainOfFrame(time.length - time.position);
    }
}

void DrawMainBlock(Form_Main& form) {
    if (form.ShowMainZone != u"true") {
        return;
    }
    const LatePicture& ground = form.ActiveZone == u"main" ? form.ImgMainActiveSelected : form.ImgMain;
    DrawBlock(form, ground, form.ImgMain, form.BlockMainX, form.BlockMainY);
    BlockMainRedrawInfos(form);
    if (form.ActiveMainZone == u"true") {
        DrawMainButtons(form);
    }
    if (form.ManageCoin == u"true") {
        RepaintCreditBox(form);
        WriteCredits(form);
    }
    UpdateRemain(form);
    RepaintRemain(form);
    BlockMainRedrawInfos(form);
}

void DrawPlaylistBlock(Form_Main& form) {
    if (form.ShowPlaylistZone != u"true") {
        return;
    }
    const LatePicture& ground =
        form.ActiveZone == u"playlist" ? form.ImgPlaylistActiveSelected : form.ImgPlaylist;
    DrawBlock(form, ground, ground, form.BlockPlaylistX, form.BlockPlaylistY);
    if (form.ActivePlaylistZone == u"true") {
        DrawPlaylistButtons(form);
    }
    ShowPlaylistRows(form);
}

void DrawCommandBlock(Form_Main& form) {
    if (form.ShowCommandZone != u"true") {
        return;
    }
    const LatePicture& ground = form.ActiveZone == u"command" ? form.ImgCommandHilight : form.ImgCommand;
    DrawBlock(form, ground, ground, form.BlockCommandX, form.BlockCommandY);
}

void PrepareBigCover(Form_Main& form) {
    const Integer16 slot = SlotUnderCursor(form);
    if (slot == form.LastDrawnSlot) {
        return;
    }
    form.IdleTicks = 1;
    form.LastDrawnSlot = slot;
    // The idle ticks, just set, are always few here; the rule asks for them all the same.
    if (form.ShowBigCover == u"true" && form.IdleTicks < kIdle) {
        LoadBigCover(form, slot);
    }
}

// The big cover may take the command block now.
bool BigCoverRules(const Form_Main& form) {
    return form.TactileMode != u"true" && form.ShowBigCover == u"true" && form.ActiveZone == u"list";
}

void DrawBigCover(Form_Main& form) {
    constexpr int kFrame = 10;
    if (!BigCoverRules(form) || form.IdleTicks >= kIdle) {
        return;
    }
    const Box to = ScaledBox(form, form.BlockCommandX.value() + kFrame, form.BlockCommandY.value() + kFrame,
                             form.ImgCommand.Width() - 2 * kFrame, form.ImgCommand.Height() - 2 * kFrame);
    if (form.CoverKind == 1) {
        form.ImgCover.Render(form.Picture_Main, to.x, to.y, to.width, to.height);
    } else if (form.CoverKind == 2) {
        DrawTmpCover(form, form.Picture_Main, to);
    }
}

// Three characters never equal "mp44", so that a running .mp4 is not placed anew with each frame.
bool TitleHasVideoEnding(const QString& title) {
    const QString ending = LastThree(title);
    return ending == u"avi" || ending == u"mpg" || ending == u"mp44";
}

} // namespace

void RedrawJukebox(Form_Main& form) {
    WriteLog(form, QStringLiteral(" : RedrawJukebox"));
    ClampCursor(form);
    RepairCursor(form);
    CopyZone(form);
    MarkSelection(form);
    MarkQueue(form);
    DrawMainBlock(form);
    DrawPlaylistBlock(form);
    DrawCommandBlock(form);
    PrepareBigCover(form);
    if (TitleHasVideoEnding(form.NowPlayingTitre)) {
        PlaceRunningVideo(form);
    }
    DrawBigCover(form);
    if (!(BigCoverRules(form) && form.CoverKind != 0 && form.IdleTicks <= kIdle)) {
        ShowCommandRows(form);
    }
    SetModePointers(form);
    RefreshMain(form);
}

void RefreshMain(Form_Main& form) {
    form.windows.Refresh(form.Picture_Main.picture, form.Picture_Main.Left, form.Picture_Main.Top);
}

void StretchSlot(Form_Main& form, const Surface& cache, Integer16 slot) {
    const SlotPlace place = PlaceOfSlot(form, slot);
    StretchBlt(form.Picture_Main, SlotOnScreen(form, place), cache, SlotInCache(form, place));
}

void FadeMain(Form_Main& form) {
    form.ImgFade.Render(form.Picture_Main, 0, 0, form.Picture_Main.Width(), form.Picture_Main.Height());
}

void ShowWait(Form_Main& form) {
    form.ImgWait.Render(form.Picture_Main, 0, 0, form.Picture_Main.Width(), form.Picture_Main.Height());
}
