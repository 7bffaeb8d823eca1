#!/usr/bin/env python3
"""Feeds the console seeded random commands on homes of many kinds and checks every answer.

    soak.py --console PROGRAM --work FOLDER [--commands N] [--seed N] [--run N] [--verbose]

A run is one start of the console on a fresh home: one of HOMES, with settings that depend on the seed. It ends after
--run commands, at the quit key or the menu's "quit", or soon after an error that leaves InputBusy set. Runs follow one
another until N commands have been answered. These rules are checked:

  - every line is a well-formed answer, and every command has one;
  - an error in a handler has one of the numbers of ERRORS; they are counted and reported at the end;
  - the program ends only by its quit key, by the menu, because its input ended, or because a place that is not a number
    was confirmed in the configuration;
  - nothing is written to standard error;
  - no run takes more memory than --megabytes, however many commands it gets.

Every fault is reported with the home and the seed, and the run's commands are kept in the work folder. Feed them to the
console to reproduce it. The long soak: soak.py --commands 100000 --run 2000 --dialogs 5.
"""

import argparse
import collections
import json
import os
import random
import re
import select
import subprocess
import sys
import time

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), "checks"))
import check_support  # noqa: E402
import soak_dialogs  # noqa: E402

ERRORS = {5, 6, 9, 13, 62, 75, 76, 91}
SECONDS_TO_ANSWER = 60
SECONDS_TO_END = 30
# Number of commands that a console still gets after an error has left InputBusy set: they must do no harm.
COMMANDS_AFTER_ERROR = 20
COMMANDS_BETWEEN_LOOKS = 25
# LeakSanitizer, which stops all threads, sometimes crashes while threads end. The sessions look for leaks.
ENVIRONMENT = dict(os.environ, ASAN_OPTIONS=":".join(filter(None, [os.environ.get("ASAN_OPTIONS"), "detect_leaks=0"])))
# The most commands that a dialog gets before it is closed.
COMMANDS_IN_DIALOGS = 60

# The default bindings: the arrows, then confirm, back, next zone, coin, the transport keys; seek, letters, digits.
ARROWS = [37, 38, 39, 40]
BINDINGS = [13, 13, 8, 9, 9, 45, 113, 114, 115, 116, 117]
TYPED = [70] + list(range(65, 70)) + list(range(48, 58))
RARE = [27, 120, 0, 33, 64, 90, 91, 255, 32767, -1, -32768]

# A place, a button, a slot: positions that are touched more often than by chance.
SPOTS = [(20, 20), (20, 80), (240, 20), (240, 300), (464, 88), (500, 88), (536, 88), (572, 88), (608, 88), (466, 50),
         (460, 130), (460, 160), (460, 200), (460, 214), (500, 214), (536, 214), (570, 214), (610, 214), (20, 345),
         (340, 345), (400, 345), (460, 245), (460, 262), (460, 330)]


def tracks(count):
    return ["media tone.mp3 '@MUSIC@/Band %03d - Song.mp3'" % i for i in range(min(count, 3))] + [
        "empty '@MUSIC@/Band %03d - Song.mp3'" % i for i in range(3, count)]


def nested():
    steps = []
    for folder in ("a", "a/b", "a/b/c", "a/b/c/d", "e", "e/f", "nothing"):
        steps.append("folder '@MUSIC@/%s'" % folder)
    for path in ("a/one.mp3", "a/b/two.mp3", "a/b/c/three.flac", "e/f/four.mp3", "top.mp3"):
        steps.append("media %s '@MUSIC@/%s'" % ("tone.flac" if path.endswith("flac") else "tone.mp3", path))
    return steps + ["media film.avi @MUSIC@/a/film.avi", "media film.avi @MUSIC@/film.avi", "empty @MUSIC@/film.mp3",
                    "text @MUSIC@/broken.wav 'no sound'", "empty '@MUSIC@/a/x|y 100%1.mp3'"]


