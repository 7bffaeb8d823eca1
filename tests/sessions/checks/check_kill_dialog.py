#!/usr/bin/env python3
"""Kills the console at random moments after the OK of the configuration dialog, like a power cut, and checks what is left.

    check_kill_dialog.py --console PROGRAM --work FOLDER [--rounds N] [--seed N]

Each round types new places for the video, a new key and a new label for each of the 20 slots, confirms, and kills the
console a moment later. All rounds share one home. After each round:

  - config.ini and theme.ini are each, byte for byte, the file before the round or the one that OK writes;
  - the theme is not newer than config.ini, which is written first;
  - there are no other files except unfinished writes of these two.

To run 1,000 rounds by hand: check_kill_dialog.py --rounds 1000.
"""

import argparse
import collections
import os
import random
import re
import subprocess
import sys
import time

import check_support

FILES = ("config.ini", "themes/default/theme.ini")
PLACES = ("VideoPositionTop", "VideoPositionWidth", "VideoPositionHeight")
NEXT_TRACK = 14
# Larger files take longer to write, so that more kills hit a write.
PADDING = ("; " + "-" * 117 + "\n") * 1500
SECONDS_TO_WRITE = 30
ROUNDS_BETWEEN_MEASUREMENTS = 50


class Fault(Exception):
    """A rule that was broken."""


def make_home(given):
    session = check_support.make_home(given, "kill_dialog", "base plain\ntone @MUSIC@/a.wav 0.1\n")
    for name in FILES:
        with open(os.path.join(session.home, name), "a", encoding="utf-8") as file:
            file.write(PADDING)
    return session


def code_of(number):
    return 128 + number % 100


def commands(number):
    """The commands before OK."""
    result = ["key 120"] + ["set Text_%s %d" % (place, number) for place in PLACES]
    result += ["set Text_ZoneList%s(%d) %d" % (page, row, number) for row in range(10) for page in ("Gauche", "Droite")]
    return result + ["click Command_KeyAssign(%d)" % NEXT_TRACK, "key %d" % code_of(number)]


def confirmed(name, content, number):
    """The file that OK writes."""
    if name != "config.ini":
        return re.sub(rb"(?m)^(ZoneListPisteNumSaisieLibele)=.*$", rb"\1=%d" % number, content)
    for place in PLACES:
        content = re.sub(rb"(?m)^(%s)=.*$" % place.encode(), rb"\1=%d" % number, content)
    return re.sub(rb"(?m)^(Next)=.*$", rb"\1=%d" % code_of(number), content)


def contents(session):
    result = []
    for name in FILES:
        with open(os.path.join(session.home, name), "rb") as file:
            result.append(file.read())
    return result


def marks(session):
    """What changes when one of the files is written."""
    states = [os.stat(os.path.join(session.home, name)) for name in FILES]
    return [(state.st_ino, state.st_mtime_ns) for state in states]


def unfinished(session):
    """The leftovers of writes, by name and time."""
    found = set()
    for name in FILES:
        for entry in os.scandir(os.path.dirname(os.path.join(session.home, name))):
            if entry.name.endswith(".new"):
                if entry.name != ".%s.new" % os.path.basename(name):
                    raise Fault("an unknown file: %s" % entry.path)
                found.add((entry.path, entry.stat().st_mtime_ns))
    return found


class Round:
    def __init__(self, given, session, number):
        self.process = subprocess.Popen([given.console, "--home", session.home] + session.options, stdin=subprocess.PIPE,
                                        stdout=subprocess.PIPE, stderr=subprocess.PIPE, cwd=session.root)
        try:
            lines = commands(number)
            self.send("".join(line + "\n" for line in lines))
            for _ in range(len(lines) + 1):
                answer = self.process.stdout.readline()
                if b'"ok":true' not in answer and b'"ready":true' not in answer:
                    raise Fault("not carried out: %r" % answer)
        except Fault:
            self.kill()
            raise

    def send(self, text):
        self.process.stdin.write(text.encode())
        self.process.stdin.flush()

    def confirm_and_kill(self, seconds):
        self.send("click Command_OK\n")
        until = time.perf_counter() + seconds
        while time.perf_counter() < until:
            time.sleep(max(0, min(0.0002, until - time.perf_counter())))
        self.kill()

    def confirm_and_measure(self, session):
        """The time from OK until both files have been replaced."""
        before = marks(session)
        start = time.perf_counter()
        self.send("click Command_OK\n")
        while any(old == new for old, new in zip(before, marks(session))):
            if time.perf_counter() > start + SECONDS_TO_WRITE:
                raise Fault("OK did not write both files")
            time.sleep(0.0002)
        seconds = time.perf_counter() - start
        self.kill()
        return seconds

    def kill(self):
        self.process.kill()
        _, errors = self.process.communicate()
        if errors:
            raise Fault("standard error: %s" % errors.decode(errors="replace")[-2000:])


def look(session, before, number):
    """Which of the two files are new."""
    after = contents(session)
    new = []
    for name, old_bytes, new_bytes in zip(FILES, before, after):
        if new_bytes not in (old_bytes, confirmed(name, old_bytes, number)):
            raise Fault("%s is neither the old nor the new file: %d bytes, before %d" %
                        (name, len(new_bytes), len(old_bytes)))
        new.append(new_bytes != old_bytes)
    if new == [False, True]:
        raise Fault("the theme was written before config.ini")
    return tuple(new)


def main():
    parser = argparse.ArgumentParser(description=__doc__.split("\n", maxsplit=1)[0])
    parser.add_argument("--console", required=True)
    parser.add_argument("--work", required=True)
    parser.add_argument("--rounds", type=int, default=50)
    parser.add_argument("--seed", type=int, default=1)
    given = parser.parse_args()
    given.console = os.path.abspath(given.console)
    session = make_home(given)
    source = random.Random(given.seed)
    counts = collections.Counter()
    known = set()
    seconds = 0
    start = time.monotonic()
    for number in range(1, given.rounds + 1):
        try:
            before = contents(session)
            life = Round(given, session, number)
            if number % ROUNDS_BETWEEN_MEASUREMENTS == 1:
                seconds = life.confirm_and_measure(session)
            else:
                life.confirm_and_kill(source.uniform(0, 1.3 * seconds))
            counts[look(session, before, number)] += 1
            left = unfinished(session)
            counts["unfinished"] += bool(left - known)
            known = left
        except Fault as fault:
            print("round %d, seed %d: %s" % (number, given.seed, fault), file=sys.stderr)
            return 1
    print("%d rounds in %.0f s: %d killed before either file was new, %d between the two, %d after both; %d during a write" %
          (given.rounds, time.monotonic() - start, counts[False, False], counts[True, False], counts[True, True],
           counts["unfinished"]))
    # A test that never kills before the end proves nothing.
    return 0 if counts[False, False] + counts[True, False] > given.rounds // 10 else 1


if __name__ == "__main__":
    sys.exit(main())
