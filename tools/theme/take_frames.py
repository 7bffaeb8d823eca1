#!/usr/bin/python3
"""Takes the pictures of the delivered themes for the documentation, as the jukebox draws them with the demo library.

    take_frames.py [--console build/vantorix-console] [--frames FOLDER]     FOLDER receives every frame at full size

Each theme gets a picture of its own, and all of them a sheet: a page on screens of several shapes, and what a patron
meets in an evening. For every situation at any size: vantorix --check-theme NAME --frames FOLDER.
"""

import argparse
import re
import subprocess
import sys
import tempfile
from pathlib import Path

from PIL import Image, ImageDraw, ImageFont

from light import SCRIPT

ROOT = Path(__file__).resolve().parents[2]
DOWN, RIGHT, LEFT, ENTER, TAB, COIN = 40, 39, 37, 13, 9, 45
INTO_SATURDAY = [DOWN] * 6 + [ENTER]
# Four tracks in two columns are bought; the first one plays.
BUY = [COIN] * 8 + INTO_SATURDAY + [ENTER, DOWN, DOWN, ENTER, RIGHT, ENTER, DOWN, ENTER]
# Situation: keys and changed settings.
SITUATIONS = {
    "bought": (BUY, {"ManageCoin": "true"}),
    "first": ([], {}),
    "bigcover": (INTO_SATURDAY + [DOWN, DOWN], {"ShowBigCover": "true"}),
    "keyboard": (BUY + [TAB, TAB, LEFT, ENTER, RIGHT, ENTER, DOWN, ENTER], {}),
    "queue": (BUY + [TAB, TAB], {"ManageCoin": "true"}),
    "touch": (INTO_SATURDAY, {"TactileMode": "true"}),
}
# The shapes next to the large picture, and the situations below it at 1920x1080.
SHAPES = ("1080x1920", "1280x1024", "1024x600")
BELOW = ("first", "bigcover", "keyboard", "queue", "touch")
# The sheet, in pixels.
WIDTH, GAP, HEADING = 1600, 14, 64
LARGE = (880, 495)
GROUND, INK = (22, 20, 24), (236, 226, 208)


def configure(home, settings):
    """Sets values in [Main] of config.ini."""
    path = home / "config.ini"
    text = path.read_text(encoding="utf-8")
    for key, value in settings.items():
        text, count = re.subn(rf"^{key}=.*$", f"{key}={value}", text, flags=re.MULTILINE)
        if not count:
            sys.exit(f"config.ini has no {key}")
    path.write_text(text, encoding="utf-8")


def commands(situation, target, board):
    """The lines for the console: each pick takes its time, and the message is lit in the picture."""
    lines = []
    for key in SITUATIONS[situation][0]:
        lines += [f"key {key}"] + (["tick 1"] if key == ENTER else [])
    if situation == "keyboard":
        lines.append(f"surface Picture_Keyboard {board}")
    return "\n".join([*lines, "tick 1", f"frame {target}", ""])


def take(console, theme, screen, situation, target):
    """One frame."""
    with tempfile.TemporaryDirectory() as folder:
        home, board = Path(folder) / "home", Path(folder) / "keyboard.png"
        subprocess.run([ROOT / "tools/make_home.sh", ROOT / "home", home, ROOT / "demo"], check=True)
        width, height = map(int, screen.split("x"))
        orientation = "horizontal" if width > height else "vertical"
        configure(home, {"Theme": theme, "Orientation": orientation, **SITUATIONS[situation][1]})
        answers = subprocess.run([console, "--home", home, "--screen", screen], capture_output=True, text=True,
                                 input=commands(situation, target, board), check=False).stdout.splitlines()
        bad = [answer for answer in answers if "error" in answer or '"ok":false' in answer]
        if bad or not target.is_file():
            sys.exit(f"{theme} {screen} {situation}: {bad or answers[-1:]}")
        if board.is_file():
            lay_in_the_middle(board, target)


