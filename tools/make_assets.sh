#!/bin/sh
# Makes everything that our scripts generate: test font, themes, sounds, demo library. The files are the same on every
# run.
set -eu
cd "$(dirname "$0")"
./install_packages.sh assets
export PYTHONDONTWRITEBYTECODE=1
./make_test_font.py
./theme/make_themes.py
./make_sounds.py
./make_demo_library.py
./theme/draw_docs.py
./theme/check_theme.py --strict ../home/themes/* ../tests/homes/plain/themes/*
./theme/check_contrast.py ../home/themes/*
