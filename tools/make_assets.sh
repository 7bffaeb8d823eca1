#!/bin/sh
# Makes everything that our scripts draw and play: test font, themes, sounds, demo library. The files come out the same.
set -eu
cd "$(dirname "$0")"
export PYTHONDONTWRITEBYTECODE=1
./make_test_font.py
./theme/make_default_theme.py
./make_sounds.py
./make_demo_library.py
./theme/check_theme.py --strict ../home/themes/default ../tests/homes/plain/themes/*
