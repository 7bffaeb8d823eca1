#!/usr/bin/python3
"""Makes the first frame for the README and the contact sheet from pictures that the jukebox writes.

The contact sheet shows the themes on common screens in common situations, with the demo's music. Requires a built
jukebox:

    take_frames.py --vantorix build/vantorix [--frames FOLDER]     FOLDER receives every frame at full size
"""

import argparse
import subprocess
import sys
import tempfile
from pathlib import Path

from PIL import Image, ImageDraw

from draw_docs import GROUND, INK, face, save_small

ROOT = Path(__file__).resolve().parents[2]
CELL = (640, 360)
# The situations of the contact sheet, by the names of the program's pictures.
SITUATIONS = {
    "first": "the first page",
    "covers": "browsing, covers on",
    "coverless": "browsing, covers off",
    "bought": "four tracks bought",
    "main": "focus on the Main block",
    "queue": "focus on the queue",
    "full": "a full queue",
    "keyboard": "naming a playlist",
    "bigcover": "the big cover",
    "menu": "focus on the menu",
    "refusal": "no credit",
    "touch": "touch mode",
}
SCREENS = ("1920x1080", "1366x768", "1280x1024", "1080x1920")


def take(program, theme, target):
    """All frames of a theme, as drawn by the jukebox."""
    with tempfile.TemporaryDirectory() as folder:
        home = Path(folder) / "home"
        subprocess.run([ROOT / "tools/make_home.sh", ROOT / "home", home, ROOT / "demo"], check=True)
        sizes = [word for screen in SCREENS for word in ("--size", screen)]
        call = [program, "--home", home, "--check-theme", theme, "--frames", target, *sizes]
        result = subprocess.run(call, capture_output=True, text=True, check=False)
        if result.returncode != 0:
            sys.exit(f"{theme}: {result.stdout}{result.stderr}")


def sheet(frames, path):
    """All frames next to one another with their names."""
    columns = 4
    rows = -(-len(frames) // columns)
    width, height = CELL[0] // 2 + 10, CELL[1] // 2 + 32
    page = Image.new("RGB", (columns * width + 10, rows * height + 10), GROUND)
    draw = ImageDraw.Draw(page)
    for i, (name, frame) in enumerate(frames):
        x, y = 10 + i % columns * width, 10 + i // columns * height
        with Image.open(frame) as picture:
            small = picture.convert("RGB")
            small.thumbnail((CELL[0] // 2, CELL[1] // 2), Image.Resampling.LANCZOS)
        page.paste(small, (x + (CELL[0] // 2 - small.width) // 2, y))
        draw.text((x, y + CELL[1] // 2 + 13), name, INK, face(15), anchor="lm")
    save_small(page, path)


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--vantorix", type=Path, default=ROOT / "build/vantorix")
    parser.add_argument("--out", type=Path, default=ROOT / "docs/pictures")
    parser.add_argument("--frames", type=Path, help="keep every frame in this folder")
    args = parser.parse_args()
    with tempfile.TemporaryDirectory() as scratch:
        kept = (args.frames or Path(scratch)).resolve()
        frames = []
        for theme in ("default", "touch", "wall"):
            take(args.vantorix.resolve(), theme, kept / theme)
            frames += [(f"{theme}, {screen}: {words}", kept / theme / f"{screen}-{situation}.png")
                       for screen in SCREENS for situation, words in SITUATIONS.items()]
        sheet(frames, args.out / "contact-sheet.png")
        with Image.open(kept / "default/1920x1080-first.png") as first:
            small = first.convert("RGB").resize((1280, 720), Image.Resampling.LANCZOS)
            small.save(args.out / "first-frame.png", optimize=True)


if __name__ == "__main__":
    main()
