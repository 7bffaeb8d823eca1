#!/usr/bin/python3
"""Checks every kept file for words that do not belong here, and sources for their length.

The patterns are put together from pieces, so that this file does not find itself.
"""

import re
import sys

from check_support import arguments, kept_files, numbered, report, text_of

LONGEST_SOURCE = 700
SOURCES = {".cpp", ".h", ".py", ".sh", ".cmake"}
EXEMPT = {".svg"}


def rule(reason, *pieces):
    return reason, re.compile("".join(pieces))


RULES = [
    rule("comments and texts speak for themselves, they refer to no other document",
         r"(^|[^0-9A-Za-z_])([Ss]pe", r"cs?|[Ss]peci", r"fications?|Par", r"ts? [0-9]+\.[0-9]+)([^0-9A-Za-z_]|$)"),
    rule("a path of one machine", r"/(wo", r"rk|fa", r"rm)/"),
    rule("work that is left over belongs into the tracker", r"\b(TO", r"DO|FIX", r"ME|XX", r"X|HA", r"CK)\b"),
    rule("a test runs or does not exist", r"\bGTEST_", r"SKIP|\bDISA", r"BLED_"),
]


def findings_in(path, text):
    """Every line of a file, and its name, that breaks a rule."""
    for reason, pattern in RULES:
        hit = pattern.search("/" + str(path))
        if hit:
            yield path, 1, f'"{hit[0].strip()}" in the name of the file: {reason}'
        for number, line in numbered(text):
            hit = pattern.search(line)
            if hit:
                yield path, number, f'"{hit[0].strip()}": {reason}'


def main():
    root = arguments(__doc__).root
    findings, count = [], 0
    for path in kept_files(root):
        text = None if path.suffix in EXEMPT else text_of(root / path)
        if text is None:
            continue
        count += 1
        findings += findings_in(path, text)
        lines = text.count("\n")
        if path.suffix in SOURCES and lines > LONGEST_SOURCE:
            findings.append((path, lines, f"{lines} lines; a source has {LONGEST_SOURCE} at most"))
    return report("check_words", findings, f"{count} files")


if __name__ == "__main__":
    sys.exit(main())
