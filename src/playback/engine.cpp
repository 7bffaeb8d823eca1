// Starting, stopping and seeking audio streams and video graphs, and playing the theme's sounds.
#include "playback/engine.h"

#include "core/media_kind.h"
#include "core/run_time_error.h"
#include "platform/audio_library.h"
#include "platform/event_pump.h"
#include "platform/serial_port.h"
#include "playback/play_time.h"
#include "state/form_main.h"

namespace {

// The LED controller's answer once it is in normal mode.
// Deliberate D-152: a reply with a carriage return before the line feed does not match, and the wait
// continues. One would expect any line end to do; controllers in the field send exactly this.
constexpr char kNormalModeReply[] = "Mode Normal\nOK";

void LetEventsRun(Form_Main& form, int turns) {
    for (int turn = 0; turn < turns; ++turn) {
        form.pump.DoEvents();
    }
}

void DropVideo(Form_Main& form) {
    form.player.VideoControl.reset();
    form.player.VideoPosition.reset();
    form.player.VideoAudio.reset();
    form.player.VideoWindow.reset();
}

// Deliberate D-135: a video that cannot be rendered raises 5, which leaves InputBusy set. One would expect it
// to be skipped like an audio file; videos are checked before they are copied to a cabinet.
void PlayVideo(Form_Main& form, const QString& fileName) {
    DropVideo(form);
    form.player.VideoControl = form.graphs.CreateGraph(QStringLiteral("Video"));
    form.player.VideoControl->RenderFile(fileName);
    form.player.VideoAudio = form.player.VideoControl;
    form.player.VideoWindow = form.player.VideoControl;
    form.roof.DrawMiniVideo(form);
    form.player.VideoPosition = form.player.VideoControl;
    form.player.VideoPosition->SetCurrentPosition(0);
    form.player.VideoControl->Run();
    if (form.settings.RGBLedsActive == u"true") {
        LetEventsRun(form, 3);
        form.roof.SendToController(form, kFreeRunningMode);
        LetEventsRun(form, 3);
    }
}

// Requests the normal mode from the LED controller until it answers.
// Deliberate D-29: the wait has no limit, so a silent controller keeps every audio track from starting. One
// would expect a timeout; the lights must be under control before the sound starts.
void AwaitNormalMode(Form_Main& form) {
    QByteArray reply;
    LetEventsRun(form, 3);
    while (!reply.contains(kNormalModeReply)) {
        // Only the last bytes can be the beginning of the reply. The others are dropped, so that endless
        // input does not exhaust memory.
        reply = reply.right(sizeof(kNormalModeReply) - 2);
        form.roof.SendToController(form, kNormalMode);
        LetEventsRun(form, 3);
        // Without this rest a silent controller would take a whole core.
        form.MSComm1.AwaitInput();
        reply += form.MSComm1.Input();
    }
}

void FreeOldStream(Form_Main& form) {
    form.audio.BASS_StreamFree(form.player.BassChannel);
    form.pump.DoEvents();
    form.audio.BASS_MusicFree(form.player.BassChannel);
    form.pump.DoEvents();
}

// Returns false when the file could not be opened.
bool PlayAudio(Form_Main& form, const QString& fileName) {
    form.frame.Picture_MainVideo.Visible = false;
    FreeOldStream(form);
    form.player.BassChannel = form.audio.BASS_StreamCreateFile(fileName, kSampleLoop);
    if (form.player.BassChannel == 0) {
        PlaySound(form, ThemeSound::kNoCredit);
        BassStopFile(form);
        return false;
    }
    if (form.settings.RGBLedsActive == u"true") {
        AwaitNormalMode(form);
    }
    form.audio.BASS_ChannelPlay(form.player.BassChannel, false);
    const std::int64_t length = LowWord(form.audio.BASS_ChannelGetLength(form.player.BassChannel));
    form.player.TrackLengthSeconds = form.audio.BASS_ChannelBytes2Seconds(form.player.BassChannel, length);
    if (form.settings.RGBLedsActive == u"true") {
        form.shell.tmrSpectrum.Enabled = true;
    }
    return true;
}

MediaGraph& Existing(const std::shared_ptr<MediaGraph>& graph, const char* name) {
    if (!graph) {
        throw RunTimeError(kObjectNotSet, QStringLiteral("%1 is not loaded").arg(QLatin1StringView(name)));
    }
    return *graph;
}

void PlayFromStart(const std::shared_ptr<MediaGraph>& position, const std::shared_ptr<MediaGraph>& control,
                   const char* name) {
    Existing(position, name).SetCurrentPosition(0);
    Existing(control, name).Run();
}

// Deliberate D-136: the buttons go by NowPlayingPath, which still names a video after its graph is gone. This
// raises 91 and leaves InputBusy set. One would expect nothing to happen; the name is kept for the
// information lines.
MediaGraph& VideoGraph(const Form_Main& form) {
    if (!form.player.VideoControl) {
        throw RunTimeError(
            kObjectNotSet,
            QStringLiteral("VideoControl: no video is loaded for \"%1\"").arg(form.player.NowPlayingPath));
    }
    return *form.player.VideoControl;
}

} // namespace

