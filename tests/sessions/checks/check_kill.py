#!/usr/bin/env python3
"""Kills the console at random moments, like a power cut, and checks every file of the application folder.

The sessions pick, save and change settings.

    check_kill.py --console PROGRAM --work FOLDER [--rounds N] [--seed N] [--verbose]

All rounds share one home, so that damage in one round affects the next. After each round:

  - stats.ini is intact: every line is a count, and every folder's count is the sum of the picks in it;
  - each answered pick is counted, and at most one more, which was in progress;
  - pathconfig.ini is intact and holds the last choice that was answered, or the one in progress;
  - every playlist is complete, and every one that was answered exists;
  - config.ini and the theme are unchanged, and the only other files are unfinished writes.

To run 1,000 rounds by hand: check_kill.py --rounds 1000.
"""

import argparse
import collections
import json
import os
import random
import signal
import subprocess
import sys
import threading
import time

import check_support

TRACKS = 12
FOLDERS = ("Blues", "Blues/Slow", "Jazz")
ACTIONS = 20  # per round; the kill comes at a random moment

# Touches of the plain theme: the first slots of the left column, the button "save", keys of the on-screen keyboard.
SAVE_BUTTON = "down 610 214"
BACK = "down 20 345"
ACCEPT = "down 300 190"
RELEASE = "up 1 1"


def slot(row):
    return "down 20 %d" % (17 + 33 * (row - 1))


def letter(number):
    """A key of the second line of the keyboard: A to J."""
    return "down %d 100" % (27 + 34 * number)


def menu_row(row):
    return "down 460 %d" % (247 + 15 * (row - 1))


MENU_KEYS = {1: "Order", 2: "ShowBigtitle", 3: "ShowCover", 4: "ShowTrackNum"}


LOOK = "state InfoTitre InfoType Dir1.Path"


class Fault(Exception):
    """A rule that was broken."""