def playlists():
    def text(name, content):
        return "text playlists/%s '%s'" % (name, content)
    track = "@MUSIC@/Band 000 - Song.mp3\\r\\nSong\\r\\n"
    gone = "@MUSIC@/gone.mp3\\r\\ngone\\r\\n"
    return tracks(12) + [text("good.vtxpl", " 3 \\r\\n" + track + gone + track), text("short.vtxpl", " 9 \\r\\n" + track),
                         text("words.vtxpl", "many\\r\\n" + track), text("vast.vtxpl", "40000\\r\\n"),
                         text("gone.vtxpl", "1\\r\\n" + gone), text("CAPITALS.VTXPL", "1\\r\\n" + track),
                         "empty playlists/empty.vtxpl", text("long.vtxpl", "30\\r\\n" + track * 30)]


def deep():
    return ["folder '@MUSIC@/%s'" % "/".join(["d"] * 105), "media tone.mp3 @MUSIC@/z.mp3"]


HOMES = {
    "empty": lambda: [],
    "one": lambda: tracks(1),
    "nineteen": lambda: tracks(19),
    "twenty": lambda: tracks(20),
    "twenty-one": lambda: tracks(21),
    "five hundred": lambda: tracks(500),
    "nested": nested,
    "playlists": playlists,
    "deep": deep,
}


def make_home(given, kind, source):
    steps = ["base plain"] + HOMES[kind]()
    settings = {"TactileMode": ["false", "true"], "ManageCoin": ["false", "true"], "Theme": ["default", "small"],
                "DefaultOrder": ["alpha"] * 4 + ["playcount"] * 3 + ["odd"], "ShowBigCover": ["false", "true"],
                "PlayTransitionSound": ["true", "false"]}
    settings["ShowMainZone"] = settings["ActivePlaylistZone"] = ["true"] * 4 + ["false"]
    # Half of the runs have no menu, and with it no way to quit from there, so that they last.
    settings["ActiveCommandZone"] = ["true", "false"]
    chosen = {key: source.choice(values) for key, values in settings.items()}
    steps += ["set config.ini Main %s %s" % pair for pair in chosen.items()]
    steps.append("options --screen %s" % source.choice(["640x360", "640x360", "1280x720", "600x500"]))
    session = check_support.make_home(given, "soak", "\n".join(steps) + "\n")
    return session, chosen


# --- Commands ------------------------------------------------------------------------------------------------------------


def a_key(source):
    kinds = source.random()
    keys = ARROWS if kinds < 0.45 else BINDINGS if kinds < 0.85 else TYPED if kinds < 0.99 else RARE
    return "key %d" % source.choice(keys)


def a_touch(source):
    if source.random() < 0.6:
        x, y = source.choice(SPOTS)
        x, y = x + source.randrange(-3, 4), y + source.randrange(-3, 4)
    else:
        x, y = source.randrange(-10, 700), source.randrange(-10, 400)
    verb = source.choice(["down", "down", "down", "up", "up", "move", "dblclick"])
    left = source.choice(["", " left"]) if verb == "move" else ""
    return "%s %d %d%s" % (verb, x, y, left)


def a_command(source, touch, dialogs):
    kinds = [
        (dialogs, lambda _: "key 120"),
        (60, a_key),
        (30 if touch else 3, a_touch),
        (12, lambda s: "tick %d" % s.choice([1, 1, 2, 6, 30])),
        (2, lambda s: "spectrum %d" % s.choice([1, 3])),
        (3, lambda s: "wait %d" % s.choice([0, 40, 2500])),
        (8, lambda s: "later " + s.choice([a_key, a_touch, lambda _: "tick", lambda _: "state InputBusy"])(s)),
        (2, lambda s: s.choice(["state", "calls", "state List_List PlaylistPath", "state SelX Nothing"])),
        (1, lambda s: s.choice(["key", "key x", "down 1", "tick -1", "jump", "later later key 13"])),
    ]
    return source.choices([make for _, make in kinds], [weight for weight, _ in kinds])[0](source)


BADLY_FORMED = {"state SelX Nothing", "key", "key x", "down 1", "tick -1", "jump", "later later key 13"}


