#!/usr/bin/python3
"""Checks that every header below src/ compiles by itself, with the flags of a nearby source.

The flags come from compile_commands.json of a build folder. Headers that pass are noted there and checked again when
the header, a file that it includes, or a flag has changed.
"""

import hashlib
import json
import os
import re
import shlex
import subprocess
import sys
import time
from concurrent.futures import ThreadPoolExecutor
from pathlib import Path

from check_support import ROOT, arguments, files_below, report

WITH_VALUE = {"-o", "-MF", "-MT", "-MQ", "-include"}
DROPPED = {"-c", "-MD", "-MMD", "-MP", "-Winvalid-pch"}


def flags_of(command, source):
    """The rest of a compile command without its source, its outputs and its precompiled headers."""
    words, flags = iter(shlex.split(command)), []
    for word in words:
        if word in WITH_VALUE:
            next(words, None)
        elif word not in DROPPED and word != source:
            flags.append(word)
    return flags


def all_flags(root, build):
    """The flags of every source below src/, by its path relative to the root."""
    flags = {}
    for entry in json.loads((build / "compile_commands.json").read_text(encoding="utf-8")):
        source = Path(os.path.normpath(Path(entry["directory"]) / entry["file"]))
        if source.is_relative_to(root / "src"):
            command = entry.get("command") or shlex.join(entry["arguments"])
            flags[source.relative_to(root)] = flags_of(command, entry["file"])
    return flags


def nearest(header, flags):
    """The source whose flags are used: the one with the same name, otherwise one in the same folder or the nearest
    above."""
    own = header.with_suffix(".cpp")
    if own in flags:
        return own
    for folder in header.parents:
        below = sorted(source for source in flags if source.is_relative_to(folder))
        if below:
            return below[0]
    return None


def dependencies(rule):
    """The files named in a make rule."""
    text = rule.partition(":")[2].replace("\\\n", " ").strip()
    return [name.replace("\\ ", " ") for name in re.split(r"(?<!\\)\s+", text) if name]


class Headers:
    """The headers of a tree, their flags and their notes."""

    def __init__(self, root, build):
        self.root, self.flags = root, all_flags(root, build)
        self.notes = build / "check_headers"
        self.notes.mkdir(exist_ok=True)
        self.times = {}

    def modified(self, name):
        """The modification time of a file; infinity if it no longer exists."""
        if name not in self.times:
            try:
                self.times[name] = os.stat(self.root / name).st_mtime
            except OSError:
                self.times[name] = float("inf")
        return self.times[name]

    def note_of(self, header):
        return self.notes / (str(header).replace("/", "__") + ".json")

    def has_passed(self, header, mark):
        try:
            note = json.loads(self.note_of(header).read_text(encoding="utf-8"))
        except (OSError, ValueError):
            return False
        return note["mark"] == mark and all(self.modified(name) < note["time"] for name in note["files"])

    def check(self, header):
        """Findings for one header."""
        source = nearest(header, self.flags)
        if source is None:
            return [(header, 1, "no nearby source to take the flags from")]
        flags = self.flags[source]
        mark = hashlib.sha256("\0".join(flags).encode()).hexdigest()
        if self.has_passed(header, mark):
            return []
        began = time.time()
        rule = self.note_of(header).with_suffix(".d")
        command = [*flags, "-fsyntax-only", "-MD", "-MF", str(rule), "-MT", "header", "-x", "c++", "-"]
        text = f'#include "{self.root / header}"\n'
        run = subprocess.run(command, input=text, capture_output=True, text=True, cwd=self.root, check=False)
        if run.returncode != 0:
            return [(header, 1, "does not compile by itself:\n" + run.stderr.strip())]
        files = dependencies(rule.read_text(encoding="utf-8"))
        note = {"mark": mark, "time": began, "files": [name for name in files if name != "-"]}
        self.note_of(header).write_text(json.dumps(note), encoding="utf-8")
        rule.unlink()
        return []


def main():
    options = arguments(
        __doc__,
        (["--build"], {"type": Path, "default": ROOT / "build", "help": "the build folder (default: build)"}),
        (["--jobs"], {"type": int, "default": 2, "help": "compilers at a time (default: 2)"}),
    )
    root, build = options.root.resolve(), options.build.resolve()
    if not (build / "compile_commands.json").is_file():
        print(f"check_headers: {build} has no compile_commands.json; configure a build there first", file=sys.stderr)
        return 2
    headers = Headers(root, build)
    paths = files_below(root, "src", ".h")
    with ThreadPoolExecutor(options.jobs) as pool:
        findings = [finding for found in pool.map(headers.check, paths) for finding in found]
    return report("check_headers", findings, f"{len(paths)} headers")


if __name__ == "__main__":
    sys.exit(main())
