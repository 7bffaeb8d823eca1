#!/bin/bash
# Configures and builds a preset of CMakePresets.json; prints nothing if there is nothing to do.
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
# The list of sources may have changed too; ninja then runs CMake first.
if ninja -C "$folder" -n "$@" 2>/dev/null | grep -q 'no work to do'; then
    exit 0
fi
if ! tools/progress.sh "Building in $folder" "$folder/build.log" ninja -C "$folder" "$@"; then
    # The compiler's output without the progress lines.
    grep -vE '^\[[0-9]+/[0-9]+\] (Building|Linking|Generating|Running)|^ninja: Entering' "$folder/build.log" | tail -n 100 >&2
    exit 1
fi