def lay_in_the_middle(board, target):
    """The position of the on-screen keyboard's window."""
    with Image.open(board) as keys, Image.open(target) as frame:
        whole = frame.convert("RGB")
        whole.paste(keys.convert("RGB"), ((whole.width - keys.width) // 2, (whole.height - keys.height) // 2))
    whole.save(target)


def fitted(path, size):
    """The picture at the largest size that fits."""
    with Image.open(path) as frame:
        scale = min(size[0] / frame.width, size[1] / frame.height)
        return frame.convert("RGB").resize((round(frame.width * scale), round(frame.height * scale)),
                                           Image.Resampling.LANCZOS)


def lay_row(page, pictures, top):
    """Lays pictures over the whole width of the sheet, at equal distances. Returns the height of the row."""
    space = (WIDTH - sum(picture.width for picture in pictures)) / (len(pictures) + 1)
    left = space
    for picture in pictures:
        page.paste(picture, (round(left), top))
        left += picture.width + space
    return max(picture.height for picture in pictures)


def stacked(pictures):
    """Two pictures above one another, as one."""
    page = Image.new("RGB", (max(each.width for each in pictures), LARGE[1]), GROUND)
    for picture, top in zip(pictures, (0, LARGE[1] - pictures[1].height)):
        page.paste(picture, ((page.width - picture.width) // 2, top))
    return page


def band(theme, frames):
    """A theme on the sheet: its name, the large picture, other shapes, and what happens in an evening."""
    small = (WIDTH - (len(BELOW) + 1) * GAP) // len(BELOW)
    page = Image.new("RGB", (WIDTH, HEADING + LARGE[1] + GAP + small * 9 // 16 + 2 * GAP), GROUND)
    ImageDraw.Draw(page).text((WIDTH // 2, HEADING // 2), theme.capitalize(), INK,
                              ImageFont.truetype(str(SCRIPT), 44), anchor="mm")
    half = (LARGE[1] - GAP) // 2
    tall, square, wide = (frames[shape, "bought"] for shape in SHAPES)
    rest = WIDTH - 4 * GAP - LARGE[0] - fitted(tall, (WIDTH, LARGE[1])).width
    height = lay_row(page, [fitted(frames["1920x1080", "bought"], LARGE), fitted(tall, (WIDTH, LARGE[1])),
                            stacked([fitted(square, (rest, half)), fitted(wide, (rest, half))])], HEADING)
    lay_row(page, [fitted(frames["1920x1080", each], (small, small)) for each in BELOW], HEADING + height + GAP)
    return page


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--console", type=Path, default=ROOT / "build/vantorix-console")
    parser.add_argument("--out", type=Path, default=ROOT / "docs/pictures")
    parser.add_argument("--frames", type=Path, help="keep every frame in this folder")
    args = parser.parse_args()
    with tempfile.TemporaryDirectory() as scratch:
        kept = (args.frames or Path(scratch)).resolve()
        kept.mkdir(parents=True, exist_ok=True)
        bands = []
        for theme in sorted(path.name for path in (ROOT / "home/themes").iterdir()):
            wanted = [(shape, "bought") for shape in SHAPES] + [("1920x1080", each) for each in SITUATIONS]
            frames = {(screen, situation): kept / f"{theme}-{screen}-{situation}.png" for screen, situation in wanted}
            for (screen, situation), target in frames.items():
                take(args.console.resolve(), theme, screen, situation, target)
            fitted(frames["1920x1080", "bought"], (1280, 720)).save(args.out / f"{theme}.jpg", quality=88, optimize=True)
            bands.append(band(theme, frames))
        sheet = Image.new("RGB", (WIDTH, sum(each.height for each in bands)), GROUND)
        for i, each in enumerate(bands):
            sheet.paste(each, (0, sum(above.height for above in bands[:i])))
        sheet.save(args.out / "contact-sheet.jpg", quality=86, optimize=True)


if __name__ == "__main__":
    main()
