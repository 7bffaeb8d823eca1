#!/usr/bin/env python3
"""The runner of the sessions fails a session when it should, and only then."""

import os
import shutil
import subprocess
import sys

import check_support
import run_sessions

GOOD = '{"ready":true}\n{"ok":true,"state":{"SelX":1,"List_List":["a.mp3|file|@MUSIC@/a.mp3|a.mp3"]}}\n'


def run_session(given, name, expected, home="base plain\nempty @MUSIC@/a.mp3\n", after=None):
    folder = os.path.join(os.path.abspath(given.work), "recipes", name)
    shutil.rmtree(folder, ignore_errors=True)
    files = {"home.txt": home, "session.txt": "# a comment\nstate SelX List_List\n", "expected.jsonl": expected}
    files.update({os.path.join("after", path): text for path, text in (after or {}).items()})
    for path, text in files.items():
        os.makedirs(os.path.dirname(os.path.join(folder, path)), exist_ok=True)
        with open(os.path.join(folder, path), "w", encoding="utf-8") as file:
            file.write(text)
    runner = os.path.join(os.path.dirname(os.path.abspath(run_sessions.__file__)), "run_sessions.py")
    process = subprocess.run([sys.executable, runner, "--console", given.console, "--work", given.work, folder],
                             stderr=subprocess.PIPE, check=False)
    return process.returncode == 0, process.stderr.decode()


def check_comparison(checks):
    same = [({"a": 1}, {"a": 1.0, "b": 2}), ([1, [2]], [1, [2]]), ({"a~": [2]}, {"a": [1, 2, 3]}),
            ({"a~": [1, 3]}, {"a": [1, 2, 3]}), ({"a~": [{"b": 1}]}, {"a": [{"b": 1, "c": 2}]}), (None, None)]
    different = [({"a": 1}, {}), ({"a": 1}, {"a": 2}), ({"a": 1}, {"a": True}), ({"a": 0}, {"a": False}),
                 ([1], [1, 2]), ([1, 2], [1]), ({"a~": [3, 1]}, {"a": [1, 2, 3]}), ({"a~": [1, 1]}, {"a": [1]}),
                 ({"a~": [1]}, {}), ({}, []), ([], {}), ("1", 1), (None, 0)]
    for expected, actual in same:
        checks.equal("%r and %r" % (expected, actual), "", run_sessions.compare(expected, actual, ""))
    for expected, actual in different:
        checks.equal("%r and %r differ" % (expected, actual), True, run_sessions.compare(expected, actual, "") != "")


def check_work_folders(given, checks):
    """Sessions with the same name in two subjects can run at the same time."""
    for folder, name in (("queue/same", "queue/same"), ("touch/same", "touch/same"), ("../frames/same", "same")):
        session = run_sessions.Session(os.path.join(run_sessions.SESSIONS, folder), given.work)
        checks.equal("the work folder of %s" % folder, os.path.join(os.path.abspath(given.work), name), session.root)


def check_sessions(given, checks):
    checks.equal("a good session", (True, ""), run_session(given, "good", GOOD))
    for name, expected in (("wrong value", GOOD.replace('"SelX":1', '"SelX":2')), ("one too few", GOOD.split("\n")[0]),
                           ("one too many", GOOD + '{"ok":true}\n'), ("no start", GOOD.split("\n")[1]),
                           ("bad json", GOOD + "{\n"), ("nothing expected", "")):
        checks.equal(name, False, run_session(given, "bad", expected)[0])
    _, report = run_session(given, "told", GOOD.replace('"SelX":1', '"SelX":2'))
    for part in ("recipes/told", "line 2", "state SelX List_List", '"SelX":2', '"SelX":1', "expected 2, got 1"):
        checks.equal("the report contains %s" % part, True, part in report)
    for step in ("jump", "base nowhere", "unset config.ini Main NoSuchKey", "media nothing.mp3 a.mp3", "tone a.wav x"):
        checks.equal("the step %s" % step, False, run_session(given, "step", GOOD, "base plain\n" + step + "\n")[0])
    checks.equal("a file at the end", True, run_session(given, "after", GOOD, "base plain\nempty @MUSIC@/a.mp3\n"
                                                        "text note.txt 'a\\n@MUSIC@'\n",
                                                        {"note.txt": "a\n@MUSIC@"})[0])
    checks.equal("another file", False, run_session(given, "after", GOOD, after={"config.ini": ""})[0])
    checks.equal("a missing file", False, run_session(given, "after", GOOD, after={"missing.txt": ""})[0])


def main():
    given = check_support.arguments()
    checks = check_support.Checks()
    check_comparison(checks)
    check_work_folders(given, checks)
    check_sessions(given, checks)
    checks.end()


if __name__ == "__main__":
    main()
