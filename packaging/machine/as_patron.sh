#!/bin/bash
# As a new user: sets the music folder, starts the jukebox under a virtual X server, picks a track and measures what is
# heard on a null sink. Runs in the system under test, as root.
set -eu

if [ "${1:-}" != listen ]; then
    useradd --create-home patron
    exec runuser -u patron -- env HOME=/home/patron bash /test/pulse.sh run bash "$0" listen
fi

# The loudest sample of a recording, 0 to 32768.
loudest() {
    od -An -v -t d2 -w2 "$1" | awk '{ value = $1 < 0 ? -$1 : $1; if (value > most) most = value } END { print most + 0 }'
}

record() {
    timeout "$2" parec --device="$PULSE_MONITOR" --format=s16le --rate=44100 --channels=1 --raw >"$1" || true
}

wait_for_log() {
    for ((turn = 0; turn < 300; ++turn)); do
        grep -qa -- "$1" "$log" 2>/dev/null && return
        sleep 0.1
    done
    echo "after 30 seconds the log has no \"$1\":"
    tail -n 20 "$log"
    return 1
}

cd /home/patron
log=/home/patron/.local/share/vantorix/vantorix.log
vantorix --setup "/usr/share/vantorix-demo/Brass Band"
export DISPLAY=:7
Xvfb $DISPLAY -screen 0 1280x720x24 -nolisten tcp >xvfb.log 2>&1 &
screen=$!
until xdotool getdisplaygeometry >/dev/null 2>&1; do
    kill -0 "$screen"
    sleep 0.1
done
vantorix &
jukebox=$!
wait_for_log RedrawJukebox
record before 3
xdotool key Return
wait_for_log " : Valider"
record after 5
xdotool key Escape
wait "$jukebox"
kill "$screen"
echo "measured: loudest sample before the pick: $(loudest before), after it: $(loudest after); $(stat -c %s after) bytes recorded"
[ "$(stat -c %s before)" -gt 100000 ] && [ "$(loudest before)" -lt 40 ] && [ "$(loudest after)" -gt 2000 ]
