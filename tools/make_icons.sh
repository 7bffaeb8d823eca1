#!/bin/sh
# Draws the sizes of the icon from packaging/desktop/vantorix.svg. Needs rsvg-convert (Debian: librsvg2-bin).
set -eu
cd "$(dirname "$0")/../packaging/desktop"
for size in 16 24 32 48 64 128 256 512; do
    rsvg-convert --width "$size" --height "$size" --output "vantorix-$size.png" vantorix.svg
done
