// One tick of the heartbeat, step by step.
#include "shell/heartbeat.h"

#include "core/conversions.h"
#include "platform/event_pump.h"
#include "platform/media_graph.h"
#include "playback/engine.h"
#include "playback/play_time.h"
#include "playback/queue.h"
#include "rendering/main_block.h"
#include "rendering/playlist_block.h"
#include "rendering/redraw_jukebox.h"
#include "rendering/video_form.h"
#include "state/form_main.h"
#include "state/pause.h"
#include "theme/load_assets.h"

namespace {

// A track counts as nearly over this many seconds before its end.
constexpr double kChargingSeconds = 4;
// An audio track counts as over this many seconds before its end.
constexpr double kChangeSeconds = 1;

void AgeCounters(Form_Main& form) {
    form.frame.InfosBlink += 1;
    form.shell.IdleTicks += 1;
    if (form.shell.IdleTicks == 100) {
        form.shell.IdleTicks = 24;
    }
    if (form.shell.IdleTicks == 20 || form.shell.IdleTicks == 21) {
        RedrawJukebox(form);
    }
    if (form.frame.InfosBlink == 3) {
        form.frame.InfosBlink = 0;
    }
    form.frame.InfosTicks += 1;
    if (form.frame.InfosTicks == 100) {
        form.frame.InfosTicks = 1;
    }
    BlockMainRedrawInfos(form);
}

PlayTime ShowRemain(Form_Main& form) {
    const PlayTime time = ReadPlayTime(form);
    form.player.Remain = RemainOfHeartbeat(time.length - time.position);
    if (form.settings.ShowMainZone == u"true") {
        RepaintRemain(form);
    }
    return time;
}

// Deliberate D-134: a charge.mp3 that has vanished since the start raises 5, which leaves InputBusy set. One
// would expect the change of tracks to continue silently; a theme is complete or does not start at all.
void PlayCharge(Form_Main& form) {
    if (form.assets.SoundCharge) {
        form.assets.SoundCharge->Stop();
    }
    form.pump.DoEvents();
    form.assets.SoundCharge = form.graphs.CreateGraph(QStringLiteral("SoundCharge"));
    RenderThemeSound(form, *form.assets.SoundCharge, QStringLiteral("charge.mp3"));
    form.assets.SoundCharge->Run();
}

// Moves the queue's window from the playing row to the next one, one screen pixel per step.
void SlideToNextRow(Form_Main& form) {
    const double rowHeight = form.assets.ImgPlaylistPlaylistHilight.Height();
    const double top = (form.queue.PlaylistCurrent.value() - 1) * rowHeight;
    const int steps = CInt32(rowHeight * form.frame.ZoneScaleY).value();
    for (int step = 1; step <= steps; ++step) {
        CopyPlaylistWindow(form, top + step / form.frame.ZoneScaleY);
        ShowRemain(form);
        RefreshMain(form);
        Pause(form, 300);
    }
    CopyPlaylistHilightRow(form, form.queue.PlaylistCurrent + 1);
    RefreshMain(form);
    Pause(form, 6000);
}

// Deliberate D-11: the last track of the queue is cut four seconds before its end. One would expect it to
// play to its end; the rule that announces the next track also ends the queue.
void BeginChange(Form_Main& form) {
    if (form.queue.PlaylistCurrent >= form.queue.PlaylistCount) {
        BassStopFile(form);
        return;
    }
    SetInfos(form, QStringLiteral("charging"));
    form.player.TrackChanging = 1;
    BlockMainRedrawInfos(form);
    RefreshMain(form);
    if (form.settings.PlayTransitionSound == u"true") {
        PlayCharge(form);
    }
    if (form.settings.ShowPlaylistZone == u"true" && form.queue.PlaylistCount > 0 &&
        form.settings.TactileMode != u"true" && form.cursor.ActiveZone != u"playlist") {
        SlideToNextRow(form);
    }
}

// Called when the queue has shrunk since the change of tracks was announced.
// Deliberate D-28: TrackChanging keeps its value, so the counters stop until a touch or the next change
// clears it. One would expect it to be cleared here; the announced change has not happened.
void EndQueue(Form_Main& form) {
    BassStopFile(form);
    NameNothing(form);
    ForgetRemain(form);
    form.frame.Picture_MainVideo.Visible = false;
    UnloadVideoForm(form);
    DrawPlaylist(form);
    RedrawJukebox(form);
}

void StartNext(Form_Main& form) {
    MakeCurrent(form, form.queue.PlaylistCurrent + 1);
    if (form.cursor.ActiveZone != u"playlist" && form.settings.TactileMode != u"true") {
        SelectCurrent(form);
    }
    if (form.settings.TactileMode == u"true") {
        CopyPlaylistForTouch(form);
    }
    form.player.TrackChanging = 0;
    BassStopFile(form);
    BassPlayFile(form, form.queue.PlaylistPath(form.queue.PlaylistCurrent));
    NameAfterSlotUnderCursor(form);
    CountStart(form, form.queue.PlaylistCurrent);
    RedrawJukebox(form);
}

void EndChange(Form_Main& form) {
    if (form.queue.PlaylistCurrent >= form.queue.PlaylistCount) {
        EndQueue(form);
    } else {
        StartNext(form);
    }
}

void FollowTrack(Form_Main& form) {
    const PlayTime time = ShowRemain(form);
    const bool nothingNamed = form.player.NowPlayingTitre.isEmpty();
    if (form.player.TrackChanging == 0 && (time.length - kChargingSeconds <= time.position || nothingNamed)) {
        BeginChange(form);
        return;
    }
    const bool over = form.player.VideoPosition ? time.position >= time.length
                                                : time.length - kChangeSeconds <= time.position;
    if (over || nothingNamed) {
        EndChange(form);
    }
}

} // namespace

void Timer1_Timer(Form_Main& form) {
    if (form.shell.InputBusy != 0) {
        return;
    }
    form.shell.InputBusy = 1;
    if (form.player.TrackChanging == 0) {
        AgeCounters(form);
    }
    if (form.player.IsPlaying == -1) {
        FollowTrack(form);
    }
    RefreshMain(form);
    form.shell.InputBusy = 0;
}
