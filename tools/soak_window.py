#!/usr/bin/env python3
"""Presses random keys in the real jukebox and prints its memory, threads and open files as a table.

    soak_window.py [--program FILE] [--music FOLDER] [--minutes N] [--rate KEYS_PER_SECOND] [--every SECONDS]
                   [--seed N] [--coins WEIGHT] [--settle MINUTES] [--limit MEGABYTES]

The jukebox runs on its own virtual screen, on a new home and a copy of the music without its videos, all of which are
removed at the end. The order of the keys depends only on the seed. Sizes are in MB of 2^20 bytes:

    rss, pss      resident memory, and the same with shared pages divided by the number of their users
    heap          the main heap of the C library
    anon          all other private memory: heaps of threads, large blocks, stacks
    mapped        files and shared memory
    picks         tracks bought so far; the queue keeps its entries and their drawn rows
    threads, fds  threads and open file descriptors

With --coins a pick costs a coin, and the coin's key has this weight among the keys: fewer picks, a shorter queue.
With --limit the exit code is 1 if heap and anon together grow by more than this between --settle minutes and the end,
or threads or descriptors by more than those of a track that starts to play.
"""
import argparse
import contextlib
import os
import pathlib
import random
import shutil
import signal
import subprocess
import sys
import tempfile
import time

ROOT = pathlib.Path(__file__).resolve().parent.parent
sys.path.insert(0, str(ROOT / "tests" / "desktop"))
import desk  # noqa: E402

VIDEOS = (".avi", ".mpg", ".mp4", ".mp44")
# Keys and their weights. Escape, which quits, and the key of the settings are left out.
WEIGHTS = {"Down": 20, "Up": 12, "Right": 14, "Left": 10, "Return": 10, "BackSpace": 6, "Tab": 4, "Prior": 1, "Next": 1,
           "F2": 2, "F3": 1, "F4": 2, "F5": 1, "F6": 3, **dict.fromkeys("abcdef0123456789", 0.5)}
# Keys per call of xdotool.
BATCH = 10
# The possible difference between two readings: a track that plays, and one that is being opened.
SPARE_THREADS = 8
SPARE_FILES = 8


def reading_of(pid):
    """Memory in bytes, threads and open files of a process."""
    return {**desk.memory_of(pid), "threads": len(os.listdir(f"/proc/{pid}/task")), "fds": len(os.listdir(f"/proc/{pid}/fd"))}


def keys(seed, coins):
    """An endless sequence of keys."""
    source = random.Random(seed)
    weights = {**WEIGHTS, "Insert": coins}
    while True:
        yield source.choices(list(weights), list(weights.values()))[0]


class Run:
    """A jukebox with its own screen."""

    def __init__(self, program, music, folder, with_coins):
        self.home = folder / "home"
        self.music = folder / "music"
        shutil.copytree(music, self.music, ignore=shutil.ignore_patterns(*(f"*{ending}" for ending in VIDEOS)))
        subprocess.run([ROOT / "tools" / "make_home.sh", ROOT / "home", self.home, self.music], check=True)
        if with_coins:
            desk.edit(self.home / "config.ini", "\nManageCoin=false", "\nManageCoin=true")
        # The menu has a row that quits. The queue has a save button, after which random keys almost never leave the
        # folder of the playlists.
        for zone in ("Command", "Playlist"):
            desk.edit(self.home / "config.ini", f"\nActive{zone}Zone=true", f"\nActive{zone}Zone=false")
        self.screen = desk.Screen(folder)
        self.errors = open(folder / "stderr", "wb")
        self.process = subprocess.Popen([program, "--home", self.home], env=self.screen.environment,
                                        stdout=self.errors, stderr=self.errors)

    def end(self):
        if self.process.poll() is None:
            self.process.terminate()
            with contextlib.suppress(subprocess.TimeoutExpired):
                self.process.wait(10)
        if self.process.poll() is None:
            self.process.kill()
        self.process.wait()
        self.errors.close()
        self.screen.end()

    def picks(self):
        """The number of tracks bought; each pick also counts for the whole library."""
        counts = self.home / "stats.ini"
        return int(desk.sections_of(counts).get("PayingCount", {}).get(str(self.music), 0)) if counts.exists() else 0

    def is_running(self):
        return self.process.poll() is None

    def wait_for_window(self):
        def shown():
            with contextlib.suppress(subprocess.CalledProcessError):
                return self.screen.window()
            return None
        desk.wait_until(shown, "the window")


def print_row(cells):
    print("".join(f"{cell:>9}" for cell in cells), flush=True)


def soak(run, given):
    """Presses keys for the given time and returns the readings, one for each row of the table."""
    readings = []
    start = time.monotonic()
    pressed = 0
    row = keys(given.seed, given.coins)
    print_row(["minute", "keys", "picks", "rss", "pss", "heap", "anon", "mapped", "threads", "fds"])
    while run.is_running():
        now = time.monotonic() - start
        if now >= len(readings) * given.every:
            reading = {"minute": now / 60, "picks": run.picks(), **reading_of(run.process.pid)}
            readings.append(reading)
            print_row([f"{reading['minute']:.1f}", pressed, reading["picks"]] +
                      [f"{reading[size] / desk.MEGABYTE:.1f}" for size in ("rss", "pss", "heap", "anon", "mapped")] +
                      [reading["threads"], reading["fds"]])
            if now >= given.minutes * 60:
                break
        run.screen.press("--delay", str(int(1000 / given.rate)), *(next(row) for _ in range(BATCH)))
        pressed += BATCH
    return readings


def faults_in(readings, given):
    settled = [reading for reading in readings if reading["minute"] >= given.settle]
    # The first track loads the decoders and opens the sound device, whenever it is bought.
    settled = [reading for reading in settled if reading["picks"] > 0] or settled
    if len(settled) < 2:
        return ["the run was too short"]
    first, last = settled[0], settled[-1]
    faults = []
    growth = (last["heap"] + last["anon"] - first["heap"] - first["anon"]) / desk.MEGABYTE
    if growth > given.limit:
        faults.append(f"memory grew by {growth:.1f} MB")
    for what, spare in (("threads", SPARE_THREADS), ("fds", SPARE_FILES)):
        if last[what] > first[what] + spare:
            faults.append(f"{what} grew from {first[what]} to {last[what]}")
    return faults


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--program", default=ROOT / "build" / "vantorix")
    parser.add_argument("--music", default=ROOT / "demo")
    parser.add_argument("--minutes", type=float, default=20)
    parser.add_argument("--rate", type=float, default=6)
    parser.add_argument("--every", type=float, default=30)
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("--coins", type=float, default=0)
    parser.add_argument("--settle", type=float, default=10)
    parser.add_argument("--limit", type=float)
    given = parser.parse_args()
    signal.signal(signal.SIGTERM, lambda *_: sys.exit(143))
    folder = pathlib.Path(tempfile.mkdtemp(prefix="vantorix-soak-"))
    run = None
    try:
        run = Run(given.program, given.music, folder, given.coins > 0)
        run.wait_for_window()
        readings = soak(run, given)
        if not run.is_running():
            print(f"the jukebox ended with {run.process.returncode}")
            return 1
        faults = faults_in(readings, given) if given.limit is not None else []
        for fault in faults:
            print(fault)
        return 1 if faults else 0
    finally:
        if run is not None:
            run.end()
        shutil.rmtree(folder, ignore_errors=True)


if __name__ == "__main__":
    sys.exit(main())
