#!/usr/bin/python3
"""Makes our plain themes: the delivered one, and the two small ones of the tests. Sounds come from make_sounds.py."""

import argparse
import shutil
import sys
from pathlib import Path

from drawing import save_png
from layout import TEST_FONT, default_layout, test_layout, theme_sections
from mock_screen import Theme, compose
from pictures import paint_all
import theme_ini as ini

ROOT = Path(__file__).resolve().parents[2]
TEST_THEMES = ROOT / "tests/homes/plain/themes"


def check_keys(sections):
    """Stops when the layout forgets a key of the file or has one too many."""
    for name, _, pairs in sections:
        expected = ini.SECTIONS.get(name) or (ini.SLOT_KEYS if name.startswith("zonelist") else ())
        if expected and [key for key, _ in pairs] != list(expected):
            sys.exit(f"{name}: keys differ: {set(expected) ^ {key for key, _ in pairs} or 'their order'}")


def make_theme(folder, layout, preview_size, font_file=None):
    """Writes theme.ini, the pictures, the preview and a font file into the folder; leaves its sounds alone."""
    folder.mkdir(parents=True, exist_ok=True)
    sections = theme_sections(layout)
    check_keys(sections)
    ini.write(folder / "theme.ini", sections)
    for name, image in paint_all(layout).items():
        save_png(image, folder / name)
    if font_file:
        shutil.copyfile(font_file, folder / font_file.name)
    preview = compose(Theme(folder), "horizontal").resize(preview_size, 1)
    preview.convert("RGB").save(folder / "preview.jpg", quality=85, optimize=True)
    print(f"{folder}: {sum(file.stat().st_size for file in folder.iterdir())} bytes")


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--only", choices=("default", "test"), help="make the delivered theme or those of the tests alone")
    only = parser.parse_args().only
    if only != "test":
        make_theme(ROOT / "home/themes/default", default_layout(), (480, 270))
    if only != "default":
        make_theme(TEST_THEMES / "default", test_layout(10), (160, 90), TEST_FONT)
        make_theme(TEST_THEMES / "small", test_layout(5), (160, 90), TEST_FONT)


if __name__ == "__main__":
    main()
