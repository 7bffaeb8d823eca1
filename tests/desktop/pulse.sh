#!/bin/bash
# A private PulseAudio server with a null sink whose monitor can be recorded. It needs no sound card, does not affect
# other servers, and is ended by its own process id.
#
#   pulse.sh run COMMAND...   starts a server, runs the command with PULSE_SERVER and PULSE_MONITOR set, ends the server;
#                             the exit code is the command's
#   pulse.sh start FOLDER     starts a server and waits until it answers; prints the two settings for eval
#   pulse.sh stop FOLDER      ends the server of this folder
#   pulse.sh serve FOLDER     runs the server in the foreground
#
# FOLDER is private to the server and short: the path of its socket must fit into 107 characters. Record with
#   parec --device="$PULSE_MONITOR" --format=s16le --rate=44100 --channels=2 --latency-msec=20 --raw
set -uo pipefail

sink=cabinet

settings() {
    echo "export PULSE_SERVER=unix:$1/native"
    echo "export PULSE_MONITOR=$sink.monitor"
}

serve() {
    mkdir -p "$1"
    chmod 700 "$1"
    export HOME=$1 PULSE_RUNTIME_PATH=$1 PULSE_STATE_PATH=$1
    unset PULSE_SERVER DISPLAY DBUS_SESSION_BUS_ADDRESS
    echo $$ >"$1/pid"
    exec pulseaudio -n --daemonize=no --exit-idle-time=-1 --use-pid-file=no --disable-shm=yes \
        --log-level=warn --log-target="file:$1/log" \
        -L "module-null-sink sink_name=$sink rate=44100 channels=2" \
        -L "module-native-protocol-unix socket=$1/native auth-anonymous=1"
}

answers() {
    PULSE_SERVER=unix:$1/native timeout 2 pactl info >/dev/null 2>&1
}

start() {
    rm -f "$1/pid" "$1/native"
    "$0" serve "$1" </dev/null >/dev/null 2>&1 &
    local deadline=$((SECONDS + 10))
    until answers "$1"; do
        if [ $SECONDS -ge $deadline ]; then
            echo "pulse.sh: no server within ten seconds, see $1/log" >&2
            stop "$1"
            return 1
        fi
        sleep 0.05
    done
    settings "$1"
}

stop() {
    local pid deadline=$((SECONDS + 5))
    pid=$(cat "$1/pid" 2>/dev/null) || return 0
    rm -f "$1/pid"
    kill "$pid" 2>/dev/null
    while kill -0 "$pid" 2>/dev/null; do
        if [ $SECONDS -ge $deadline ]; then
            kill -KILL "$pid" 2>/dev/null
            break
        fi
        sleep 0.02
    done
}

run() {
    local code
    own=$(mktemp -d)
    trap 'stop "$own"; rm -rf "$own"' EXIT
    trap 'exit 143' TERM INT HUP
    code=$(start "$own") || exit 1
    eval "$code"
    "$@"
}

verb=${1:-}
[ $# -ge 2 ] || {
    sed -n '2,13p' "$0" >&2
    exit 2
}
shift
case $verb in
run | start | stop | serve) "$verb" "$@" ;;
*)
    echo "pulse.sh: unknown verb $verb" >&2
    exit 2
    ;;
esac
