#!/bin/bash
# Counts the instructions of the PNG decoder's routines on arm64, for a row of 1920 pixels: with NEON, and compiled without
# it, where the compiler may still use vectors where it finds a way by itself. Fails if their results differ.
# Usage: count_rows.sh [COMPILER_OPTION...]     -O3, the release build's, is the default
# Needs g++-aarch64-linux-gnu, gcc and qemu-user (the emulator that loads plugins).
set -euo pipefail
cd -- "$(dirname -- "$0")/../.."
[ $# -gt 0 ] || set -- -O3
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

gcc -O2 -Wall -Wextra -fPIC -shared packaging/arm64/count_instructions.c -o "$work/count.so"
sources=(packaging/arm64/rows.cpp src/imaging/png/filter.cpp src/imaging/png/expand.cpp)
aarch64-linux-gnu-g++ -std=c++20 -static "$@" -Isrc "${sources[@]}" -o "$work/vectors"
# The sources use NEON where the compiler says that the processor has it.
aarch64-linux-gnu-g++ -std=c++20 -static "$@" -U__ARM_NEON -Isrc "${sources[@]}" -o "$work/plain"

# count PROGRAM ROUTINE PIXEL_BYTES: instructions for one row, from two runs of different lengths, and the sum.
count() {
    local few many sum
    few=$(qemu-aarch64 -plugin "$work/count.so" "$work/$1" "$2" "$3" 10 2>&1 >/dev/null | awk '/^instructions/{print $2}')
    many=$(qemu-aarch64 -plugin "$work/count.so" "$work/$1" "$2" "$3" 110 2>&1 >/dev/null | awk '/^instructions/{print $2}')
    sum=$(qemu-aarch64 "$work/$1" "$2" "$3" 10)
    echo "$(((many - few) / 100)) $sum"
}

printf '%-10s%6s%12s%12s%8s\n' routine bytes plain NEON ratio
for one in sub:3 sub:4 up:4 average:3 average:4 paeth:3 paeth:4 paeth:6 paeth:8 zeros:4 colours:3 alpha:4 opaque:4; do
    routine=${one%:*}
    bytes=${one#*:}
    read -r plain sum <<<"$(count plain "$routine" "$bytes")"
    read -r vectors other <<<"$(count vectors "$routine" "$bytes")"
    if [ "$sum" != "$other" ]; then
        echo "$routine: $sum without NEON, $other with it" >&2
        exit 1
    fi
    printf '%-10s%6s%12s%12s%8s\n' "$routine" "$bytes" "$plain" "$vectors" \
        "$(awk -v a="$plain" -v b="$vectors" 'BEGIN{printf "%.2f", a / b}')"
done
