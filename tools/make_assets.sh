#!/bin/sh
# Makes everything that our scripts generate: test font, themes, sounds, demo library. The files are the same on every
# run. The themes are checked with a built jukebox, build/vantorix or $VANTORIX.
set -eu
cd "$(dirname "$0")"
./install_packages.sh assets
export PYTHONDONTWRITEBYTECODE=1
./make_test_font.py
./theme/make_themes.py
./make_sounds.py
./make_demo_library.py
./theme/draw_docs.py
home=$(mktemp -d)
trap 'rm -rf "$home"' EXIT
./make_home.sh ../home "$home/home" ../demo
for theme in "$home"/home/themes/* ../tests/homes/plain/themes/*; do
    "${VANTORIX:-../build/vantorix}" --check-theme "$theme"
done
