"""Shared by the checks of the console: a home to run in, and one run of it."""

import argparse
import json
import os
import shutil
import subprocess
import sys

sys.path.insert(0, os.path.dirname(os.path.dirname(os.path.abspath(__file__))))
import run_sessions  # noqa: E402


def arguments():
    parser = argparse.ArgumentParser()
    parser.add_argument("--console", required=True)
    parser.add_argument("--work", required=True)
    given = parser.parse_args()
    given.console = os.path.abspath(given.console)
    return given


def make_home(given, name, steps):
    """A session folder of that name with the steps of a home.txt; its home and music folder are made."""
    folder = os.path.join(os.path.abspath(given.work), "recipes", name)
    shutil.rmtree(folder, ignore_errors=True)
    os.makedirs(folder)
    with open(os.path.join(folder, "home.txt"), "w", encoding="utf-8") as file:
        file.write(steps)
    session = run_sessions.Session(folder, given.work)
    session.make_home()
    return session


def run(given, options, input_bytes=b"", **more):
    """One run of the console: exit code, answers as JSON values, standard error."""
    process = subprocess.run([given.console] + options, input=input_bytes, stdout=subprocess.PIPE,
                             stderr=subprocess.PIPE, timeout=run_sessions.SECONDS_TO_RUN, check=False, **more)
    answers = [json.loads(line) for line in process.stdout.decode().splitlines()]
    return process.returncode, answers, process.stderr.decode(errors="replace")


class Checks:
    """Counts failures."""

    def __init__(self):
        self.faults = 0

    def equal(self, what, expected, actual):
        if expected != actual:
            self.faults += 1
            print("%s: expected %r, got %r" % (what, expected, actual), file=sys.stderr)

    def end(self):
        sys.exit(1 if self.faults else 0)
