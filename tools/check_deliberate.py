#!/usr/bin/python3
"""Checks the register of deliberate oddities, docs/deliberate.md, against the marks in src/ and tests/.

Each number of the register must mark a line of src/ ("Deliberate D-07: ...") in the file that its row names, and occur
in at least one test. Each mark in src/ must have a row. --fill rewrites the columns Where and Test from the tree.
"""

import re
import sys

from check_support import arguments, files_below, numbered, report, text_of

REGISTER = "docs/deliberate.md"
MARK = re.compile(r"\bDeliberate (D-\S+?):")
NUMBER = re.compile(r"\bD-\d{2,3}\b")
ROW = re.compile(r"^\| (D-\d{2,3}) \|")
FIRST_LINE = re.compile(r"\bDeliberate\b(?! D-\d{2,3}:)")
NONE = "none"
COLUMNS = 5  # number, symptom, why, where, test


def marks_of(root):
    """(number as written, path, line) of every mark in src/, including malformed ones."""
    for path in files_below(root, "src"):
        for line, text in numbered(text_of(root / path) or ""):
            for number in MARK.findall(text):
                yield number, str(path), line
            if FIRST_LINE.search(text) and not MARK.search(text):
                yield "", str(path), line


def tests_of(root):
    """The tests that name each number; a session is named by its folder."""
    tests = {}
    sessions = {path.parent for path in files_below(root, "tests/sessions") if path.name == "session.txt"}
    for path in files_below(root, "tests"):
        if path.parts[:2] == ("tests", "tools"):
            continue
        test = next((folder for folder in path.parents if folder in sessions), path)
        for number in NUMBER.findall(text_of(root / path) or ""):
            tests.setdefault(number, set()).add(test.as_posix())
    return tests


def cells_of(line):
    return [cell.strip() for cell in re.split(r"(?<!\\)\|", line)[1:-1]]


def paths_in(cell):
    return set(re.findall(r"`([^`]+)`", cell))


def listed(paths):
    return ", ".join(f"`{path}`" for path in sorted(paths)) or NONE


class Register:
    """The rows of the register, and the marks and tests in the tree."""

    def __init__(self, root):
        self.root, self.findings = root, []
        text = (root / REGISTER).read_text(encoding="utf-8")
        self.lines = text.split("\n")
        self.rows = {}
        for number, line in numbered(text):
            if ROW.match(line):
                self.take(number, cells_of(line))
        self.places, self.tests = {}, tests_of(root)
        for number, path, line in marks_of(root):
            if NUMBER.fullmatch(number):
                self.places.setdefault(number, {}).setdefault(path, line)
            else:
                self.findings.append((path, line, "a deliberate oddity without a number"))

    def take(self, line, cells):
        if len(cells) != COLUMNS:
            self.findings.append((REGISTER, line, f"{cells[0]} has {len(cells)} columns, not {COLUMNS}"))
        elif cells[0] in self.rows:
            self.findings.append((REGISTER, line, f"{cells[0]} occurs twice"))
        else:
            self.rows[cells[0]] = (line, cells)

    def check(self):
        for number, (line, cells) in self.rows.items():
            self.check_row(number, line, cells)
        for number, places in self.places.items():
            for path, line in places.items():
                if number not in self.rows:
                    self.findings.append((path, line, f"{number} is not in {REGISTER}"))
        for number in self.tests.keys() - self.rows.keys():
            for test in self.tests[number]:
                self.findings.append((test, 1, f"{number} is not in {REGISTER}"))

    def check_row(self, number, line, cells):
        _, symptom, reason, where, test = cells
        if not symptom or not reason:
            self.findings.append((REGISTER, line, f"{number} needs a symptom and a reason"))
        if number not in self.places:
            self.findings.append((REGISTER, line, f"{number} is not marked in src/"))
        elif paths_in(where) != set(self.places[number]):
            self.findings.append((REGISTER, line, f"{number} is marked in {listed(self.places[number])}, not {where}"))
        if number not in self.tests:
            self.findings.append((REGISTER, line, f"{number} is named by no test"))
        elif paths_in(test) != self.tests[number]:
            self.findings.append((REGISTER, line, f"{number} is tested by {listed(self.tests[number])}, not {test}"))

    def fill(self):
        """Rewrites the columns Where and Test of every row."""
        for number, (line, cells) in self.rows.items():
            found = [listed(self.places.get(number, {})), listed(self.tests.get(number, set()))]
            self.lines[line - 1] = "| " + " | ".join(cells[:3] + found) + " |"
        (self.root / REGISTER).write_text("\n".join(self.lines), encoding="utf-8")


def main():
    options = arguments(__doc__, (["--fill"], {"action": "store_true", "help": "write the columns Where and Test"}))
    if options.fill:
        Register(options.root).fill()
    register = Register(options.root)
    register.check()
    return report("check_deliberate", register.findings, f"{len(register.rows)} deliberate oddities")


if __name__ == "__main__":
    sys.exit(main())