void BassPlayFile(Form_Main& form, const QString& FileName) {
    if (IsVideo(FileName)) {
        PlayVideo(form, FileName);
    } else if (!PlayAudio(form, FileName)) {
        return;
    }
    form.player.IsPlaying = -1;
}

// Deliberate D-154: no message is sent when a track stops, so the LEDs keep their last colours until the next
// one starts. One would expect them to go dark; a cabinet between two tracks is not dark.
void BassStopFile(Form_Main& form) {
    form.player.IsPlaying = 0;
    if (form.settings.RGBLedsActive == u"true") {
        form.shell.tmrSpectrum.Enabled = false;
    }
    if (form.player.VideoControl) {
        form.player.VideoControl->Stop();
        Existing(form.player.VideoPosition, "VideoPosition").SetCurrentPosition(0);
        DropVideo(form);
        form.roof.HideMiniVideo(form);
    } else {
        form.audio.BASS_ChannelStop(form.player.BassChannel);
        form.player.Remain.clear();
    }
}

void RewindPlayback(Form_Main& form) {
    form.player.VideoRunning = 0;
    if (IsVideo(form.player.NowPlayingPath)) {
        VideoGraph(form).Stop();
        VideoGraph(form).SetCurrentPosition(0);
    } else {
        form.audio.BASS_ChannelStop(form.player.BassChannel);
        form.audio.BASS_ChannelSetPosition(form.player.BassChannel, 0);
    }
}

void ResumePlayback(Form_Main& form) {
    if (IsVideo(form.player.NowPlayingPath)) {
        VideoGraph(form).Run();
        form.player.VideoRunning = -1;
    } else {
        form.audio.BASS_ChannelPlay(form.player.BassChannel, false);
    }
}

void PausePlayback(Form_Main& form) {
    if (IsVideo(form.player.NowPlayingPath)) {
        VideoGraph(form).Pause();
        form.player.VideoRunning = 0;
    } else {
        form.audio.BASS_ChannelPause(form.player.BassChannel);
    }
}

void SeekNearEnd(Form_Main& form) {
    constexpr double kSecondsBeforeEnd = 10;
    if (form.player.VideoPosition) {
        const double target = form.player.VideoPosition->Duration() - kSecondsBeforeEnd;
        form.player.VideoPosition->SetCurrentPosition(target < 0 ? 0 : target);
        return;
    }
    const double target = form.player.TrackLengthSeconds - kSecondsBeforeEnd;
    form.audio.BASS_ChannelSetPosition(form.player.BassChannel,
                                       form.audio.BASS_ChannelSeconds2Bytes(form.player.BassChannel, target));
}

void PlaySound(Form_Main& form, ThemeSound sound) {
    switch (sound) {
    case ThemeSound::kInsertCoin:
        return PlayFromStart(form.assets.SoundInsertCoinPosition, form.assets.SoundInsertCoin,
                             "SoundInsertCoin");
    case ThemeSound::kNoCredit:
        return PlayFromStart(form.assets.SoundNoCreditPosition, form.assets.SoundNoCredit, "SoundNoCredit");
    case ThemeSound::kPageTurn:
        return PlayFromStart(form.assets.SoundPageTurnPosition, form.assets.SoundPageTurn, "SoundPageTurn");
    }
}
