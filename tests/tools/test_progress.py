#!/usr/bin/python3
"""Tests of tools/progress.sh: what it shows, where the output is written, and the exit code."""

import os
import pty
import subprocess
import tempfile
import unittest
from pathlib import Path

PROGRESS = Path(__file__).resolve().parents[2] / "tools" / "progress.sh"
# Prints a word, then waits until the test has seen it.
WAITING = 'echo "one of two"; while [ ! -e "$0" ]; do sleep 0.05; done; echo "two of two"; exit 3'


class Progress(unittest.TestCase):
    def setUp(self):
        self.folder = Path(self.enterContext(tempfile.TemporaryDirectory()))
        self.log, self.seen = self.folder / "log", self.folder / "seen"

    def command(self, *command):
        return [PROGRESS, "Working", self.log, *command]

    def waiting(self):
        return self.command("sh", "-c", WAITING, self.seen)

    def test_without_a_terminal_a_line_every_few_seconds(self):
        with subprocess.Popen(self.waiting(), stdout=subprocess.PIPE, text=True) as run:
            self.assertRegex(run.stdout.readline(), r"^Working, \d+ s: one of two\n$")
            self.seen.touch()
            rest = run.stdout.read()
        self.assertEqual(run.returncode, 3)
        self.assertNotIn("\r", rest)
        self.assertEqual(self.log.read_text(encoding="utf-8"), "one of two\ntwo of two\n")

    def test_on_a_terminal_one_line_that_is_wiped_at_the_end(self):
        leader, follower = pty.openpty()
        with subprocess.Popen(self.waiting(), stdout=follower, env={**os.environ, "TERM": "xterm"}) as run:
            os.close(follower)
            shown = b""
            while b"one of two" not in shown:
                shown += os.read(leader, 1000)
            self.seen.touch()
            run.wait()
        while not shown.endswith(b"\r\x1b[K"):
            shown += os.read(leader, 1000)
        os.close(leader)
        self.assertNotIn(b"\n", shown)

    def test_a_quick_command_shows_nothing(self):
        run = subprocess.run(self.command("echo", "done"), capture_output=True, text=True, check=False)
        self.assertEqual((run.returncode, run.stdout, run.stderr), (0, "", ""))
        self.assertEqual(self.log.read_text(encoding="utf-8"), "done\n")

    def test_control_characters_of_the_command_are_not_shown(self):
        script = r'printf "50%%\r\033[31m60%%\n"; while [ ! -e "$0" ]; do sleep 0.05; done'
        with subprocess.Popen(self.command("sh", "-c", script, self.seen), stdout=subprocess.PIPE, text=True) as run:
            self.assertRegex(run.stdout.readline(), r"^Working, \d+ s: \[31m60%\n$")
            self.seen.touch()


if __name__ == "__main__":
    unittest.main()
