#!/bin/bash
# Configures and builds a preset of CMakePresets.json; says nothing when there is nothing to do.
# Usage: build.sh PRESET BUILD_FOLDER [TARGET...]
set -euo pipefail
cd -- "$(dirname -- "$0")/.."
preset=$1
folder=$2
shift 2

mkdir -p "$folder"
if [ ! -f "$folder/build.ninja" ] || [ CMakePresets.json -nt "$folder/build.ninja" ]; then
    if ! tools/progress.sh "Configuring $folder" "$folder/configure.log" cmake --preset "$preset"; then
        tail -n 30 "$folder/configure.log" >&2
        exit 1
    fi
fi
# The list of sources may have changed as well as the sources: ninja runs CMake first if so.
if ninja -C "$folder" -n "$@" 2>/dev/null | grep -q 'no work to do'; then
    exit 0
fi
if ! tools/progress.sh "Building in $folder" "$folder/build.log" ninja -C "$folder" "$@"; then
    # What the compiler said, without the lines that only count.
    grep -vE '^\[[0-9]+/[0-9]+\] (Building|Linking|Generating|Running)|^ninja: Entering' "$folder/build.log" | tail -n 100 >&2
    exit 1
fi
