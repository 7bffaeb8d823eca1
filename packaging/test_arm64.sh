#!/bin/bash
# Builds the jukebox and its unit tests for arm64 and runs them in qemu, in the root of arm64/root.sh. Its last line counts
# what was tested:
#   - the compiler has fused no multiplication with an addition, which would round differently than amd64 does
#   - every unit test but those that need a sound server or other programs for arm64
#   - the golden frames of tests/frames, pixel by pixel
#   - 40 console sessions with a frame after each command, against the console of amd64, byte by byte
# Usage: test_arm64.sh [--all]     --all: also every other console session
set -uo pipefail
cd -- "$(dirname -- "$0")/.." || exit 1
export VANTORIX_ARM64_ROOT=${VANTORIX_ARM64_ROOT:-$PWD/build/arm64-root}
all=no
if [ "$*" = --all ]; then
    all=yes
elif [ $# -gt 0 ]; then
    echo "Usage: test_arm64.sh [--all]" >&2
    exit 2
fi
folder=build/arm64
passed=0
failed=0

give_up() {
    echo "test_arm64.sh: $1" >&2
    exit 1
}

inside() {
    packaging/arm64/root.sh env QT_QPA_PLATFORM=offscreen QT_FONT_DPI=96 "$@"
}

# Counts a step as one test.
count() {
    if [ "$2" -eq 0 ]; then
        passed=$((passed + 1))
    else
        failed=$((failed + 1))
        echo "FAILED: $1"
    fi
}

# The packages of a group; libraries to compile against are those of arm64.
packages() {
    awk -v group="$1" '$1 == group { print $2 }' tools/packages.txt
}

install_packages() {
    local for_arm64 for_both
    for_arm64=$(packages build | grep -e '-dev$' | sed 's/$/:arm64/')
    # The consoles of both architectures run here.
    for_both=$(packages run | grep -v '^fonts-' | sed 'p; s/$/:arm64/')
    # shellcheck disable=SC2046,SC2086
    inside apt-get install -y --no-install-recommends qemu-user-static ccache python3 ffmpeg sox libsox-fmt-mp3 cmake ninja-build \
        pkg-config:arm64 qt6-base-dev-tools $(packages run | grep '^fonts-') $for_arm64 $for_both
}

# Programs that are started by path need one that starts the emulator: the session runner starts the console, a test starts
# a program, and the tests of signals start themselves again by their first argument.
write_starters() {
    mkdir -p "$folder/qemu"
    for program in vantorix-console power_cut_writer cabinet_test; do
        # shellcheck disable=SC2016 # the shell of the script that is written expands them
        printf '#!/bin/sh\nexec qemu-aarch64-static -0 "$0" /src/%s/%s "$@"\n' "$folder" "$program" >"$folder/qemu/$program"
        chmod +x "$folder/qemu/$program"
    done
    # The test of power cuts looks for the other program in its own folder.
    cp "$folder/settings_test" "$folder/qemu/"
}

check_fused() {
    local fused
    fused=$(inside aarch64-linux-gnu-objdump -d --no-show-raw-insn "$folder/vantorix" "$folder/vantorix-console" |
        grep -cE '\sf(n?m(add|sub)|ml[as])\s')
    [ "$fused" -eq 0 ]
    count "fused multiplications and additions in the programs: $fused" $?
}

# Tests that need a sound server or a program that the emulator cannot start, and one that expects the process to bear the
# name of the test program instead of the emulator's.
left_out='GstreamerSound*:FolderLockTest.ItTellsTheProcessThatHasIt:FolderLockTest.AProgramStartedByTheHolderDoesNotInheritIt'

# in_qemu LOG FILTER COMMAND...
in_qemu() {
    local log=$1 filter=$2
    shift 2
    tools/progress.sh "Unit tests of $room" "$log" packaging/arm64/root.sh env QT_QPA_PLATFORM=offscreen QT_FONT_DPI=96 \
        "$@" --gtest_brief=1 "--gtest_filter=$filter"
}

# number_in LOG PATTERN: the number in the line of gtest's summary, or 0.
number_in() {
    sed -nE "s/$2/\\1/p" "$1" | tail -n 1 | grep . || echo 0
}

# run_unit_tests ROOM: adds the numbers of gtest's summary. Failed tests run once more, alone, and are named: a file that
# does not open within 15 seconds counts as broken, and the emulator on a busy machine can take longer.
run_unit_tests() {
    local room=$1 log=$folder/$1_test.log ran good again
    local program=(qemu-aarch64-static "$folder/$room"_test)
    [ "$room" = settings ] && program=(qemu-aarch64-static "$folder/qemu/settings_test")
    [ "$room" = cabinet ] && program=("$folder/qemu/cabinet_test")
    in_qemu "$log" "*-$left_out" "${program[@]}"
    ran=$(number_in "$log" '^\[=+\] ([0-9]+) tests? from .* ran\..*')
    good=$(number_in "$log" '^\[  PASSED  \] ([0-9]+) tests?\..*')
    again=$(sed -nE 's/^\[  FAILED  \] ([^ ,]+).* \([0-9]+ ms\)$/\1/p' "$log" | sort -u)
    if [ -n "$again" ]; then
        echo "$room: run again: ${again//$'\n'/ }"
        in_qemu "$log.again" "$(tr '\n' ':' <<<"$again")" "${program[@]}"
        good=$((good + $(number_in "$log.again" '^\[  PASSED  \] ([0-9]+) tests?\..*')))
    fi
    passed=$((passed + good))
    echo "$room: $good of $ran unit tests passed"
    if [ "$good" -ne "$ran" ] || [ "$ran" -eq 0 ]; then
        failed=$((failed + (ran > good ? ran - good : 1)))
        echo "FAILED: unit tests of $room, see $log"
    fi
}

tools/install_packages.sh arm64 || give_up "debootstrap is missing"
mkdir -p "$folder"
inside true || give_up "there is no root for arm64"
tools/progress.sh "Installing packages for arm64" "$folder/packages.log" \
    bash -c "$(declare -f packages inside install_packages); install_packages" || give_up "see $folder/packages.log"
tools/progress.sh "Building for arm64" "$folder/build.log" packaging/arm64/root.sh env CCACHE_DIR=/var/cache/ccache \
    CMAKE_CXX_COMPILER_LAUNCHER=ccache bash -c "cmake --preset arm64 && ninja -C $folder" || give_up "see $folder/build.log"
tools/build.sh release build vantorix-console || exit 1
write_starters

check_fused
for room in core imaging state settings theme library playback lightshow rendering dialogs interaction shell app leds \
    cabinet platform; do
    run_unit_tests "$room"
done

for frame in tests/frames/*/session.txt; do
    frame=$(dirname "$frame")
    inside python3 tests/frames/run_frames.py --console "$folder/qemu/vantorix-console" --work "$folder/frames" "$frame"
    count "$frame" $?
done
inside packaging/arm64/compare_sessions.py --native build/vantorix-console --foreign "$folder/qemu/vantorix-console" \
    --work "$folder/compared"
count "40 sessions on both architectures" $?
if [ "$all" = yes ]; then
    for session in tests/sessions/*/*/session.txt; do
        session=$(dirname "$session")
        inside python3 tests/sessions/run_sessions.py --console "$folder/qemu/vantorix-console" \
            --work "$folder/sessions" "$session"
        count "$session" $?
    done
fi
echo "$passed passed, $failed failed"
[ "$failed" -eq 0 ]
