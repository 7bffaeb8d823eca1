#!/usr/bin/env python3
"""Random sessions: whatever is pressed, the console answers every command, ends normally and never crashes. The same
session gives the same bytes again.

    check_soak.py --console PROGRAM --work FOLDER [--seed N] [--sessions N] [--commands N]
"""

import argparse
import json
import os
import random
import subprocess
import sys

import check_support

KEYS = [38, 40, 37, 39, 13, 8, 9, 45, 113, 114, 115, 116, 117, 70, 65, 66, 49, 50]
# Rare: codes at the ends of their range, a key without a function.
RARE_KEYS = [32767, -32768, 0, 255]
# Refused if the key did not open the dialog.
CONFIGURATION = "key 120\nset Combo_Theme small\nset Text_VideoPositionLeft 40\nget Label_Key(3)\nclick Command_%s"

# LeakSanitizer, which stops all threads, sometimes fails internally while threads end. The short sessions, which would
# show the same leaks, use it; here it is off.
ENVIRONMENT = dict(os.environ, ASAN_OPTIONS=":".join(filter(None, [os.environ.get("ASAN_OPTIONS"), "detect_leaks=0"])))


def make_steps(source):
    """A home that differs from session to session."""
    steps = ["base plain", "tone @MUSIC@/a.wav 12", "tone @MUSIC@/long.wav 40", "media tone.mp3 '@MUSIC@/Band - Tone.mp3'",
             "media film.avi @MUSIC@/film.avi", "text @MUSIC@/broken.mp3 'no sound'", "empty @MUSIC@/empty.flac",
             "folder @MUSIC@/deep/er/still", "folder @MUSIC@/nothing", "media tone.flac '@MUSIC@/deep/x|y.flac'",
             "text playlists/two.vtxpl '2\\r\\n@MUSIC@/a.wav\\r\\na\\r\\n@MUSIC@/long.wav\\r\\nlong\\r\\n'",
             "text playlists/bad.vtxpl 'many\\r\\n'", "empty playlists/empty.vtxpl"]
    steps += ["empty '@MUSIC@/deep/t%02d.mp3'" % i for i in range(source.choice([0, 3, 45]))]
    settings = {"TactileMode": ["true", "false"], "ManageCoin": ["true", "false"], "Theme": ["default", "small"],
                "Orientation": ["horizontal", "vertical"], "DefaultOrder": ["alpha", "playcount", "odd"],
                "ShowBigCover": ["true", "false"], "ShowMainZone": ["true", "true", "false"],
                "ShowPlaylistZone": ["true", "true", "false"], "ActiveCommandZone": ["true", "true", "false"],
                "VideoPositionLeft": ["", "2000"], "PositionWidth": ["", "300", "640"], "PositionHeight": ["", "480"]}
    for key, values in settings.items():
        steps.append("set config.ini Main %s '%s'" % (key, source.choice(values)))
    steps.append("set config.ini RGBLeds Active %s" % source.choice(["true", "false"]))
    steps.append("set config.ini RGBLeds NbLeds %s" % source.choice(["1", "10", "31"]))
    steps.append("options --screen %s" % source.choice(["1280x720", "640x480", "320x200,800x600"]))
    return "\n".join(steps) + "\n"


