#!/usr/bin/env python3
"""Runs console sessions on this machine's console and on the one for arm64, and compares all answers and all frames.

    compare_sessions.py --native PROGRAM --foreign PROGRAM --work FOLDER [--each NUMBER]

The sessions: of every subject of tests/sessions the two (--each) with the most commands that act, such as keys, presses
and ticks. Both consoles get the session's commands, with a frame after each one that acts. Answers have to be the same
to the byte, exit codes and the bytes of all frames too, and the foreign console has to give the session's expected answers.
"""

import argparse
import hashlib
import os
import shutil
import subprocess
import sys

HERE = os.path.dirname(os.path.abspath(__file__))
SESSIONS = os.path.join(os.path.dirname(os.path.dirname(HERE)), "tests", "sessions")
sys.dont_write_bytecode = True
sys.path.insert(0, SESSIONS)

from run_sessions import Failure, Session  # noqa: E402  pylint: disable=wrong-import-position

ACTING = {"key", "down", "up", "dblclick", "move", "tick", "wait", "spectrum", "set", "click", "doubleclick"}
SECONDS_TO_RUN = 600


def acts(line):
    return line.split(maxsplit=1)[0] in ACTING


def commands_of(folder):
    with open(os.path.join(folder, "session.txt"), encoding="utf-8") as file:
        return [line.rstrip("\n") for line in file if line.strip() and not line.startswith("#")]


def chosen(each):
    """The folders of the sessions, by subject."""
    for subject in sorted(os.listdir(SESSIONS)):
        folders = [os.path.join(SESSIONS, subject, name) for name in
                   (sorted(os.listdir(os.path.join(SESSIONS, subject)))
                    if os.path.isdir(os.path.join(SESSIONS, subject)) else [])]
        folders = [folder for folder in folders if os.path.isfile(os.path.join(folder, "session.txt"))]
        folders.sort(key=lambda folder: (-sum(map(acts, commands_of(folder))), folder))
        yield from folders[:each]


def seen(session, console, frames):
    """The answers, the exit code and a digest of each frame, by its name. The frames stay in the folder `frames`."""
    session.options = []
    session.make_home()
    shutil.rmtree(frames, ignore_errors=True)
    os.makedirs(frames)
    text = []
    for number, line in enumerate(commands_of(session.folder)):
        text.append(session.fill_in(line))
        if acts(line):
            text.append("frame %s" % os.path.join(frames, "%04d.png" % number))
    done = subprocess.run([console, "--home", session.home] + session.options, input="\n".join(text + [""]).encode(),
                          stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, timeout=SECONDS_TO_RUN, cwd=session.root,
                          check=False)
    digests = {}
    for name in sorted(os.listdir(frames)):
        with open(os.path.join(frames, name), "rb") as file:
            digests[name] = hashlib.sha256(file.read()).hexdigest()
    return done.stdout.decode().splitlines(), done.returncode, digests


def compare(native, foreign):
    """Raises Failure at the first difference."""
    for number, (expected, found) in enumerate(zip(native[0], foreign[0]), 1):
        if expected != found:
            raise Failure("answer %d:\n  native:  %s\n  foreign: %s" % (number, expected, found))
    if len(native[0]) != len(foreign[0]) or native[1] != foreign[1]:
        raise Failure("%d answers and exit code %d instead of %d and %d" % (
            len(foreign[0]), foreign[1], len(native[0]), native[1]))
    if native[2].keys() != foreign[2].keys():
        raise Failure("frames %s instead of %s" % (list(foreign[2]), list(native[2])))
    differing = [name for name in native[2] if native[2][name] != foreign[2][name]]
    if differing:
        raise Failure("%d of %d frames differ: %s" % (len(differing), len(native[2]), " ".join(differing)))


def main():
    parser = argparse.ArgumentParser(description=__doc__.split("\n", maxsplit=1)[0])
    parser.add_argument("--native", required=True)
    parser.add_argument("--foreign", required=True)
    parser.add_argument("--work", required=True)
    parser.add_argument("--each", type=int, default=2)
    arguments = parser.parse_args()
    native, foreign = os.path.abspath(arguments.native), os.path.abspath(arguments.foreign)
    sessions = frames = pictures = answers = failures = 0
    for folder in chosen(arguments.each):
        session = Session(folder, arguments.work)
        sessions += 1
        try:
            frames_of = os.path.join(os.path.abspath(arguments.work), "frames", session.name)
            expected = seen(session, native, os.path.join(frames_of, "native"))
            compare(expected, seen(session, foreign, os.path.join(frames_of, "foreign")))
            session.options = []
            session.check(foreign)
            answers += len(expected[0])
            frames += len(expected[2])
            pictures += len(set(expected[2].values()))
        except (Failure, OSError, ValueError, subprocess.TimeoutExpired) as error:
            failures += 1
            print("FAILED %s: %s" % (session.name, error), file=sys.stderr)
    print("%d sessions, %d answers and %d frames (%d pictures) are the same; %d sessions failed" % (
        sessions - failures, answers, frames, pictures, failures))
    return 1 if failures or not frames else 0


if __name__ == "__main__":
    sys.exit(main())
