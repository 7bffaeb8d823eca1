// One tick of the heartbeat, step by step.
#include "shell/heartbeat.h"

#include "core/conversions.h"
#include "platform/event_pump.h"
#include "platform/media_graph.h"
#include "playback/engine.h"
#include "playback/remain.h"
#include "rendering/main_block.h"
#include "rendering/playlist_block.h"
#include "rendering/redraw_jukebox.h"
#include "rendering/video_surfaces.h"
#include "shell/form_main.h"
#include "shell/pause.h"
#include "theme/load_assets.h"

namespace {

// A track is nearly over from this many seconds before its end.
constexpr double kChargingSeconds = 4;
// An audio track is over this many seconds before its end.
constexpr double kChangeSeconds = 1;

void AgeCounters(Form_Main& form) {
    form.InfosBlink += 1;
    form.IdleTicks += 1;
    if (form.IdleTicks == 100) {
        form.IdleTicks = 24;
    }
    if (form.IdleTicks == 20 || form.IdleTicks == 21) {
        RedrawJukebox(form);
    }
    if (form.InfosBlink == 3) {
        form.InfosBlink = 0;
    }
    form.InfosTicks += 1;
    if (form.InfosTicks == 100) {
        form.InfosTicks = 1;
    }
    BlockMainRedrawInfos(form);
}

PlayTime ShowRemain(Form_Main& form) {
    const PlayTime time = ReadPlayTime(form);
    form.Remain = RemainOfHeartbeat(time.length - time.position);
    if (form.ShowMainZone == u"true") {
        RepaintRemain(form);
    }
    return time;
}

// Deliberate D-134: a charge.mp3 that has vanished since the start raises 5, which leaves InputBusy set. One
// expects the change of tracks to go on silently. A theme is complete or does not start at all.
void PlayCharge(Form_Main& form) {
    if (form.SoundCharge) {
        form.SoundCharge->Stop();
    }
    form.pump.DoEvents();
    form.SoundCharge = form.graphs.CreateGraph(QStringLiteral("SoundCharge"));
    RenderThemeSound(form, *form.SoundCharge, QStringLiteral("charge.mp3"));
    form.SoundCharge->Run();
}

// Moves the queue's window from the row that plays to the next one, a pixel of the screen a step.
void SlideToNextRow(Form_Main& form) {
    const double rowHeight = form.ImgPlaylistPlaylistHilight.Height();
    const double top = (form.PlaylistCurrent.value() - 1) * rowHeight;
    const int steps = CInt32(rowHeight * form.ZoneScaleY).value();
    for (int step = 1; step <= steps; ++step) {
        CopyPlaylistWindow(form, top + step / form.ZoneScaleY);
        ShowRemain(form);
        RefreshMain(form);
        Pause(form, 300);
    }
    CopyPlaylistHilightRow(form, form.PlaylistCurrent + 1);
    RefreshMain(form);
    Pause(form, 6000);
}

// Deliberate D-11: the last track of the queue is cut four seconds before its end. One expects it to run out;
// the rule that ends the queue is the one that announces the next track.
void BeginChange(Form_Main& form) {
    if (form.PlaylistCurrent >= form.PlaylistCount) {
        BassStopFile(form);
        return;
    }
    form.BlockMainInfos = QStringLiteral("charging");
    form.TrackChanging = 1;
    form.InfosBlink = 0;
    form.InfosTicks = 1;
    BlockMainRedrawInfos(form);
    RefreshMain(form);
    if (form.PlayTransitionSound == u"true") {
        PlayCharge(form);
    }
    if (form.ShowPlaylistZone == u"true" && form.PlaylistCount > 0 && form.TactileMode != u"true" &&
        form.ActiveZone != u"playlist") {
        SlideToNextRow(form);
    }
}

// The queue shrank while the change was on its way.
// Deliberate D-28: TrackChanging keeps its value, so that the counters stand still until a touch or the next
// change clears it. One expects it to be cleared here; the change was announced and has not come.
void EndQueue(Form_Main& form) {
    BassStopFile(form);
    form.NowPlayingPath.clear();
    form.NowPlayingTitre.clear();
    form.Remain.clear();
    form.Picture_MainVideo.Visible = false;
    UnloadVideoForm(form);
    DrawPlaylist(form);
    RedrawJukebox(form);
}

void StartNext(Form_Main& form) {
    form.PlaylistCurrent += 1;
    if (form.ActiveZone != u"playlist" && form.TactileMode != u"true") {
        form.PlaylistSelected = form.PlaylistCurrent;
    }
    if (form.TactileMode == u"true") {
        CopyPlaylistForTouch(form);
    }
    form.TrackChanging = 0;
    BassStopFile(form);
    BassPlayFile(form, form.PlaylistPath(form.PlaylistCurrent));
    // Deliberate D-12: the slot under the cursor names the track, not the queue's entry. One expects the
    // entry; the information lines take the title from the queue anyway.
    form.NowPlayingPath = form.InfoPath(form.NumTrack);
    form.NowPlayingTitre = form.InfoTitre(form.NumTrack);
    form.PlaylistPlayed(form.PlaylistCurrent) += 1;
    RedrawJukebox(form);
}

void EndChange(Form_Main& form) {
    if (form.PlaylistCurrent >= form.PlaylistCount) {
        EndQueue(form);
    } else {
        StartNext(form);
    }
}

void FollowTrack(Form_Main& form) {
    const PlayTime time = ShowRemain(form);
    const bool nothingNamed = form.NowPlayingTitre.isEmpty();
    if (form.TrackChanging == 0 && (time.length - kChargingSeconds <= time.position || nothingNamed)) {
        BeginChange(form);
        return;
    }
    const bool over =
        form.VideoPosition ? time.position >= time.length : time.length - kChangeSeconds <= time.position;
    if (over || nothingNamed) {
        EndChange(form);
    }
}

} // namespace

void Timer1_Timer(Form_Main& form) {
    if (form.InputBusy != 0) {
        return;
    }
    form.InputBusy = 1;
    if (form.TrackChanging == 0) {
        AgeCounters(form);
    }
    if (form.IsPlaying == -1) {
        FollowTrack(form);
    }
    RefreshMain(form);
    form.InputBusy = 0;
}