def a_keyboard_command(source):
    """A command while the on-screen keyboard is open; now and then it closes it."""
    kinds = [
        (40, lambda s: "key %d" % s.choice(ARROWS + [13, 13, 8, 9, 70, 45])),
        (30, lambda s: "down %d %d" % (s.randrange(-5, 365), s.randrange(-5, 225))),
        (10, lambda s: "up %d %d" % (s.randrange(-5, 365), s.randrange(-5, 225))),
        (4, lambda s: s.choice(["move 20 60", "move 20 60 left", "dblclick 20 60", "up beside"])),
        (6, lambda s: s.choice(["tick 3", "spectrum", "wait 50", "state", "later key 13", "later tick"])),
        (3, lambda s: s.choice(["key 27", "down beside", "down 300 190"])),
    ]
    return source.choices([make for _, make in kinds], [weight for weight, _ in kinds])[0](source)


# --- A run ---------------------------------------------------------------------------------------------------------------


class Fault(Exception):
    """A rule that was broken."""


class Run:
    """One start of the console and its answers."""

    def __init__(self, given, session, source, counts):
        self.given = given
        self.source = source
        self.session = session
        self.counts = counts
        self.lines = []
        self.answers = 0
        self.kept = 0
        self.peak = 0
        self.ended = None
        self.failed = False
        # How many commands went to dialogs other than the keyboard.
        self.used = 0
        self.paths = ["/", session.root, session.home, session.music, session.home + "/themes"] + [
            os.path.join(folder, name) for folder, names, _ in os.walk(session.music) for name in names][:20]
        self.errors_path = os.path.join(session.root, "errors.txt")
        self.buffer = b""
        with open(self.errors_path, "wb") as errors:
            self.process = subprocess.Popen([given.console, "--home", session.home] + session.options,
                                            stdin=subprocess.PIPE, stdout=subprocess.PIPE, stderr=errors,
                                            cwd=session.home, env=ENVIRONMENT)
        first = self.read_answer()
        while "dialog" in first:
            first = self.read_answer()
        if first != {"ready": True}:
            raise Fault("start-up: %s" % first)

    def read_line(self):
        until = time.monotonic() + SECONDS_TO_ANSWER
        while b"\n" not in self.buffer:
            left = until - time.monotonic()
            if left <= 0 or not select.select([self.process.stdout], [], [], left)[0]:
                raise Fault("no answer within %d s to: %s" % (SECONDS_TO_ANSWER, self.lines[-1:]))
            chunk = os.read(self.process.stdout.fileno(), 1 << 20)
            if not chunk:
                raise Fault("the output ended without an answer to: %s" % self.lines[-1:])
            self.buffer += chunk
        line, self.buffer = self.buffer.split(b"\n", 1)
        return line.decode()

    def read_answer(self):
        line = self.read_line()
        try:
            answer = json.loads(line)
        except json.JSONDecodeError as error:
            raise Fault("no JSON: %s" % line[:300]) from error
        if not isinstance(answer, dict):
            raise Fault("no object: %s" % line[:300])
        return answer

    def look_at(self, answer, command, verdict):
        """Checks the rules for every answer. True if it ends the program."""
        if "exit" in answer:
            self.ended = answer["exit"]
            if answer != {"exit": 0} and not self.is_bad_place(answer):
                raise Fault("an end that no rule allows: %s" % answer)
            return True
        if answer.get("later"):
            self.kept -= 1
            if self.kept < 0:
                raise Fault("an answer to a kept command that was never given: %s" % answer)
            # A kept command may be for a dialog that is closed by now.
            verdict = soak_dialogs.EITHER
        if answer.get("ok") is False:
            if not answer.get("reason") or verdict == soak_dialogs.GOOD:
                raise Fault("refused: %s: %s" % (command, answer))
        elif answer.get("ok") is not True or verdict == soak_dialogs.BAD:
            raise Fault("neither executed nor refused: %s: %s" % (command, answer))
        self.look_at_error(answer)
        return False

    def is_bad_place(self, answer):
        """Whether the program was stopped by a place that was typed in the configuration and is not a number."""
        error = answer.get("error", {})
        typed = any(line.startswith("set Text_") and line.split(" ", 2)[-1] in soak_dialogs.NO_SIZES for line in self.lines)
        return typed and error.get("number") in (6, 13) and "Position" in error.get("detail", "")

    def look_at_error(self, answer):
        error = answer.get("error")
        if error is None:
            return
        if sorted(error) != ["detail", "number", "text"] or error["number"] not in ERRORS or not error["text"]:
            raise Fault("an error that is not allowed: %s" % error)
        detail = re.sub(r"-?\d+", "N", error["detail"].replace(self.session.home, "@HOME@"))
        self.counts[(error["number"], error["text"], re.sub(r"@HOME@.*", "(a path)", detail)[:60])] += 1

    def give(self, command):
        """Sends one command. False if the program has ended, None if InputBusy may still be set."""
        self.failed = False
        answer = self.ask(command, soak_dialogs.BAD if command in BADLY_FORMED else soak_dialogs.GOOD)
        if "dialog" in answer:
            self.use_dialogs(answer["dialog"])
        return False if self.ended is not None else None if self.failed else True

    def ask(self, command, verdict=soak_dialogs.GOOD):
        """Sends one command and returns its answer; those of kept commands come before it."""
        self.lines.append(command)
        self.process.stdin.write(command.encode() + b"\n")
        self.process.stdin.flush()
        if command.startswith("later") and command not in BADLY_FORMED:
            self.kept += 1
        while True:
            answer = self.read_answer()
            ended = self.look_at(answer, command, verdict)
            self.failed = self.failed or "error" in answer
            if ended or not answer.get("later"):
                break
            if "dialog" in answer:
                # A kept command has opened it; the one that was sent is answered after it has closed.
                self.use_dialogs(answer["dialog"])
                if self.ended is not None:
                    return answer
        self.answers += 1
        if not ended and self.answers % COMMANDS_BETWEEN_LOOKS == 1:
            self.look_at_memory()
        return answer

    def open_dialog(self):
        """The dialog that takes the input, or None."""
        shown = self.ask("state Form_KeyBoard.Visible")["state"]
        if shown["Form_KeyBoard.Visible"]:
            return "Form_KeyBoard"
        for name, control in (("Form_KeyAssign", "Label1"), ("Form_SelectDirectory", "Drive1"), ("Form_Config", "Combo_Theme")):
            if self.ask("get " + control, soak_dialogs.EITHER).get("ok"):
                return name
        return None

    def use_dialogs(self, name):
        """Uses the dialog, and those that it opens, until it is closed."""
        if name == "Form_KeyBoard":
            return self.use_keyboard()
        for _ in range(self.source.randrange(COMMANDS_IN_DIALOGS)):
            command, verdict = soak_dialogs.a_dialog_command(self.source, name, self.paths)
            if name == "Form_SelectDirectory" and command == "click Command_OK" and not self.may_choose():
                command = "click Command_Cancel"
            answer = self.ask(command, verdict)
            self.used += 1
            if self.ended is not None:
                return
            # Only these open or close a dialog.
            if "dialog" in answer or command.startswith(("click", "key")):
                name = self.open_dialog()
            if name is None:
                return
        self.close_dialogs(name)

    def may_choose(self):
        """The jukebox must not go to work on folders outside the run's own."""
        return self.ask("get Dir1")["value"].startswith(self.session.root)

    def close_dialogs(self, name):
        while name is not None:
            inner, name = name, None
            self.ask("click Command_Cancel")
            self.used += 1
            if self.ended is None:
                name = self.open_dialog()
            if name == inner:
                raise Fault("the dialog %s does not close" % inner)

    def use_keyboard(self):
        """Types at random, and closes the keyboard if it is still open after that."""
        for _ in range(self.source.randrange(40)):
            self.ask(a_keyboard_command(self.source))
            if not self.ask("state Form_KeyBoard.Visible")["state"]["Form_KeyBoard.Visible"]:
                return
        # No key closes it for certain: the configuration can bind them all to something else.
        self.ask("down beside")
        if self.open_dialog() is not None:
            raise Fault("the keyboard does not close")

    def last_log_line(self):
        with open(os.path.join(self.session.home, "vantorix.log"), "rb") as log:
            log.seek(0, os.SEEK_END)
            log.seek(max(0, log.tell() - 4096))
            return log.read().decode(errors="replace").rstrip("\r\n").rsplit("\n", 1)[-1][19:]

    def end(self):
        """Closes the input, waits for the end and checks the remaining output."""
        self.look_at_memory()
        self.process.stdin.close()
        try:
            code = self.process.wait(SECONDS_TO_END)
        except subprocess.TimeoutExpired as error:
            raise Fault("does not end at the end of its input") from error
        rest = self.buffer + self.process.stdout.read()
        if rest:
            raise Fault("an unexpected answer: %r" % rest[:300])
        with open(self.errors_path, encoding="utf-8", errors="replace") as errors:
            text = errors.read()
        if text:
            raise Fault("standard error: %s" % text[-3000:])
        if code != (self.ended or 0):
            raise Fault("exit code %d" % code)
        if self.ended == 0 and self.last_log_line() not in (" Fin ", " : ValiderCommand"):
            raise Fault("ended by neither the quit key nor the menu: %s" % self.last_log_line())
        if self.peak > self.given.megabytes:
            raise Fault("took %d MB" % self.peak)

    def look_at_memory(self):
        """Keeps the highest memory use of the process so far, in megabytes; a process that has ended reports none."""
        with open("/proc/%d/status" % self.process.pid, encoding="ascii") as status:
            found = re.search(r"VmHWM:\s+(\d+) kB", status.read())
        self.peak = int(found.group(1)) >> 10 if found else self.peak

    def stop(self):
        self.process.kill()
        self.process.wait()


