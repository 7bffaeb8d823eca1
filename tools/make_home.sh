#!/bin/bash
# Makes an application folder from the default one, or updates it, and sets its music folder.
# Usage: make_home.sh DELIVERED_FOLDER HOME_FOLDER MUSIC_FOLDER
# Files that are missing or older are copied; in an edited config.ini only StartPath is changed.
set -euo pipefail
mkdir -p "$2"
delivered=$(realpath -- "$1")
home=$(realpath -- "$2")
music=$3
as_delivered=$home.delivered.ini

unchanged() {
    [ -f "$as_delivered" ] && cmp -s <(grep -av '^StartPath=' "$home/config.ini") <(grep -av '^StartPath=' "$as_delivered")
}

(
    cd -- "$delivered"
    find . -mindepth 1 -type d -print0 | (cd -- "$home" && xargs -0r mkdir -p)
    find . -type f ! -path ./config.ini -print0 | xargs -0r cp -u --parents -t "$home"
)
# A font that is not installed is left out; another font is then used for its text.
tools=$(dirname -- "$0")
while read -r theme font titles; do
    folder=$home/themes/$theme
    if [[ $theme == "#"* ]] || [ ! -f "$font" ] || [ ! -d "$folder" ]; then
        continue
    elif [ -z "$titles" ]; then
        cp -u "$font" "$folder/"
    elif [ "$font" -nt "$folder/$titles" ] || [ "$tools/make_title_font.py" -nt "$folder/$titles" ]; then
        "$tools/make_title_font.py" "$font" "$folder/$titles"
    fi
done <"$tools/theme_fonts.txt"
# The demo library lists the tracks of a saved playlist; a playlist file contains full paths. A new home gets it once.
party="$home/playlists/Demo Party - 05 Dec 2026.vtxpl"
if [ -f "$music/playlist.txt" ] && [ ! -f "$home/config.ini" ]; then
    mkdir -p "$home/playlists"
    {
        printf ' %d \r\n' "$(wc -l <"$music/playlist.txt")"
        while read -r track; do
            printf '%s/%s\r\n%s\r\n' "$music" "$track" "${track##*/}"
        done <"$music/playlist.txt"
    } >"$party"
fi
if [ ! -f "$home/config.ini" ] || unchanged; then
    cp "$delivered/config.ini" "$home/config.ini"
    cp "$delivered/config.ini" "$as_delivered"
fi

# Sets the first StartPath in [Main]; every other line stays unchanged.
changed=$home/config.ini.new
MUSIC=$music LC_ALL=C awk '
    function value(line_end) { return "StartPath=" ENVIRON["MUSIC"] line_end }
    { end = /\r$/ ? "\r" : ""; line = tolower($0) }
    line ~ /^[ \t]*\[/ {
        if (main && !done) { print value(end); done = 1 }
        main = line ~ /^[ \t]*\[[ \t]*main[ \t]*\]/
    }
    main && !done && line ~ /^[ \t]*startpath[ \t]*=/ { print value(end); done = 1; next }
    { print }
    END {
        if (!done) {
            if (!main) { print "[Main]" }
            print value("")
        }
    }
' "$home/config.ini" >"$changed"
if cmp -s "$changed" "$home/config.ini"; then
    rm -f "$changed"
else
    mv "$changed" "$home/config.ini"
fi