def make_command(source, home):
    x, y = source.randrange(-20, 1400), source.randrange(-20, 800)
    pictures = ["frame", "surface Picture_Cache", "surface Picture_Playlist", "surface Picture_TmpCover"]
    kinds = [
        (50, lambda: "key %d" % source.choice(KEYS)),
        (2, lambda: "key %d" % source.choice(RARE_KEYS)),
        (1, lambda: CONFIGURATION % source.choice(["OK", "Cancel"])),
        (12, lambda: "down %d %d\nup %d %d" % (x, y, x + source.choice([0, 3, 40]), y + source.choice([0, 0, 60]))),
        (4, lambda: "move %d %d%s" % (x, y, source.choice(["", " left"]))),
        (3, lambda: "dblclick %d %d" % (x, y)),
        (12, lambda: "tick %d" % source.choice([1, 1, 3, 20])),
        (4, lambda: "spectrum %d" % source.choice([1, 4])),
        (4, lambda: "wait %d" % source.choice([1, 500, 11000])),
        (6, lambda: "later " + make_command(source, home).split("\n", maxsplit=1)[0]),
        (3, lambda: "serial %s" % source.choice(["Mode Normal\\nOK", "\\x00\\xff", "x" * 100])),
        (3, lambda: source.choice(["state", "state List_List Remain", "calls"])),
        (2, lambda: "%s %s/soak.png" % (source.choice(pictures), home)),
        (1, lambda: "image %s/themes/small/%s" % (home, source.choice(["main.png", "preview.jpg", "theme.ini"]))),
        (1, lambda: source.choice(["key", "tick x", "state Nothing", "later", "# nothing", ""])),
    ]
    return source.choices([make for _, make in kinds], [weight for weight, _ in kinds])[0]()


def asked(line):
    return bool(line.strip()) and not line.startswith("#")


def play(given, seed):
    """One session, including the making of its home: its commands, the finished process, its last frame."""
    source = random.Random(seed)
    session = check_support.make_home(given, "soak", make_steps(source))
    lines = "\n".join(make_command(source, session.home) for _ in range(given.commands)).split("\n")
    lines = [line for line in lines if not line.startswith("later later")] + ["state", "frame last.png"]
    process = subprocess.run([given.console, "--home", session.home] + session.options, input="\n".join(lines).encode(),
                             stdout=subprocess.PIPE, stderr=subprocess.PIPE, timeout=given.limit, check=False,
                             cwd=session.home, env=ENVIRONMENT)
    frame = os.path.join(session.home, "last.png")
    if not os.path.exists(frame):
        return lines, process, b""
    with open(frame, "rb") as file:
        return lines, process, file.read()


def run_session(given, seed):
    lines, process, _ = play(given, seed)
    answers = [json.loads(line) for line in process.stdout.decode().splitlines()]
    ended = bool(answers) and "exit" in answers[-1]
    count = sum(1 for answer in answers[1:] if not answer.get("later"))
    good = process.returncode == (answers[-1]["exit"] if ended else 0) and bool(answers)
    if not ended:
        good = good and count == sum(map(asked, lines))
    if not good or given.verbose:
        errors = sum(1 for answer in answers if "error" in answer)
        print("seed %d: code %d, %d answers to %d commands, %d errors, last: %s" % (
            seed, process.returncode, count, sum(map(asked, lines)), errors, json.dumps(answers[-1:])[:300]))
    if not good:
        place = os.path.join(given.work, "soak_%d.txt" % seed)
        with open(place, "w", encoding="utf-8") as file:
            file.write("\n".join(lines))
        print("  commands kept in %s\n%s" % (place, process.stderr.decode(errors="replace")[-6000:]))
    return good


def is_repeatable(given):
    """Repeats the first session: the answers and the picture are the same."""
    _, first, first_frame = play(given, given.seed)
    _, second, second_frame = play(given, given.seed)
    same = first.stdout == second.stdout and first_frame == second_frame
    if not same:
        print("seed %d: another run of the same session gave different answers" % given.seed)
    return same


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--console", required=True)
    parser.add_argument("--work", required=True)
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("--sessions", type=int, default=6)
    parser.add_argument("--commands", type=int, default=250)
    parser.add_argument("--limit", type=int, default=200, help="seconds for a session")
    parser.add_argument("--verbose", action="store_true")
    given = parser.parse_args()
    given.console = os.path.abspath(given.console)
    seeds = range(given.seed, given.seed + given.sessions)
    results = [run_session(given, seed) for seed in seeds]
    sys.exit(0 if all(results) and is_repeatable(given) else 1)


if __name__ == "__main__":
    main()
