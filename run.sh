#!/bin/bash
# Installs missing packages, builds the jukebox and opens it on a music folder.
# Usage: run.sh [--leds] [MUSIC_FOLDER]     default: the demo library
#        --leds: with a simulated LED strip, which is shown in this terminal
set -euo pipefail

leds=
if [ "${1:-}" = --leds ]; then
    leds=1
    shift
fi
if [ $# -gt 1 ] || [[ ${1:-} == -* ]]; then
    echo "Usage: run.sh [--leds] [MUSIC_FOLDER]" >&2
    echo "Builds Vantorix Jukebox and opens it on the folder (default: the demo library)." >&2
    echo "--leds shows a simulated LED strip in this terminal." >&2
    exit 2
fi
here=$(cd -- "$(dirname -- "$0")" && pwd)
music=$(realpath -m -- "${1:-$here/demo}")
if [ ! -d "$music" ]; then
    echo "run.sh: there is no folder \"$music\"" >&2
    exit 2
fi
cd -- "$here"

has_display() {
    [ -n "${DISPLAY:-}" ] || [ -n "${WAYLAND_DISPLAY:-}" ] || [ -n "${QT_QPA_PLATFORM:-}" ]
}

if has_display; then
    tools/install_packages.sh build run
else
    tools/install_packages.sh build run view
fi
tools/build.sh release build vantorix vantorix-console ${leds:+vantorix-leds}
# The usual home has no LEDs: without its controller a jukebox that has them does not start.
home=build/home${leds:+-leds}
tools/make_home.sh home "$home" "$music"

screen=
controller=
end_others() {
    if [ -n "$controller" ]; then
        kill "$controller" 2>/dev/null || true
        wait "$controller" 2>/dev/null || true
        cat build/jukebox.log >&2 2>/dev/null || true
    fi
    if [ -n "$screen" ]; then
        kill "$screen" 2>/dev/null || true
        wait "$screen" 2>/dev/null || true
        rm -f build/display-number
    fi
}
trap end_others EXIT

# A separate session keeps Ctrl-C of the terminal from the virtual screen and the jukebox, so that they end in the right
# order.
start_screen() {
    : >build/display-number
    setsid Xvfb -displayfd 3 -screen 0 1920x1080x24 -nolisten tcp -noreset 3>build/display-number >build/xvfb.log 2>&1 &
    screen=$!
    for ((turn = 0; turn < 1500; ++turn)); do
        if [ -s build/display-number ]; then
            DISPLAY=:$(<build/display-number)
            export DISPLAY
            return
        fi
        kill -0 "$screen" 2>/dev/null || break
        sleep 0.02
    done
    echo "run.sh: the virtual screen did not start:" >&2
    tail -n 5 build/xvfb.log >&2
    exit 1
}

tell_screen() {
    cat <<WORDS
There is no display here: the jukebox runs on a virtual screen, $DISPLAY, 1920x1080.
  Look at it:    DISPLAY=$DISPLAY import -window root look.png
  Press a key:   DISPLAY=$DISPLAY xdotool key Down
  When it has ended, the same jukebox without any screen, driven by text:
                 printf 'key 40\nframe look.png\n' | build/vantorix-console --home $home
Ctrl-C ends it.
WORDS
}

if ! has_display; then
    start_screen
    tell_screen
fi

# Ctrl-C does not reach a background process of this script, so the controller is there until the jukebox has ended.
start_leds() {
    sed -i '/^\[RGBLeds\]/,$ { s/^Active=.*/Active=true/; s/^Commport=.*/Commport=1/ }' "$home/config.ini"
    rm -f "$home/COM1"
    build/vantorix-leds --link "$home/COM1" &
    controller=$!
    for ((turn = 0; turn < 500; ++turn)); do
        [ -e "$home/COM1" ] && return
        kill -0 "$controller" 2>/dev/null || break
        sleep 0.02
    done
    echo "run.sh: the simulated LED strip did not start" >&2
    exit 1
}

if [ -n "$leds" ]; then
    start_leds
    # The terminal shows the strip; what the jukebox has to say follows at the end.
    setsid build/vantorix --home "$home" >build/jukebox.log 2>&1 &
else
    setsid build/vantorix --home "$home" &
fi
jukebox=$!
interrupted=0
forward() {
    interrupted=1
    kill -s "$1" "$jukebox" 2>/dev/null || true
}
for signal in TERM INT HUP; do
    # shellcheck disable=SC2064
    trap "forward $signal" "$signal"
done

# A signal ends this wait early; the second wait, which is not interrupted, returns the jukebox's exit code.
code=0
while :; do
    interrupted=0
    wait "$jukebox" && code=0 || code=$?
    [ "$interrupted" -eq 0 ] && break
done
exit "$code"
