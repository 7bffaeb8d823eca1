#!/usr/bin/env python3
"""Runs the real jukebox for an evening: random keys, touches, coins, videos and dialogs, and one kill in the middle.

    evening.py [--program FILE] [--music FOLDER] [--minutes N] [--settle MINUTES] [--every SECONDS] [--seed N]
               [--answer SECONDS] [--growth PERCENT] [--pictures FOLDER]

The jukebox runs on its own virtual screen, on a new home, under a supervisor that does what a service manager does. One
line for each reading: minutes since the start, keys and touches so far, resident and private memory in MB of 2^20 bytes,
threads, open files, starts, and the longest time from a key to its answer. A key is timed when the jukebox is at rest:
it drops keys during the flash of a pick and while a page turns. A key without an answer leaves a screenshot in --pictures.

The exit code is 1 if private memory grows by more than --growth percent between --settle minutes and the end (each start
settles again), if threads or open files grow by more than those of a track that starts, if a key at rest is answered
later than --answer seconds, or if the jukebox has started again for a reason that it does not name.
"""
import argparse
import contextlib
import pathlib
import random
import shutil
import statistics
import subprocess
import sys
import tempfile
import time

ROOT = pathlib.Path(__file__).resolve().parent.parent
sys.path.insert(0, str(ROOT / "tests" / "desktop"))
sys.path.insert(0, str(ROOT / "tools"))
import desk  # noqa: E402
import soak_window  # noqa: E402
import supervisor  # noqa: E402

KEYS = {"Down": 20, "Up": 12, "Right": 14, "Left": 10, "Return": 8, "BackSpace": 6, "Insert": 3, "F2": 1, "F3": 1, "F4": 2, "F5": 1,
        "F6": 3, "f": 1, **dict.fromkeys("abcdeg0123456789", 0.5)}
# The two pages of tracks, the player and the queue in pixels of the screen. The menu, which has a row that quits, is left out.
TOUCHED = [((20, 100), (830, 700)), ((870, 20), (1260, 220)), ((870, 260), (1260, 450))]
# Seconds without input after which a key is answered at once.
REST = 2.5
SECONDS_BETWEEN_DIALOGS = 150


