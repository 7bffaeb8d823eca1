#!/bin/sh
# What takes too long for every change: all tests, a minute of each fuzzer, random sessions under the sanitizers, and the
# memory of the real window; the unit tests and the real jukebox under ThreadSanitizer.
# nightly.sh [MINUTES] fuzzes for that many minutes each. Needs what ./test.sh and tools/fuzz.sh need.
set -eu
cd "$(dirname "$0")/.."

./test.sh --all
tools/fuzz.sh "${1:-1}"
# The sanitizer keeps what has been freed, so the bound of memory is that of a program which does so.
LSAN_OPTIONS="suppressions=$PWD/tests/leaks.supp:print_suppressions=0" QT_QPA_PLATFORM=offscreen \
    python3 tests/sessions/soak.py --console build/sanitize/vantorix-console --work build/sanitize/tests/soak \
    --commands 200000 --run 2000 --megabytes 1000
# Few coins keep the queue short, so that its entries hardly count.
tools/soak_window.py --minutes 12 --settle 6 --coins 0.5 --limit 12

# Races. ThreadSanitizer needs addresses that are not randomised too much (setarch -R). Left out is what a program that is
# ten times slower cannot pass: sounds measured in milliseconds, and keys typed one after the other. The locale test counts
# threads, of which the sanitizer has one of its own. GLib's own allocator would hide who has given memory to whom.
tools/build.sh thread build/thread
VANTORIX_PATIENCE=300 G_SLICE=always-malloc \
    TSAN_OPTIONS="suppressions=$PWD/tests/threads.supp:die_after_fork=0:report_thread_leaks=0:exitcode=66:atexit_sleep_ms=0" setarch -R \
    ctest --test-dir build/thread --output-on-failure --no-tests=error --timeout 1800 \
    -R '^(core|imaging|settings|theme|library|playback|interaction|rendering|dialogs|shell|platform|cabinet|desktop)/' \
    -E 'GstreamerSound|desktop/(heard|start|story|keyboard)'
