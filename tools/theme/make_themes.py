#!/usr/bin/python3
"""Makes our themes: the three included ones, and the two small ones of the tests. Sounds come from make_sounds.py.

The pixels are the same on every run. Requirements: python3-pil, python3-numpy, and the fonts of fonts-roboto-unhinted,
fonts-bebas-neue, fonts-lobster and fonts-dejavu-core.
"""

import argparse
import shutil
import sys
from pathlib import Path

import gallery
import pictures
import theme_ini as ini
from cabinet import Cabinet
from diner import Diner
from drawing import save_png
from layout import TEST_FONT, default_layout, test_layout, theme_sections, touch_layout, wall_layout
from mock_screen import SAMPLES, Show, Theme, compose
from wall import Wall

ROOT = Path(__file__).resolve().parents[2]
THEMES = ROOT / "home/themes"
TEST_THEMES = ROOT / "tests/homes/plain/themes"
DEMO = ROOT / "demo"
# The preview of the wall: folders of the demo library with their covers, and two numbered tracks.
RECORDS = tuple(
    ("dir", name.upper(), "", "", DEMO / name / "folder.jpg", "")
    for name in ("Brass Band", "Saturday Night", "Tide And Two Tone", "Parlour Piano", "Sundown Lounge", "Clockwork Orchestra")
) + (
    ("file", "WILLIAM TELL", "THE UNDERTOW", "2", False, ""),
    ("dir", "MUSIC BOX", "2 ALBUMS", "", DEMO / "Music Box/folder.jpg", ""),
    ("dir", "VILLAGE FIDDLERS", "", "", DEMO / "Village Fiddlers/folder.jpg", ""),
    ("dir", "THE TIN WHISTLES", "", "", DEMO / "The Tin Whistles/folder.jpg", ""),
    ("dir", "PICTURES IN MOTION", "", "", DEMO / "Pictures In Motion/folder.jpg", ""),
    ("file", "MIDNIGHT TRAM", "CAFÉ RUE BASSE", "12", False, ""),
)
# The playlist picture contains the base of the machine, down to the lower edge of the zone beside it in landscape. That is
# more than 1080x1920 shows of it.
FRONT_HEIGHT = 1540 - 360


def check_keys(sections):
    """Stops if the layout lacks a key of the file or has an extra one."""
    for name, _, pairs in sections:
        expected = ini.SECTIONS.get(name) or (ini.SLOT_KEYS if name.startswith("zonelist") else ())
        if expected and [key for key, _ in pairs] != list(expected):
            sys.exit(f"{name}: keys differ: {set(expected) ^ {key for key, _ in pairs} or 'their order'}")


def make_theme(folder, layout, painted, preview_size, show=None, font_file=None, samples=SAMPLES):
    """Writes theme.ini, the pictures, the preview and a font file into the folder; does not touch its sounds."""
    folder.mkdir(parents=True, exist_ok=True)
    sections = theme_sections(layout)
    check_keys(sections)
    ini.write(folder / "theme.ini", sections)
    for name, image in painted.items():
        save_png(image, folder / name)
    if font_file:
        shutil.copyfile(font_file, folder / font_file.name)
    preview = compose(Theme(folder, samples), "horizontal", show).resize(preview_size, 1)
    preview.convert("RGB").save(folder / "preview.jpg", quality=85, optimize=True)
    print(f"{folder}: {sum(file.stat().st_size for file in folder.iterdir())} bytes")


def make_delivered(name, layout, look, show=None, samples=SAMPLES):
    painted = gallery.paint_all(layout, look, FRONT_HEIGHT)
    make_theme(THEMES / name, layout, painted, (480, 270), show, samples=samples)


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--only", choices=("default", "touch", "wall", "test"), help="make one theme, or those of the tests")
    only = parser.parse_args().only
    if only in (None, "default"):
        make_delivered("default", default_layout(), Cabinet())
    if only in (None, "touch"):
        make_delivered("touch", touch_layout(), Diner(), Show(touch=True))
    if only in (None, "wall"):
        make_delivered("wall", wall_layout(), Wall(), samples=RECORDS)
    if only in (None, "test"):
        for name, rows in (("default", 10), ("small", 5)):
            layout = test_layout(rows)
            make_theme(TEST_THEMES / name, layout, pictures.paint_all(layout), (160, 90), None, TEST_FONT)


if __name__ == "__main__":
    main()