def make_home(given):
    steps = ["base plain", "set config.ini Main TactileMode true", "options --screen 640x360"]
    steps += ["folder '@MUSIC@/%s'" % folder for folder in FOLDERS]
    for folder in ("",) + FOLDERS:
        steps += ["tone '@MUSIC@/%s/%sSong %02d.wav' 0.1" % (folder, folder.replace("/", " "), i) for i in range(TRACKS // 4)]
    return check_support.make_home(given, "kill", "\n".join(steps) + "\n")


def commands_of_round(source):
    """Commands, each with its effect: a pick, a save, a choice, or nothing that stays."""
    # The keyboard opens only if there is something to save; otherwise its keys would be touches on slots. In the order
    # by picks the fourth entry can be a folder, and so can the fourth entry of that one; the third folder has only songs.
    result = [("look", LOOK), ("slot 4", slot(4)), ("", RELEASE)] * 3
    for _ in range(ACTIONS):
        kind = source.random()
        if kind < 0.65:
            row = source.randrange(1, 6)
            # The slot is queried first: if it is a folder it is entered, if it is a track it is picked.
            result += [("look", LOOK), ("slot %d" % row, slot(row)), ("", RELEASE)]
        elif kind < 0.75:
            result += [("", BACK), ("", RELEASE)]
        elif kind < 0.88:
            row = source.randrange(1, 5)
            result += [("look", LOOK), ("menu %d" % row, menu_row(row)), ("setting %d" % row, "state CommandChoice"), ("", RELEASE)]
        else:
            name = source.randrange(10)
            result += [("queue", "state PlaylistPath PlaylistTitre"), ("open", SAVE_BUTTON), ("", letter(name)),
                       ("save %s" % "ABCDEFGHIJ"[name], ACCEPT), ("", RELEASE), ("", BACK), ("", RELEASE)]
    return result


def environment(will_be_killed):
    """A sanitizer's search for leaks at the end complains on standard error when it is killed."""
    if not will_be_killed:
        return None
    given = os.environ.get("ASAN_OPTIONS")
    return {**os.environ, "ASAN_OPTIONS": ":".join(filter(None, (given, "detect_leaks=0")))}


class Round:
    """One run of the console: the commands it received and its answers."""

    def __init__(self, given, session, source, seconds):
        """Kills the console at a random moment within this many seconds of its start. With None it runs to its end."""
        self.commands = commands_of_round(source)
        process = subprocess.Popen([given.console, "--home", session.home] + session.options, stdin=subprocess.PIPE,
                                   stdout=subprocess.PIPE, stderr=subprocess.PIPE, cwd=session.root,
                                   env=environment(seconds is not None))
        text = "".join(command + "\n" for _, command in self.commands).encode()
        feeder = threading.Thread(target=self.feed, args=(process.stdin, text))
        feeder.start()
        killer = threading.Timer(source.uniform(0, seconds or 0), process.send_signal, [signal.SIGKILL])
        if seconds is not None:
            killer.start()
        start = time.monotonic()
        output, errors = process.stdout.read(), process.stderr.read()
        process.wait()
        self.seconds = time.monotonic() - start
        killer.cancel()
        feeder.join()
        self.killed = process.returncode == -signal.SIGKILL
        if errors or process.returncode not in (0, -signal.SIGKILL):
            raise Fault("ended with %s: %s" % (process.returncode, errors.decode(errors="replace")))
        # The last answer may be incomplete.
        lines = output.decode(errors="replace").split("\n")[:-1]
        self.answers = [json.loads(line) for line in lines][1:]

    @staticmethod
    def feed(pipe, text):
        try:
            pipe.write(text)
            pipe.close()
        except BrokenPipeError:
            pass

    def effects(self):
        """The effects of the answered commands, and the possible effects of the one in progress."""
        sure, perhaps = Effects(), Effects()
        seen = {}
        for number, (what, command) in enumerate(self.commands[:len(self.answers) + 1]):
            answered = number < len(self.answers)
            answer = self.answers[number] if answered else {}
            if "error" in answer or answer.get("ok") is False:
                raise Fault("%s: %s" % (command, answer))
            if what in ("look", "queue"):
                seen = answer.get("state", {})
            elif what.startswith("setting"):
                sure.choose(seen["Dir1.Path"], int(what.split()[1]), answer.get("state"))
            else:
                (sure if answered else perhaps).note(what, seen)
        return sure, perhaps


class Effects:
    """Picks as title and folder, the last value of each setting by folder and key, entries by the name of their
    playlist."""

    def __init__(self):
        self.picks = []
        self.settings = {}
        self.saves = {}

    def note(self, what, seen):
        kind, _, value = what.partition(" ")
        if kind == "slot":
            place = int(value) - 1
            # A press on an empty slot picks the last entry before it.
            while place >= 0 and not seen["InfoType"][place]:
                place -= 1
            if place >= 0 and seen["InfoType"][place] == "file":
                self.picks.append((seen["InfoTitre"][place], seen["Dir1.Path"]))
        elif kind == "menu":
            self.settings[seen["Dir1.Path"], MENU_KEYS[int(value)]] = None
        elif kind == "save":
            self.saves[value] = list(zip(seen["PlaylistPath"], seen["PlaylistTitre"]))

    def choose(self, folder, row, state):
        """Notes the value of a menu row after a press. Without an answer it stays unknown."""
        if state:
            words = ("alpha", "playcount") if row == 1 else ("true", "false")
            self.settings[folder, MENU_KEYS[row]] = words[state["CommandChoice"][0][row - 1] - 1]


# --- The files ----------------------------------------------------------------------------------------------------------


def read(path):
    with open(path, "rb") as file:
        return file.read().decode()


def ini(path):
    """The sections of a file, all lines of which the jukebox must have written."""
    sections = {}
    if not os.path.exists(path):
        return sections
    text = read(path)
    if not text.endswith("\r\n"):
        raise Fault("%s is truncated: %r" % (path, text[-80:]))
    section = None
    for line in text[:-2].split("\r\n"):
        if line.startswith("["):
            section = sections.setdefault(line[1:-1], {})
        else:
            key, _, value = line.partition("=")
            if section is None or not key or not value or key in section:
                raise Fault("%s: %r" % (path, line))
            section[key] = value
    return sections


class Ledger:
    """What the files of the home must contain."""

    def __init__(self, session):
        self.session = session
        self.counts = collections.Counter()
        self.settings = {}
        self.playlists = {}
        self.untouched = {name: self.bytes(name) for name in ("config.ini", "themes/default/theme.ini")}
        self.finished = 0

    def bytes(self, name):
        with open(os.path.join(self.session.home, name), "rb") as file:
            return file.read()

    @staticmethod
    def keys_of(pick):
        title, folder = pick
        keys = [title]
        while folder:
            keys.append(folder)
            folder = folder[:folder.rindex("/")]
        return keys

    def check(self, sure, perhaps):
        self.check_counts(sure, perhaps)
        self.check_settings(sure, perhaps)
        self.check_playlists(sure, perhaps)
        for name, content in self.untouched.items():
            if self.bytes(name) != content:
                raise Fault("%s has changed" % name)
        self.check_names()

    def check_counts(self, sure, perhaps):
        actual = collections.Counter(
            {key: int(value) for key, value in ini(self.session.home + "/stats.ini").get("PayingCount", {}).items()})
        for pick in sure.picks:
            self.counts.update(self.keys_of(pick))
        self.finished += len(sure.picks)
        if actual == self.counts:
            return
        for pick in perhaps.picks:
            more = self.counts + collections.Counter(self.keys_of(pick))
            if actual == more:
                self.counts = more
                return
        raise Fault("counts: expected %s, got %s" % (dict(self.counts - actual), dict(actual - self.counts)))

    def check_settings(self, sure, perhaps):
        actual = ini(self.session.home + "/pathconfig.ini")
        values = {(folder, key): value for folder, keys in actual.items() for key, value in keys.items()}
        self.settings.update(sure.settings)
        for pair, value in self.settings.items():
            if pair not in values or (value is not None and value != values[pair] and pair not in perhaps.settings):
                raise Fault("pathconfig.ini: %s is %r, not %r" % (pair, values.get(pair), value))
        for pair, value in values.items():
            if pair not in self.settings and pair not in perhaps.settings:
                raise Fault("pathconfig.ini: %s was never set" % (pair,))
            if value not in (("alpha", "playcount") if pair[1] == "Order" else ("true", "false")):
                raise Fault("pathconfig.ini: %s is %r" % (pair, value))
        self.settings = values

    def check_playlists(self, sure, perhaps):
        folder = self.session.home + "/playlists"
        found = {}
        for name in os.listdir(folder):
            if name.endswith(".vtxpl") and not name.startswith("."):
                lines = read(os.path.join(folder, name)).split("\r\n")
                if lines[-1] or lines[0] != " %d " % ((len(lines) - 2) // 2) or len(lines) % 2 != 0:
                    raise Fault("%s is truncated: %r" % (name, lines[-3:]))
                found[name.removesuffix(" - 01 Jan 2000.vtxpl")] = list(zip(lines[1::2], lines[2::2]))
        self.playlists.update(sure.saves)
        for name, entries in self.playlists.items():
            if found.get(name) not in (entries, perhaps.saves.get(name, entries)):
                raise Fault("playlist %s: expected %s, got %s" % (name, entries, found.get(name)))
        for name in found.keys() - self.playlists.keys():
            if found[name] != perhaps.saves.get(name):
                raise Fault("a playlist that was not saved: %s" % name)
        self.playlists = found

    def check_names(self):
        allowed = {"config.ini", "pathconfig.ini", "stats.ini", "vantorix.log", "playlists", "themes"}
        for name in os.listdir(self.session.home):
            if name not in allowed and name not in {".%s.new" % known for known in allowed}:
                raise Fault("an unknown file: %s" % name)


def beginnings_of_writes(session):
    """The leftover temporary files, by name and time."""
    found = set()
    for folder in (session.home, session.home + "/playlists"):
        found |= {(entry.name, entry.stat().st_mtime_ns) for entry in os.scandir(folder) if entry.name.endswith(".new")}
    return found


def main():
    parser = argparse.ArgumentParser(description=__doc__.split("\n", maxsplit=1)[0])
    parser.add_argument("--console", required=True)
    parser.add_argument("--work", required=True)
    parser.add_argument("--rounds", type=int, default=25)
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("--verbose", action="store_true")
    given = parser.parse_args()
    given.console = os.path.abspath(given.console)
    session = make_home(given)
    ledger = Ledger(session)
    killed = begun = saved = seconds = 0
    known = set()
    start = time.monotonic()
    for number in range(given.rounds):
        try:
            # Every 50th round runs to its end and measures how long that takes on this machine at this time.
            whole = number % 50 == 0
            life = Round(given, session, random.Random("%d/%d" % (given.seed, number)), None if whole else seconds)
            seconds = life.seconds if whole else seconds
            sure, perhaps = life.effects()
            ledger.check(sure, perhaps)
        except Fault as fault:
            print("round %d, seed %d: %s" % (number, given.seed, fault), file=sys.stderr)
            return 1
        killed += life.killed
        saved += len(sure.saves)
        left = beginnings_of_writes(session)
        begun += bool(left - known)
        known = left
    if given.verbose or given.rounds > 100:
        print("%d rounds in %.0f s: %d killed, %d of them during a write; %d picks finished and counted, %d saves" %
              (given.rounds, time.monotonic() - start, killed, begun, ledger.finished, saved))
    # A test that never kills, or never picks, proves nothing.
    return 0 if killed > given.rounds // 2 and ledger.finished > given.rounds else 1


if __name__ == "__main__":
    sys.exit(main())
