#!/bin/sh
# What takes too long for every change: all tests, a minute of each fuzzer, random sessions under the sanitizers, and the
# memory of the real window.
# nightly.sh [MINUTES] fuzzes for that many minutes each. Needs what ./test.sh and tools/fuzz.sh need.
set -eu
cd "$(dirname "$0")/.."

./test.sh --all
tools/fuzz.sh "${1:-1}"
# The sanitizer keeps what has been freed, so the bound of memory is that of a program which does so.
LSAN_OPTIONS="suppressions=$PWD/tests/leaks.supp:print_suppressions=0" QT_QPA_PLATFORM=offscreen \
    python3 tests/sessions/soak.py --console build/sanitize/vantorix-console --work build/sanitize/tests/soak \
    --commands 200000 --run 2000 --megabytes 1000
# Few coins keep the queue short: every entry takes memory for its drawn rows.
tools/soak_window.py --minutes 12 --settle 6 --coins 0.5 --limit 12
