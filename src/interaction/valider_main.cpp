// What the transport buttons do.
#include "interaction/valider_main.h"

#include "core/media_kind.h"
#include "core/run_time_error.h"
#include "platform/audio_library.h"
#include "platform/event_pump.h"
#include "platform/media_graph.h"
#include "playback/credits.h"
#include "playback/engine.h"
#include "shell/form_main.h"
#include "shell/log.h"

namespace {

// Deliberate D-136: the buttons go by the name shown, which stays that of a video after its graph is gone.
// That raises 91 and leaves InputBusy set. One expects nothing to happen. The name stays for the information
// lines.
MediaGraph& VideoGraph(const Form_Main& form) {
    if (!form.VideoControl) {
        throw RunTimeError(
            kObjectNotSet,
            QStringLiteral("VideoControl: no video is loaded for \"%1\"").arg(form.NowPlayingPath));
    }
    return *form.VideoControl;
}

// The entry has been started as often as it was paid.
bool IsUncovered(const Form_Main& form, Integer16 entry) {
    return form.PlaylistPlayed(entry) >= form.PlaylistCredits(entry);
}

// Starts the entry that PlaylistCurrent has been moved to from `before`; one that cannot be paid is refused.
void StartEntry(Form_Main& form, Integer16 before) {
    const Integer16 entry = form.PlaylistCurrent;
    if (IsUncovered(form, entry) && OutOfCredit(form)) {
        form.PlaylistCurrent = before;
        RefuseForCredit(form);
        return;
    }
    form.VideoRunning = 0;
    BassStopFile(form);
    form.pump.DoEvents();
    form.NowPlayingPath = form.PlaylistPath(entry);
    form.NowPlayingTitre = form.PlaylistTitre(entry);
    if (form.ManageCoin == u"true" && IsUncovered(form, entry)) {
        form.Credits -= 1;
        form.PlaylistCredits(entry) += 1;
    }
    form.PlaylistPlayed(entry) += 1;
    BassPlayFile(form, form.PlaylistPath(entry));
    if (form.ActiveZone != u"playlist") {
        form.PlaylistSelected = entry;
    }
}

void PlayPrevious(Form_Main& form) {
    const Integer16 before = form.PlaylistCurrent;
    form.PlaylistCurrent -= 1;
    if (form.PlaylistCurrent < 1) {
        form.PlaylistCurrent = form.PlaylistCount;
    }
    StartEntry(form, before);
}

void PlayNext(Form_Main& form) {
    const Integer16 before = form.PlaylistCurrent;
    form.PlaylistCurrent += 1;
    if (form.PlaylistCurrent > form.PlaylistCount) {
        form.PlaylistCurrent = 1;
    }
    StartEntry(form, before);
}

void Stop(Form_Main& form) {
    form.VideoRunning = 0;
    if (IsVideo(form.NowPlayingPath)) {
        VideoGraph(form).Stop();
        VideoGraph(form).SetCurrentPosition(0);
    } else {
        form.audio.BASS_ChannelStop(form.BassChannel);
        form.audio.BASS_ChannelSetPosition(form.BassChannel, 0);
    }
    form.ActiveBtn = QStringLiteral("play");
}

void Play(Form_Main& form) {
    form.NowPlayingPath = form.PlaylistPath(form.PlaylistCurrent);
    form.NowPlayingTitre = form.PlaylistTitre(form.PlaylistCurrent);
    if (IsVideo(form.NowPlayingPath)) {
        VideoGraph(form).Run();
        form.VideoRunning = -1;
    } else {
        form.audio.BASS_ChannelPlay(form.BassChannel, false);
    }
    form.ActiveBtn = QStringLiteral("pause");
}

void PausePlayback(Form_Main& form) {
    if (IsVideo(form.NowPlayingPath)) {
        VideoGraph(form).Pause();
        form.VideoRunning = 0;
    } else {
        form.audio.BASS_ChannelPause(form.BassChannel);
    }
    form.ActiveBtn = QStringLiteral("play");
}

} // namespace

void ValiderMain(Form_Main& form) {
    WriteLog(form, QStringLiteral(" : ValiderMain"));
    if (form.ActiveBtn == u"preview") {
        PlayPrevious(form);
    } else if (form.ActiveBtn == u"next") {
        PlayNext(form);
    } else if (form.ActiveBtn == u"stop") {
        Stop(form);
    } else if (form.ActiveBtn == u"play") {
        Play(form);
    } else if (form.ActiveBtn == u"pause") {
        PausePlayback(form);
    }
}
