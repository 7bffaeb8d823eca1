// Position, length and remaining time of the running track.
#include "playback/play_time.h"

#include "core/conversions.h"
#include "platform/audio_library.h"
#include "platform/media_graph.h"
#include "state/form_main.h"

#include <cmath>

namespace {

double PositionSeconds(Form_Main& form) {
    const std::int64_t bytes = LowWord(form.audio.BASS_ChannelGetPosition(form.player.BassChannel));
    return form.audio.BASS_ChannelBytes2Seconds(form.player.BassChannel, bytes);
}

} // namespace

PlayTime ReadPlayTime(Form_Main& form) {
    if (form.player.VideoPosition) {
        return {form.player.VideoPosition->CurrentPosition(), form.player.VideoPosition->Duration()};
    }
    form.player.TrackPositionSeconds = PositionSeconds(form);
    return {form.player.TrackPositionSeconds, form.player.TrackLengthSeconds};
}

void ForgetRemain(Form_Main& form) {
    form.player.Remain.clear();
}

QString RemainOfFrame(double seconds) {
    const double minutes = std::trunc(seconds / 60);
    return FormatZeros(minutes, 2) + u':' + FormatZeros(seconds - minutes * 60, 2);
}

QString RemainOfHeartbeat(double seconds) {
    return RemainOfFrame(std::trunc(seconds));
}
