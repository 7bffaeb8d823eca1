#!/bin/bash
# Installs missing packages, builds everything and runs every test. The last line of its output counts them.
# Usage: test.sh [--all]     --all: also the tests under AddressSanitizer and UBSan, and clang-tidy
# With --all, runs that have passed are not repeated until something changes: the sanitizer run as a whole, clang-tidy by
# source.
set -uo pipefail
cd -- "$(dirname -- "$0")" || exit 1

all=no
if [ "$*" = --all ]; then
    all=yes
elif [ $# -gt 0 ]; then
    echo "Usage: test.sh [--all]" >&2
    exit 2
fi

passed=0
failed=0

finish() {
    echo "$passed passed, $failed failed"
    [ "$failed" -eq 0 ]
    exit
}

# Counts a check outside ctest as one test.
count() {
    if [ "$2" -eq 0 ]; then
        passed=$((passed + 1))
    else
        failed=$((failed + 1))
        echo "FAILED: $1"
    fi
}

build() {
    if ! tools/build.sh "$1" "$2"; then
        count "building in $2" 1
        finish
    fi
}

# run_tests FOLDER JOBS: runs the tests of a build folder and adds the numbers of ctest's last line. A run without tests
# is a failure.
run_tests() {
    local log=$1/ctest.log summary
    tools/progress.sh "Testing in $1" "$log" \
        ctest --test-dir "$1" --output-on-failure --no-tests=error -j "$2"
    summary=$(grep -E '^[0-9]+% tests passed, [0-9]+ tests failed out of [0-9]+' "$log" | tail -n 1)
    if [[ $summary =~ ,\ ([0-9]+)\ tests\ failed\ out\ of\ ([0-9]+) ]]; then
        passed=$((passed + BASH_REMATCH[2] - BASH_REMATCH[1]))
        failed=$((failed + BASH_REMATCH[1]))
        echo "$1: $summary"
        if [ "${BASH_REMATCH[1]}" -ne 0 ]; then
            grep -vE '^ *Start +[0-9]+:|   Passed  ' "$log"
            return 1
        fi
        return 0
    fi
    tail -n 20 "$log"
    count "the tests of $1 could not be run" 1
    return 1
}

check_format() {
    find src tests bench -name '*.cpp' -o -name '*.h' | sort | xargs clang-format --dry-run -Werror
    count "the format of the sources (clang-format -i)" $?
}

# The files that the sanitizer run depends on.
hash_of_sources() {
    find src tests home demo tools bench CMakeLists.txt CMakePresets.json -type f ! -path '*/__pycache__/*' -print0 |
        sort -z | xargs -0 sha256sum | sha256sum
}

run_sanitized() {
    local stamp=build/sanitize.passed now
    now=$(hash_of_sources)
    if [ -f "$stamp" ] && [ "$(<"$stamp")" = "$now" ]; then
        echo "build/sanitize: nothing has changed since it passed"
        return
    fi
    build sanitize build/sanitize
    # Known leaks of libraries, which cannot be fixed here, are listed individually; any other leak is ours.
    export LSAN_OPTIONS="suppressions=$PWD/tests/leaks.supp:print_suppressions=0"
    export UBSAN_OPTIONS=print_stacktrace=1
    # The search for leaks guesses where a library keeps the variables of a thread, and sometimes crashes on its guess.
    export ASAN_OPTIONS=intercept_tls_get_addr=0
    # The tests of windows and sounds wait, the others compute.
    if run_tests build/sanitize $((($(nproc) * 3 + 1) / 2)); then
        echo "$now" >"$stamp"
    fi
}

run_tidy() {
    tools/progress.sh "clang-tidy" build/tidy.log tools/run_tidy.py build
    local code=$?
    grep -vE '^\[[0-9]+/[0-9]+\] ' build/tidy.log
    count "clang-tidy" "$code"
}

if ! tools/install_packages.sh build run test; then
    count "installing packages" 1
    finish
fi
# Tests that need these are skipped without them.
tools/install_packages.sh optional || echo "Some tests will be skipped."
build release build
check_format
# These tests spend their time waiting for a screen or a sound.
run_tests build $((2 * $(nproc)))
if [ "$all" = yes ]; then
    run_sanitized
    run_tidy
fi
finish
