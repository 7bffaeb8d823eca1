#!/usr/bin/env python3
"""Suspends the console, like a sleeping laptop or a paused virtual machine, while it opens the first sound of the
theme, for longer than the timeout for files that do not open. The session is not affected."""

import os
import signal
import subprocess
import sys
import time

import check_support

SECONDS_STOPPED = 16
# A start is so quick that the right moment may be missed; one hit is enough.
TRIES = 20


def holds_a_sound(process):
    folder = "/proc/%d/fd" % process.pid
    try:
        return any(os.readlink(os.path.join(folder, name)).endswith("/charge.mp3") for name in os.listdir(folder))
    except OSError:  # a file that was closed in the meantime, or the end of the process
        return False


def start_until_stopped(given, home):
    """A console that is suspended with the sound open; None if it was too quick."""
    process = subprocess.Popen([given.console, "--home", home], stdin=subprocess.PIPE, stdout=subprocess.PIPE)
    while process.poll() is None and not holds_a_sound(process):
        if "vantorix.log" in os.listdir(home) and b"CreateList" in open(os.path.join(home, "vantorix.log"), "rb").read():
            break
    os.kill(process.pid, signal.SIGSTOP)
    if holds_a_sound(process):
        return process
    os.kill(process.pid, signal.SIGCONT)
    process.communicate(timeout=60)
    os.remove(os.path.join(home, "vantorix.log"))
    return None


def main():
    given = check_support.arguments()
    session = check_support.make_home(given, "stall", "base plain\n")
    checks = check_support.Checks()
    for _ in range(TRIES):
        process = start_until_stopped(given, session.home)
        if process is not None:
            break
    else:
        sys.exit("no start was suspended in time")
    time.sleep(SECONDS_STOPPED)  # the stall itself
    os.kill(process.pid, signal.SIGCONT)
    output, _ = process.communicate(b"", timeout=60)
    checks.equal("answers", b'{"ready":true}\n', output)
    checks.equal("code", 0, process.returncode)
    checks.end()


if __name__ == "__main__":
    main()
