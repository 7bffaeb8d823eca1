#!/bin/sh
# Runs what takes too long for every change: all tests, a minute of each fuzzer, random sessions under the sanitizers,
# the memory of the real window, the light show, an evening in a bar, restarts, the packages on a fresh system, and the
# unit tests and the real jukebox under ThreadSanitizer.
# nightly.sh [MINUTES] runs each fuzzer for that many minutes. Requirements: those of ./test.sh and tools/fuzz.sh.
set -eu
cd "$(dirname "$0")/.."

./test.sh --all
tools/fuzz.sh "${1:-1}"
# The sanitizer keeps freed memory, so the memory limit allows for that.
QT_QPA_PLATFORM=offscreen \
    python3 tests/sessions/soak.py --console build/sanitize/vantorix-console --work build/sanitize/tests/soak \
    --commands 200000 --run 2000 --dialogs 3 --megabytes 1000
# A minute of the light show, and its device unplugged a thousand times.
VANTORIX_LEDS_SECONDS=60 VANTORIX_LEDS_PULLS=1000 tests/desktop/pulse.sh run python3 -B tests/desktop/leds_desktop_test.py
# Few coins keep the queue short, so that its entries take little memory.
tools/soak_window.py --minutes 12 --settle 6 --coins 0.5 --limit 12
# An evening of four hours, a thousand kills with coins and picks, and the restarts that take a minute each.
tools/evening.py
VANTORIX_KILLS=1000 python3 -B tests/desktop/kept_desktop_test.py
HUNG_FOLDER_LIBRARY=build/tests/desktop/libhung_folder.so VANTORIX_LADDER_TABLE=1 python3 -B tests/desktop/ladder_desktop_test.py
# The packages. Only root can make a system and boot it.
if [ "$(id -u)" -eq 0 ]; then
    packaging/test_packages.sh
    packaging/test_arm64.sh
else
    echo "nightly.sh: packaging/test_packages.sh and test_arm64.sh are left out, because this is not root" >&2
fi

# Data races. ThreadSanitizer needs addresses that are not randomised too much (setarch -R). Tests that a program ten
# times slower cannot pass are left out: sounds measured in milliseconds, and keys typed in quick succession. The locale
# test counts threads, and the sanitizer has one of its own. GLib's own allocator would hide which thread passed memory
# to which.
tools/build.sh thread build/thread
VANTORIX_PATIENCE=300 G_SLICE=always-malloc \
    TSAN_OPTIONS="suppressions=$PWD/tests/threads.supp:die_after_fork=0:report_thread_leaks=0:exitcode=66:atexit_sleep_ms=0" setarch -R \
    ctest --test-dir build/thread --output-on-failure --no-tests=error --timeout 1800 \
    -R '^(core|platform|imaging|state|settings|theme|library|playback|lightshow|rendering|dialogs|interaction|shell|cabinet|leds|desktop)/' \
    -E 'GstreamerSound|desktop/(heard|leds|start|story|keyboard|ladder|kept)'
