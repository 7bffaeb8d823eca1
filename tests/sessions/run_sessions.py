#!/usr/bin/env python3
"""Runs console sessions and compares every answer with the expected one.

    run_sessions.py --console PROGRAM --work FOLDER [--accept] SESSION...

A session is a folder <subject>/<behaviour>/ next to this script with these files:

  session.txt      the rule that the session shows, as a comment, and the console's commands, one per line. "@HOME@" and
                   "@MUSIC@" are replaced by the session's application folder and music folder.
  home.txt         how these folders are made and how the program is called; see below.
  expected.jsonl   the expected answers of the console: one JSON value per line, in the order of the answers. The first
                   is {"ready":true}. Blank lines and lines that begin with "#" are skipped. @HOME@ and @MUSIC@ are
                   replaced here too.
  after/           optional: files that the application folder must contain at the end, byte for byte (@HOME@ and
                   @MUSIC@ are replaced).

How answers are compared: numbers, texts, true, false and null must match exactly (1 and 1.0 are the same, 1 and true
are not). Every expected member of an object must exist and match; other members are ignored. Lists must have the same
length and are compared element by element. A member whose name ends in "~" expects a list that contains the given
elements in this order, possibly with others before, between and after them: {"calls~": [["BASS_ChannelPlay"]]}.
Unexpected and missing answers are failures. The exit code must be the number in the program's "exit" line, or 0 without
such a line.

home.txt has one step per line. "#" begins a comment. Words are split as in a shell, so "a name with blanks" is quoted.
Paths may contain @HOME@ and @MUSIC@; without them they are relative to the application folder:

  base NAME                       copies tests/homes/NAME to the application folder; "none": empty. First step.
  set FILE SECTION KEY VALUE      sets a key of an INI file
  unset FILE SECTION KEY          removes a key of an INI file
  folder PATH                     makes a folder and its parents
  empty PATH...                   makes empty files
  text PATH TEXT                  makes a text file; TEXT may use the escapes \\n, \\r, \\t, \\xHH and \\\\
  playlist PATH COUNT TRACK       makes a playlist file with COUNT entries of one track
  tone PATH SECONDS [HZ]          makes a WAV file: a sine (440 Hz) at half of full scale, 16-bit stereo, 44100 Hz
  media NAME PATH                 copies tests/sessions/media/NAME: tone.mp3 (3 s), tone.flac (1 s), film.avi (10 s,
                                  64x48), wide_film.avi (60 s, 64x32, without sound)
  copy NAME PATH                  copies a file of the repository; NAME is relative to the tests folder
  remove PATH                     removes a file, or a folder with its contents
  link TARGET PATH                makes a symbolic link
  options WORD...                 more words for the command line: --screen, --clock, --fail

--accept prints the actual answers instead of comparing them, with the folders replaced by @HOME@ and @MUSIC@.
"""

import argparse
import json
import math
import os
import re
import shlex
import shutil
import struct
import subprocess
import sys

SESSIONS = os.path.dirname(os.path.abspath(__file__))
TESTS = os.path.dirname(SESSIONS)
SECONDS_TO_RUN = 240


class Failure(Exception):
    """A fault of a session."""


# --- Making the folders -------------------------------------------------------------------------------------------------


def write_tone(path, seconds, hertz):
    turn = 2 * math.pi * hertz / 44100
    # The samples of whole hertz repeat every second.
    second = b"".join(struct.pack("<hh", *[round(16384 * math.sin(turn * i))] * 2) for i in range(44100))
    samples = (second * math.ceil(seconds))[:4 * round(seconds * 44100)]
    head = struct.pack("<4sI4s4sIHHIIHH4sI", b"RIFF", len(samples) + 36, b"WAVE", b"fmt ", 16, 1, 2, 44100, 176400, 4, 16,
                       b"data", len(samples))
    with open(path, "wb") as file:
        file.write(head + samples)


def write_playlist(path, count, track):
    with open(path, "wb") as file:
        file.write(" {} \r\n".format(count).encode() + "{}\r\n{}\r\n".format(track, os.path.basename(track)).encode() * count)


def unescape(text):
    meaning = {"n": b"\n", "r": b"\r", "t": b"\t", "\\": b"\\"}
    result = b""
    for plain, byte, letter in re.findall(r"([^\\]+)|\\x([0-9A-Fa-f]{2})|\\(.)", text):
        if letter and letter not in meaning:
            raise Failure("unknown escape: \\" + letter)
        result += plain.encode() if plain else bytes.fromhex(byte) if byte else meaning[letter]
    return result


