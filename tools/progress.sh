#!/bin/bash
# Runs a command with its output in a file and shows its progress: on a terminal in a line that is updated, elsewhere in
# a line every few seconds. Exits with the command's own code; after a failure the caller shows the file.
# Usage: progress.sh LABEL LOG_FILE COMMAND...
set -u
readonly label=$1 log=$2
shift 2
readonly seconds_between_lines=5 # without a terminal

# The last line of the command's output, without control characters.
last_line() {
    tail -c 2000 -- "$log" | tr '\r' '\n' | tr -dc '[:print:]\n' | grep . | tail -n 1
}

next_line=$seconds_between_lines
show() {
    local text="$label, $SECONDS s: $(last_line)"
    if [ -t 1 ]; then
        printf '\r\033[K%s' "${text:0:$(($(tput cols 2>/dev/null || echo 80) - 1))}"
    elif [ "$SECONDS" -ge "$next_line" ]; then
        printf '%s\n' "${text:0:160}"
        next_line=$((SECONDS + seconds_between_lines))
    fi
}

# The command runs in the foreground, so that Ctrl-C reaches it. The display ends with this shell.
keep_showing() {
    while sleep 1 >/dev/null 2>&1 && kill -0 $$ 2>/dev/null; do
        show
    done
}

: >"$log"
keep_showing &
readonly display=$!
"$@" >>"$log" 2>&1
code=$?
kill "$display" 2>/dev/null
wait "$display" 2>/dev/null
if [ -t 1 ]; then
    printf '\r\033[K'
fi
exit "$code"
