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
    if ! cmake --preset "$preset" >"$folder/configure.log" 2>&1; then
        tail -n 30 "$folder/configure.log" >&2
        exit 1
    fi
fi
# The files may have changed together with the list of sources: ninja asks CMake first.
if ninja -C "$folder" -n "$@" 2>/dev/null | grep -q 'no work to do'; then
    exit 0
fi
echo "Building in $folder"
exec ninja -C "$folder" --quiet "$@"
