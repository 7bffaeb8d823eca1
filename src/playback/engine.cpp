// Starting and stopping audio streams and video graphs.
#include "playback/engine.h"

#include "core/media_kind.h"
#include "core/run_time_error.h"
#include "lightshow/led_link.h"
#include "platform/audio_library.h"
#include "platform/event_pump.h"
#include "platform/serial_port.h"
#include "playback/low_word.h"
#include "rendering/video_surfaces.h"
#include "shell/form_main.h"

namespace {

// What the LED controller answers when it has taken the normal mode.
constexpr char kNormalModeReply[] = "Mode Normal\nOK";

void LetEventsRun(Form_Main& form, int turns) {
    for (int turn = 0; turn < turns; ++turn) {
        form.pump.DoEvents();
    }
}

void DropVideo(Form_Main& form) {
    form.VideoControl.reset();
    form.VideoPosition.reset();
    form.VideoAudio.reset();
    form.VideoWindow.reset();
}

// Deliberate D-135: a video that cannot be rendered raises 5, which leaves InputBusy set. One expects it to
// be passed over, as an audio file is. Videos are checked before they are put on a cabinet.
void PlayVideo(Form_Main& form, const QString& fileName) {
    DropVideo(form);
    form.VideoControl = form.graphs.CreateGraph(QStringLiteral("Video"));
    form.VideoControl->RenderFile(fileName);
    form.VideoAudio = form.VideoControl;
    form.VideoWindow = form.VideoControl;
    DrawMiniVideo(form);
    form.VideoPosition = form.VideoControl;
    form.VideoPosition->SetCurrentPosition(0);
    form.VideoControl->Run();
    if (form.RGBLedsActive == u"true") {
        LetEventsRun(form, 3);
        SendToController(form, kFreeRunningMode);
        LetEventsRun(form, 3);
    }
}

// Asks the LED controller for the normal mode until it has answered.
// Deliberate D-29: there is no limit to the wait, so that a silent controller keeps every track from
// starting. One expects a time-out; the lights are to be under control before the sound.
void AwaitNormalMode(Form_Main& form) {
    QByteArray reply;
    LetEventsRun(form, 3);
    while (!reply.contains(kNormalModeReply)) {
        // Only the end can still become the reply; a line that babbles for ever must not fill the memory.
        reply = reply.right(sizeof(kNormalModeReply) - 2);
        SendToController(form, kNormalMode);
        LetEventsRun(form, 3);
        reply += form.MSComm1.Input();
    }
}

void FreeOldStream(Form_Main& form) {
    form.audio.BASS_StreamFree(form.BassChannel);
    form.pump.DoEvents();
    form.audio.BASS_MusicFree(form.BassChannel);
    form.pump.DoEvents();
}

double PositionSeconds(Form_Main& form) {
    const std::int64_t bytes = LowWord(form.audio.BASS_ChannelGetPosition(form.BassChannel));
    return form.audio.BASS_ChannelBytes2Seconds(form.BassChannel, bytes);
}

// False when the file could not be opened.
bool PlayAudio(Form_Main& form, const QString& fileName) {
    form.Picture_MainVideo.Visible = false;
    FreeOldStream(form);
    form.BassChannel = form.audio.BASS_StreamCreateFile(fileName, kSampleLoop);
    if (form.BassChannel == 0) {
        PlaySound(form, ThemeSound::kNoCredit);
        BassStopFile(form);
        return false;
    }
    if (form.RGBLedsActive == u"true") {
        AwaitNormalMode(form);
    }
    form.audio.BASS_ChannelPlay(form.BassChannel, false);
    const std::int64_t length = LowWord(form.audio.BASS_ChannelGetLength(form.BassChannel));
    form.TrackLengthSeconds = form.audio.BASS_ChannelBytes2Seconds(form.BassChannel, length);
    if (form.RGBLedsActive == u"true") {
        form.tmrSpectrum.Enabled = true;
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

} // namespace

void BassPlayFile(Form_Main& form, const QString& FileName) {
    if (IsVideo(FileName)) {
        PlayVideo(form, FileName);
    } else if (!PlayAudio(form, FileName)) {
        return;
    }
    form.IsPlaying = -1;
}

void BassStopFile(Form_Main& form) {
    form.IsPlaying = 0;
    if (form.RGBLedsActive == u"true") {
        form.tmrSpectrum.Enabled = false;
    }
    if (form.VideoControl) {
        form.VideoControl->Stop();
        Existing(form.VideoPosition, "VideoPosition").SetCurrentPosition(0);
        DropVideo(form);
    } else {
        form.audio.BASS_ChannelStop(form.BassChannel);
        form.Remain.clear();
    }
}

PlayTime ReadPlayTime(Form_Main& form) {
    if (form.VideoPosition) {
        return {form.VideoPosition->CurrentPosition(), form.VideoPosition->Duration()};
    }
    form.TrackPositionSeconds = PositionSeconds(form);
    return {form.TrackPositionSeconds, form.TrackLengthSeconds};
}

void SeekNearEnd(Form_Main& form) {
    constexpr double kSecondsBeforeEnd = 10;
    if (form.VideoPosition) {
        const double target = form.VideoPosition->Duration() - kSecondsBeforeEnd;
        form.VideoPosition->SetCurrentPosition(target < 0 ? 0 : target);
        return;
    }
    const double target = form.TrackLengthSeconds - kSecondsBeforeEnd;
    form.audio.BASS_ChannelSetPosition(form.BassChannel,
                                       form.audio.BASS_ChannelSeconds2Bytes(form.BassChannel, target));
}

void PlaySound(Form_Main& form, ThemeSound sound) {
    switch (sound) {
    case ThemeSound::kInsertCoin:
        return PlayFromStart(form.SoundInsertCoinPosition, form.SoundInsertCoin, "SoundInsertCoin");
    case ThemeSound::kNoCredit:
        return PlayFromStart(form.SoundNoCreditPosition, form.SoundNoCredit, "SoundNoCredit");
    case ThemeSound::kPageTurn:
        return PlayFromStart(form.SoundPageTurnPosition, form.SoundPageTurn, "SoundPageTurn");
    }
}