def soak_run(given, number, counts, most):
    """One run of at most `most` commands. Returns the number of answers, the highest memory use and whether all was
    well."""
    source = random.Random("%d/%d" % (given.seed, number))
    kind = list(HOMES)[number % len(HOMES)]
    session, chosen = make_home(given, kind, source)
    what = "run %d, seed %d, home \"%s\", %s, %s" % (number, given.seed, kind, session.options, chosen)
    run = None
    try:
        run = Run(given, session, source, counts)
        left = most
        going = True
        journey = []
        while going is not False and left > 0:
            # Rarely: the sequence that leads to the button "save", which chance almost never finds: a pick, two zones
            # on, a button back.
            if not journey and source.random() < 0.01:
                journey = ["key 13", "key 9", "key 9", "key 37", "key 13"]
            going = run.give(
                journey.pop(0) if journey else a_command(source, chosen["TactileMode"] == "true", given.dialogs))
            left = min(left, COMMANDS_AFTER_ERROR) - 1 if going is None and guard_is_up(run) else left - 1
        run.end()
        given.used += run.used
        if given.verbose:
            print("%s: %d commands, %d MB, %s" % (what, run.answers, run.peak, run.ended))
        return run.answers, run.peak, True
    except (Fault, OSError) as fault:
        place = os.path.join(given.work, "soak_%d_%d.txt" % (given.seed, number))
        if run:
            run.stop()
            with open(place, "w", encoding="utf-8") as file:
                file.write("\n".join(run.lines) + "\n")
        print("FAILED %s\n  %s\n  commands: %s" % (what, fault, place), file=sys.stderr)
        return max(1, run.answers if run else 0), 0, False