class Evening:
    """A jukebox, what it is given, and what has been read of it."""

    def __init__(self, given, folder):
        self.given = given
        self.source = random.Random(given.seed)
        self.home = folder / "home"
        subprocess.run([ROOT / "tools" / "make_home.sh", ROOT / "home", self.home, given.music], check=True)
        for key, value in (("ManageCoin", "true"), ("TactileMode", "true")):
            other = "false" if value == "true" else "true"
            desk.edit(self.home / "config.ini", f"\n{key}={other}", f"\n{key}={value}")
        self.screen = desk.Screen(folder)
        self.errors = folder / "stderr"
        self.supervisor = supervisor.Supervisor(folder, [given.program, "--home", str(self.home)], self.screen.environment, 60,
                                                self.errors)
        self.supervisor.see_ready()
        self.start = time.monotonic()
        self.given_inputs = 0
        self.answers, self.late = [], []
        self.readings, self.faults = [], []
        self.kills = 0
        # For each start the reasons that the log gives.
        self.reasons = {}

    def minutes(self):
        return (time.monotonic() - self.start) / 60

    def log(self):
        with contextlib.suppress(FileNotFoundError):
            return (self.home / "vantorix.log").read_bytes().decode(errors="replace").split("\r\n")
        return []

    def count_taken(self):
        return sum(" NumTrack : " in line for line in self.log())

    def press(self):
        keys = self.source.choices(list(KEYS), list(KEYS.values()), k=10)
        with contextlib.suppress(subprocess.CalledProcessError):
            self.screen.press("--delay", "150", *keys)
        self.given_inputs += len(keys)

    def touch(self):
        (left, top), (right, bottom) = self.source.choice(TOUCHED)
        with contextlib.suppress(subprocess.CalledProcessError):
            self.screen.click(self.source.randint(left, right), self.source.randint(top, bottom))
        self.given_inputs += 1
        time.sleep(0.2)

    def leave_dialogs(self):
        """Closes whatever has the focus and is not the main window."""
        for _ in range(5):
            if self.screen.focus() in ("", "Vantorix Jukebox"):
                return
            with contextlib.suppress(subprocess.CalledProcessError):
                if self.screen.focus() == desk.KEYBOARD:
                    # A press beside it cancels the on-screen keyboard; its keys would type.
                    self.screen.click(5, 5)
                else:
                    self.screen.press("Escape")
            time.sleep(0.5)

    def open_dialog(self):
        with contextlib.suppress(subprocess.CalledProcessError):
            self.screen.press("F9")
        time.sleep(self.source.uniform(0.5, 2))
        self.leave_dialogs()

    def time_answer(self):
        """Seconds from a key at rest to the log's line about it."""
        time.sleep(REST)
        self.leave_dialogs()
        starts, before = len(self.supervisor.ready), self.count_taken()
        began = time.monotonic()
        with contextlib.suppress(subprocess.CalledProcessError):
            self.screen.press("Down")
        while time.monotonic() - began < 10:
            if self.count_taken() > before:
                self.answers.append(time.monotonic() - began)
                if self.answers[-1] > self.given.answer:
                    self.late.append((self.minutes(), self.answers[-1]))
                return
            if len(self.supervisor.ready) > starts:
                return
            time.sleep(0.01)
        self.late.append((self.minutes(), 10.0))
        self.screen.run("import", "-silent", "-window", "root", str(self.given.pictures / f"no-answer-{len(self.late)}.png"))
        print(f"no answer: the focus is on {self.screen.focus()!r}; last lines: {[line[19:] for line in self.log()[-4:]]}", flush=True)

    def note_reasons(self):
        """Keeps the reason of each start from its log, which the next start removes."""
        start = len(self.supervisor.ready)
        if start not in self.reasons:
            self.reasons[start] = [line[19:] for line in self.log() if " : Relancé : " in line or " : Arrêt brutal" in line]

    def read(self):
        reading = {"minute": self.minutes(), "start": len(self.supervisor.ready),
                   **soak_window.reading_of(self.supervisor.process.pid)}
        self.readings.append(reading)
        slowest = f"{max(self.answers[-20:], default=0) * 1000:.0f}"
        soak_window.print_row([f"{reading['minute']:.1f}", self.given_inputs, f"{reading['rss'] / desk.MEGABYTE:.1f}",
                               f"{(reading['heap'] + reading['anon']) / desk.MEGABYTE:.1f}", reading["threads"], reading["fds"],
                               reading["start"], slowest])

    def run(self):
        soak_window.print_row(["minute", "inputs", "rss", "private", "threads", "fds", "starts", "ms"])
        next_reading = next_dialog = 0
        while self.minutes() < self.given.minutes:
            for _ in range(3):
                self.press()
                self.touch()
            self.leave_dialogs()
            if time.monotonic() - self.start > next_dialog:
                next_dialog += SECONDS_BETWEEN_DIALOGS
                self.open_dialog()
            self.note_reasons()
            if self.kills == 0 and self.minutes() > self.given.minutes / 2:
                self.kills += 1
                starts = len(self.supervisor.ready)
                self.supervisor.process.kill()
                self.supervisor.see_ready(starts + 1)
            if time.monotonic() - self.start > next_reading:
                next_reading += self.given.every
                self.time_answer()
                with contextlib.suppress(OSError):
                    self.read()

    def judge(self):
        for start in range(2, len(self.supervisor.ready) + 1):
            print(f"start {start}: {self.reasons.get(start, ['not looked at'])}")
        unnamed = [start for start, reasons in self.reasons.items() if start > 1 and not reasons]
        if len(unnamed) > self.kills:
            self.faults.append(f"starts without a reason: {unnamed}")
        self.faults += [f"minute {minute:.1f}: a key was answered after {seconds:.2f} s" for minute, seconds in self.late]
        for start in {reading["start"] for reading in self.readings}:
            self.judge_start([reading for reading in self.readings if reading["start"] == start])
        if self.answers:
            print(f"answers: {len(self.answers)}, median {statistics.median(self.answers) * 1000:.0f} ms, "
                  f"longest {max(self.answers) * 1000:.0f} ms")
        for fault in self.faults:
            print(fault)
        return 1 if self.faults else 0

    def judge_start(self, readings):
        settled = [reading for reading in readings if reading["minute"] >= readings[0]["minute"] + self.given.settle]
        if len(settled) < 10:
            return
        first, last = settled[:5], settled[-5:]
        before, after = (statistics.median(reading["heap"] + reading["anon"] for reading in part) for part in (first, last))
        growth = (after / before - 1) * 100
        print(f"start {first[0]['start']}: private memory {before / desk.MEGABYTE:.1f} to {after / desk.MEGABYTE:.1f} MB, {growth:+.1f} %")
        if growth > self.given.growth:
            self.faults.append(f"private memory grew by {growth:.1f} %")
        for what, spare in (("threads", soak_window.SPARE_THREADS), ("fds", soak_window.SPARE_FILES)):
            if last[-1][what] > first[0][what] + spare:
                self.faults.append(f"{what} grew from {first[0][what]} to {last[-1][what]}")

    def end(self):
        self.supervisor.end()
        self.screen.end()


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--program", default=str(ROOT / "build" / "vantorix"))
    parser.add_argument("--music", default=ROOT / "demo")
    parser.add_argument("--minutes", type=float, default=240)
    parser.add_argument("--settle", type=float, default=60)
    parser.add_argument("--every", type=float, default=30)
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("--answer", type=float, default=0.5)
    parser.add_argument("--growth", type=float, default=2)
    parser.add_argument("--pictures", type=pathlib.Path, default=ROOT / "build")
    given = parser.parse_args()
    folder = pathlib.Path(tempfile.mkdtemp(prefix="vantorix-evening-"))
    evening = None
    try:
        evening = Evening(given, folder)
        evening.run()
        return evening.judge()
    finally:
        if evening is not None:
            evening.end()
        shutil.rmtree(folder, ignore_errors=True)


if __name__ == "__main__":
    sys.exit(main())