def change_ini(path, section, key, value):
    """Sets a key, or removes it if the value is None; nothing else in the file changes."""
    lines = open(path, encoding="utf-8").read().split("\n") if os.path.exists(path) else []
    inside = [i for i, line in enumerate(lines) if line.strip().lower() == "[%s]" % section.lower()]
    if not inside:
        lines += ["[%s]" % section]
        inside = [len(lines) - 1]
    end = inside[0] + 1
    while end < len(lines) and not lines[end].lstrip().startswith("["):
        if lines[end].split("=")[0].strip().lower() == key.lower():
            break
        end += 1
    found = end < len(lines) and not lines[end].lstrip().startswith("[")
    if value is None and not found:
        raise Failure("no such key: [%s] %s" % (section, key))
    new = [] if value is None else ["%s=%s" % (key, value)]
    lines[end if found else inside[0] + 1:end + 1 if found else inside[0] + 1] = new
    with open(path, "w", encoding="utf-8") as file:
        file.write("\n".join(lines))


def members(pairs):
    """The members of an answer's object. An object with a repeated name is invalid."""
    names = [name for name, _ in pairs]
    if len(set(names)) < len(names):
        raise Failure("an answer has a member twice: " + ", ".join(sorted(n for n in set(names) if names.count(n) > 1)))
    return dict(pairs)


class Session:
    def __init__(self, folder, work):
        self.folder = os.path.abspath(folder)
        self.name = self.name_of(self.folder)
        self.root = os.path.join(os.path.abspath(work), self.name)
        self.home = os.path.join(self.root, "home")
        self.music = os.path.join(self.root, "music")
        self.options = []

    @staticmethod
    def name_of(folder):
        """Subject and behaviour for a session below this folder, otherwise the folder's own name."""
        inside = os.path.commonpath([folder, SESSIONS]) == SESSIONS
        return os.path.relpath(folder, SESSIONS) if inside else os.path.basename(folder)

    def fill_in(self, text):
        return text.replace("@HOME@", self.home).replace("@MUSIC@", self.music)

    def put_back(self, text):
        return text.replace(self.home, "@HOME@").replace(self.music, "@MUSIC@")

    def read(self, name):
        with open(os.path.join(self.folder, name), encoding="utf-8") as file:
            return self.fill_in(file.read())

    def path(self, word):
        path = os.path.join(self.home, word)
        os.makedirs(os.path.dirname(path), exist_ok=True)
        return path

    def make_home(self):
        shutil.rmtree(self.root, ignore_errors=True)
        os.makedirs(self.home)
        os.makedirs(self.music)
        for number, line in enumerate(self.read("home.txt").split("\n"), 1):
            words = shlex.split(line, comments=True)
            try:
                if words:
                    self.step(words)
            except (Failure, OSError, ValueError, IndexError, TypeError, KeyError) as error:
                raise Failure("home.txt:%d: %s: %s" % (number, line, error)) from error

    def copy_base(self, name):
        if name == "none":
            return
        shutil.copytree(os.path.join(TESTS, "homes", name), self.home, dirs_exist_ok=True)
        for file in os.listdir(self.home):
            path = os.path.join(self.home, file)
            if file.endswith(".ini"):
                with open(path, encoding="utf-8") as old:
                    text = self.fill_in(old.read())
                with open(path, "w", encoding="utf-8") as new:
                    new.write(text)

    def step(self, words):
        verb, arguments = words[0], words[1:]
        steps = {
            "base": self.copy_base,
            "set": lambda file, section, key, value: change_ini(self.path(file), section, key, value),
            "unset": lambda file, section, key: change_ini(self.path(file), section, key, None),
            "folder": lambda path: os.makedirs(self.path(path), exist_ok=True),
            "empty": lambda *paths: [open(self.path(path), "wb").close() for path in paths],
            "text": lambda path, text: open(self.path(path), "wb").write(unescape(text)),
            "playlist": lambda path, count, track: write_playlist(self.path(path), int(count), track),
            "tone": lambda path, seconds, hertz="440": write_tone(self.path(path), float(seconds), int(hertz)),
            "media": lambda name, path: shutil.copy(os.path.join(SESSIONS, "media", name), self.path(path)),
            "copy": lambda name, path: shutil.copy(os.path.join(TESTS, name), self.path(path)),
            "remove": lambda path: self.remove(self.path(path)),
            "link": lambda target, path: os.symlink(target, self.path(path)),
            "options": lambda *words: self.options.extend(words),
        }
        if verb not in steps:
            raise Failure("unknown step")
        steps[verb](*arguments)

    @staticmethod
    def remove(path):
        shutil.rmtree(path) if os.path.isdir(path) and not os.path.islink(path) else os.remove(path)

    # --- Running and comparing --------------------------------------------------------------------------------------

    def run(self, console):
        """The answers, as lines, and the exit code."""
        command = [console, "--home", self.home] + self.options
        process = subprocess.run(command, input=self.read("session.txt").encode(), stdout=subprocess.PIPE,
                                 stderr=subprocess.PIPE, timeout=SECONDS_TO_RUN, cwd=self.root, check=False)
        self.errors = process.stderr.decode(errors="replace")
        return process.stdout.decode().splitlines(), process.returncode

    def commands(self):
        lines = self.read("session.txt").split("\n")
        return [line for line in lines if line.strip() and not line.startswith("#")]

    def check(self, console):
        self.make_home()
        lines, code = self.run(console)
        actual = [json.loads(line, object_pairs_hook=members) for line in lines]
        commands = self.commands_of(actual)
        position = 0
        for number, line in enumerate(self.read("expected.jsonl").split("\n"), 1):
            if not line.strip() or line.startswith("#"):
                continue
            if position == len(actual):
                raise Failure(self.report(number, "(none)", line, "no answer", code))
            fault = compare(json.loads(line), actual[position], "")
            if fault:
                raise Failure(self.report(number, commands[position], line, lines[position], code) + "\n  " + fault)
            position += 1
        if position < len(actual):
            raise Failure(self.report(0, commands[position], "no answer", lines[position], code))
        wanted = actual[-1].get("exit", 0) if actual else 0
        if code != wanted:
            raise Failure("exit code %d instead of %d\n%s" % (code, wanted, self.errors))
        self.check_files()

    def report(self, number, command, expected, actual, code):
        text = "%s\n  expected.jsonl line %d\n  command:  %s\n  expected: %s\n  actual:   %s\n  exit code %d" % (
            self.folder, number, command, expected, actual, code)
        return self.put_back(text) + ("\n" + self.errors if self.errors else "")

    def commands_of(self, actual):
        """The command of each answer, for the report: kept commands answer out of turn."""
        commands = iter(self.commands())
        started = False
        result = []
        for answer in actual:
            if answer.get("later"):
                result.append("(a kept command)")
            elif not started:
                result.append("(start-up)")
                started = "ready" in answer or "exit" in answer
            else:
                result.append(next(commands, "(the end of the input)"))
        return result

    def check_files(self):
        root = os.path.join(self.folder, "after")
        for folder, _, files in os.walk(root):
            for name in files:
                place = os.path.relpath(os.path.join(folder, name), root)
                with open(os.path.join(folder, name), "rb") as file:
                    expected = self.fill_in(file.read().decode()).encode()
                path = os.path.join(self.home, place)
                if not os.path.isfile(path):
                    raise Failure("%s: missing at the end: %s" % (self.folder, place))
                with open(path, "rb") as file:
                    content = file.read()
                if content != expected:
                    raise Failure("%s: differs at the end: %s\n  expected: %r\n  actual:   %r" %
                                  (self.folder, place, expected, content))


