#!/usr/bin/python3
"""Checks every tracked file for words that do not belong in the repository, and sources for their length.

The patterns are joined from pieces, so that this file does not match itself.
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
    rule("comments and texts must not refer to other documents",
         r"(^|[^0-9A-Za-z_])([Ss]pe", r"cs?|[Ss]peci", r"fications?|Par", r"ts? [0-9]+\.[0-9]+)([^0-9A-Za-z_]|$)"),
    rule("a path of one machine", r"/(wo", r"rk|fa", r"rm)/"),
    rule("unfinished work belongs in the tracker", r"\b(TO", r"DO|FIX", r"ME|XX", r"X|HA", r"CK)\b"),
    rule("tests are not disabled", r"\bGTEST_", r"SKIP|\bDISA", r"BLED_"),
]


def findings_in(path, text):
    """Every line of a file that breaks a rule, and its name if that does."""
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
            findings.append((path, lines, f"{lines} lines; a source has at most {LONGEST_SOURCE}"))
    return report("check_words", findings, f"{count} files")


if __name__ == "__main__":
    sys.exit(main())
