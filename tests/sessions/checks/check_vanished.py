#!/usr/bin/env python3
"""What the console does when something disappears while it runs: a folder of the music, the log."""

import json
import os
import shutil
import subprocess

import check_support

STEPS = """base plain
options --screen 640x360
tone @MUSIC@/album/inner/a.wav 5
"""


class Console:
    """A running console that is driven line by line."""

    def __init__(self, given, session):
        self.process = subprocess.Popen([given.console, "--home", session.home] + session.options,
                                        stdin=subprocess.PIPE, stdout=subprocess.PIPE)
        self.answer()

    def answer(self):
        return json.loads(self.process.stdout.readline())

    def do(self, command):
        self.process.stdin.write(command.encode() + b"\n")
        self.process.stdin.flush()
        return self.answer()

    def state(self, *names):
        return [self.do("state " + name)["state"][name] for name in names]

    def end(self):
        self.process.stdin.close()
        self.process.stdout.close()
        return self.process.wait(timeout=60)


def check_error(checks, what, number, detail, answer):
    error = answer.get("error", {})
    checks.equal(what, (number, detail), (error.get("number"), error.get("detail")))


def check_locked(checks, what, console):
    """Neither a key nor the heartbeat has an effect any more."""
    before = console.state("InputBusy", "SelX", "SelY", "IdleTicks")
    checks.equal("%s: InputBusy" % what, 1, before[0])
    for command in ("key 39", "key 40", "tick 3"):
        checks.equal("%s: %s" % (what, command), {"ok": True}, console.do(command))
    checks.equal("%s: the state after that" % what, before, console.state("InputBusy", "SelX", "SelY", "IdleTicks"))


def check_folder_opened(given, checks):
    """Deliberate D-126: opening a folder that no longer exists."""
    session = check_support.make_home(given, "opened", STEPS)
    console = Console(given, session)
    album = os.path.join(session.music, "album")
    shutil.rmtree(album)
    check_error(checks, "opening", 76, album + ": there is no such folder", console.do("key 13"))
    check_locked(checks, "opening", console)
    console.end()


def check_folder_above(given, checks):
    """Deliberate D-126: going back to a folder that no longer exists."""
    session = check_support.make_home(given, "above", STEPS)
    console = Console(given, session)
    console.do("key 13")
    console.do("key 13")
    album = os.path.join(session.music, "album")
    checks.equal("two folders deep", [2], console.state("DirLevel"))
    shutil.rmtree(album)
    check_error(checks, "going back", 76, album + ": there is no such folder", console.do("key 8"))
    check_locked(checks, "going back", console)
    console.end()


def check_log(given, checks):
    """Deliberate D-131: a log that can no longer be written, at a key and at a heartbeat."""
    for name, command in (("log-key", "key 40"), ("log-tick", "tick")):
        session = check_support.make_home(given, name, STEPS)
        console = Console(given, session)
        log = os.path.join(session.home, "vantorix.log")
        os.remove(log)
        os.mkdir(log)
        check_error(checks, name, 75, log + ": the log cannot be written", console.do(command))
        check_locked(checks, name, console)
        console.end()


def main():
    given = check_support.arguments()
    checks = check_support.Checks()
    check_folder_opened(given, checks)
    check_folder_above(given, checks)
    check_log(given, checks)
    checks.end()


if __name__ == "__main__":
    main()
