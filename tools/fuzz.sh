#!/bin/sh
# Fuzzes every subject of tests/fuzz for MINUTES each, one after the other: fuzz.sh MINUTES [NAME]...
# Needs clang with libFuzzer (Debian: clang). Findings are written to build/fuzz/found/NAME; the exit code is then 1.
set -eu

if [ $# -lt 1 ]; then
    echo "fuzz.sh MINUTES [NAME]..." >&2
    exit 2
fi
seconds=$(($1 * 60))
shift
root=$(cd "$(dirname "$0")/.." && pwd)
build=$root/build/fuzz
if ! command -v clang++ >/dev/null; then
    echo "fuzz.sh: clang++ is missing; install the package clang" >&2
    exit 2
fi
if ! echo 'extern "C" int LLVMFuzzerTestOneInput(const char*, unsigned long) { return 0; }' |
    clang++ -fsanitize=fuzzer,address,undefined -x c++ - -o /dev/null 2>/dev/null; then
    echo "fuzz.sh: clang++ has no libFuzzer; install the package libclang-rt-14-dev" >&2
    exit 2
fi

cmake -S "$root" -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo -DCMAKE_CXX_COMPILER=clang++ \
    -DVANTORIX_FUZZ=ON -DVANTORIX_BENCH=OFF >"$build.log" 2>&1 || { cat "$build.log" >&2; exit 2; }
ninja -C "$build" fuzzers >"$build.log" 2>&1 || { cat "$build.log" >&2; exit 2; }

failed=0
for source in "$root"/tests/fuzz/*_fuzz.cpp; do
    name=$(basename "$source" _fuzz.cpp)
    case " ${*:-$name} " in *" $name "*) ;; *) continue ;; esac
    folder=$(sed -n "s|^$name ||p" "$root/tests/fuzz/seeds.txt")
    mkdir -p "$build/corpus/$name" "$build/found/$name"
    # libFuzzer adds new inputs only to the first folder; the seeds stay unchanged.
    QT_QPA_PLATFORM=offscreen "$build/${name}_fuzz" -max_total_time="$seconds" -timeout=20 -rss_limit_mb=2500 \
        -max_len=20000 -print_final_stats=1 -artifact_prefix="$build/found/$name/" "$build/corpus/$name" \
        "$root/tests/${folder:-images/$name}" >"$build/$name.log" 2>&1 && result=good || result=FAILED
    runs=$(sed -n 's/^stat::number_of_executed_units: *//p' "$build/$name.log")
    peak=$(sed -n 's/^stat::peak_rss_mb: *//p' "$build/$name.log")
    echo "$name: $result, ${runs:-?} executions, ${peak:-?} MB at most"
    if [ $result = FAILED ]; then
        failed=1
        tail -n 40 "$build/$name.log"
    fi
done
exit $failed