def compare(expected, actual, place):
    """Describes the difference; empty if there is none."""
    if isinstance(expected, dict):
        if not isinstance(actual, dict):
            return "%s: no object" % place
        for name, value in expected.items():
            fault = compare_member(name, value, actual, place + "." + name)
            if fault:
                return fault
        return ""
    if isinstance(expected, list):
        if not isinstance(actual, list) or len(expected) != len(actual):
            return "%s: not a list of %d" % (place, len(expected))
        faults = (compare(e, a, "%s[%d]" % (place, i)) for i, (e, a) in enumerate(zip(expected, actual)))
        return next((fault for fault in faults if fault), "")
    same = expected == actual and isinstance(expected, bool) == isinstance(actual, bool)
    return "" if same else "%s: expected %s, got %s" % (place, json.dumps(expected), json.dumps(actual))


def compare_member(name, value, actual, place):
    if name.endswith("~"):
        among = actual.get(name[:-1])
        rest = iter(among if isinstance(among, list) else [])
        missing = [e for e in value if not any(not compare(e, a, "") for a in rest)]
        return "%s: missing from here on: %s" % (place, json.dumps(missing[0])) if missing else ""
    return compare(value, actual[name], place) if name in actual else "%s: missing" % place


def main():
    parser = argparse.ArgumentParser(description=__doc__.split("\n", maxsplit=1)[0])
    parser.add_argument("--console", required=True)
    parser.add_argument("--work", required=True)
    parser.add_argument("--accept", action="store_true")
    parser.add_argument("sessions", nargs="+")
    arguments = parser.parse_args()
    failures = 0
    for folder in arguments.sessions:
        session = Session(folder, arguments.work)
        try:
            if arguments.accept:
                session.make_home()
                print(session.put_back("\n".join(session.run(os.path.abspath(arguments.console))[0])))
            else:
                session.check(os.path.abspath(arguments.console))
        except (Failure, json.JSONDecodeError, subprocess.TimeoutExpired, OSError, UnicodeDecodeError) as error:
            failures += 1
            print("FAILED %s: %s" % (session.name, error), file=sys.stderr)
    return 1 if failures else 0


if __name__ == "__main__":
    sys.exit(main())