def guard_is_up(run):
    answer = run.ask("state InputBusy")
    return answer.get("ok") is True and answer["state"]["InputBusy"] != 0


def main():
    parser = argparse.ArgumentParser(description=__doc__.split("\n", maxsplit=1)[0])
    parser.add_argument("--console", required=True)
    parser.add_argument("--work", required=True)
    parser.add_argument("--commands", type=int, default=5000)
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("--run", type=int, default=300, help="commands a run")
    parser.add_argument("--megabytes", type=int, default=400, help="the limit for the memory of a run")
    parser.add_argument("--dialogs", type=float, default=0.5, help="how often the configuration is opened")
    parser.add_argument("--verbose", action="store_true")
    given = parser.parse_args()
    given.used = 0
    given.console = os.path.abspath(given.console)
    os.makedirs(given.work, exist_ok=True)
    counts = collections.Counter()
    answered, number, peaks, faults = 0, 0, [0], 0
    while answered < given.commands:
        commands, peak, good = soak_run(given, number, counts, min(given.run, given.commands - answered))
        answered += commands
        peaks.append(peak)
        faults += not good
        number += 1
    print("%d commands in %d runs, %d of them in dialogs, %d faults; at most %d MB" %
          (answered, number, given.used, faults, max(peaks)))
    for (error, text, detail), count in sorted(counts.items()):
        print("  %5d x error %d, %s: %s" % (count, error, text, detail))
    sys.exit(1 if faults else 0)


if __name__ == "__main__":
    main()
