#!/usr/bin/python3
"""Takes the first frame for the README and the contact sheet with the console.

The contact sheet shows both themes on common screens in common situations. Requires a built console:

    take_frames.py --console build/vantorix-console [--frames FOLDER]     FOLDER receives every frame at full size
"""

import argparse
import re
import subprocess
import sys
import tempfile
from pathlib import Path

from PIL import Image, ImageDraw

from draw_docs import GROUND, INK, face, save_small

ROOT = Path(__file__).resolve().parents[2]
CELL = (640, 360)
DOWN, RIGHT, LEFT, ENTER, TAB, COIN = 40, 39, 37, 13, 9, 45

INTO_SATURDAY = [DOWN] * 6 + [ENTER]
# Four tracks in two columns are bought; the first one plays.
BUY = [COIN] * 8 + INTO_SATURDAY + [ENTER, DOWN, DOWN, ENTER, RIGHT, ENTER, DOWN, ENTER]
FILL = INTO_SATURDAY + [ENTER, DOWN] * 9
# Situation: keys, changed settings, description.
SITUATIONS = {
    "first": ([], {}, "the first page"),
    "covers": (INTO_SATURDAY, {}, "browsing, covers on"),
    "coverless": (INTO_SATURDAY, {"ShowCover": "false"}, "browsing, covers off"),
    "queue": (BUY, {"ManageCoin": "true"}, "four tracks bought"),
    "main": (BUY + [TAB], {"ManageCoin": "true"}, "focus on the Main block"),
    "playlist": (BUY + [TAB, TAB], {"ManageCoin": "true"}, "focus on the queue"),
    "full": (FILL + [TAB, TAB], {}, "a full queue"),
    "keyboard": (BUY + [TAB, TAB, LEFT, ENTER, RIGHT, ENTER, DOWN, ENTER], {}, "naming a playlist"),
    "bigcover": ([DOWN], {"ShowBigCover": "true"}, "the big cover"),
    "command": (BUY + [TAB, TAB, TAB, DOWN], {"ManageCoin": "true"}, "focus on the menu"),
    "refusal": (INTO_SATURDAY + [ENTER], {"ManageCoin": "true"}, "no credit"),
    "touch": (INTO_SATURDAY, {"TactileMode": "true"}, "touch mode"),
}
SCREENS = {"1920x1080": "horizontal", "1366x768": "horizontal", "1280x720": "horizontal", "1080x1920": "vertical"}


def configure(home, settings):
    """Sets values in [Main] of config.ini."""
    path = home / "config.ini"
    text = path.read_text(encoding="utf-8")
    for key, value in settings.items():
        text, count = re.subn(rf"^{key}=.*$", f"{key}={value}", text, flags=re.MULTILINE)
        if not count:
            sys.exit(f"config.ini has no {key}")
    path.write_text(text, encoding="utf-8")


def take(console, theme, screen, situation, target):
    """One frame as drawn by the jukebox."""
    keys, settings, _ = SITUATIONS[situation]
    with tempfile.TemporaryDirectory() as folder:
        home = Path(folder) / "home"
        subprocess.run([ROOT / "tools/make_home.sh", ROOT / "home", home, ROOT / "demo"], check=True)
        configure(home, {"Theme": theme, "Orientation": SCREENS[screen], **settings})
        lines = []
        for key in keys:
            lines += [f"key {key}"] + (["tick 1"] if key == ENTER else [])
        board = Path(folder) / "keyboard.png"
        if situation == "keyboard":
            lines.append(f"surface Picture_Keyboard {board}")
        if situation == "refusal":
            # The credits blink a few times: they are dark in the first picture and lit in the second.
            lines[-2:-2] = ["later frame " + str(Path(folder) / "dark.png"), f"later frame {target}"]
            commands = "\n".join([*lines, ""])
        else:
            commands = "\n".join([*lines, "tick 2", f"frame {target}", ""])
        call = [console, "--home", home, "--screen", screen]
        answers = subprocess.run(call, input=commands, capture_output=True, text=True, check=False).stdout.splitlines()
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
    parser.add_argument("--console", type=Path, default=ROOT / "build/vantorix-console")
    parser.add_argument("--out", type=Path, default=ROOT / "docs/pictures")
    parser.add_argument("--frames", type=Path, help="keep every frame in this folder")
    args = parser.parse_args()
    console = args.console.resolve()
    with tempfile.TemporaryDirectory() as scratch:
        kept = (args.frames or Path(scratch)).resolve()
        kept.mkdir(parents=True, exist_ok=True)
        frames = []
        for theme in ("default", "touch"):
            for screen in SCREENS:
                for situation, (_, _, words) in SITUATIONS.items():
                    target = kept / f"{theme}-{screen}-{situation}.png"
                    take(console, theme, screen, situation, target)
                    frames.append((f"{theme}, {screen}: {words}", target))
        sheet(frames, args.out / "contact-sheet.png")
        with Image.open(kept / "default-1920x1080-first.png") as first:
            small = first.convert("RGB").resize((1280, 720), Image.Resampling.LANCZOS)
            small.save(args.out / "first-frame.png", optimize=True)


if __name__ == "__main__":
    main()
