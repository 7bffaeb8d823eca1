#!/usr/bin/python3
"""Writes docs/behaviour.md, the rules of the jukebox, from the sessions in tests/sessions/.

A session begins with its rule, a comment of one to three sentences. A subject's about.txt holds a heading, an
introduction and the names of its sessions in the order of the page, separated by blank lines. tests/sessions/about.txt
does the same for the page and its subjects. With --check nothing is written; the page must be up to date.
"""

import re
import sys
import textwrap
from pathlib import Path

from check_support import arguments, report

PAGE = Path("docs/behaviour.md")
SESSIONS = Path("tests/sessions")
MADE = "`tools/make_behaviour.py` writes this page; edit the sessions and their `about.txt` instead."
WIDTH = 120
NUMBER = re.compile(r"\bD-\d{2,3}\b")
MARK = re.compile(r"^Deliberate D-\d{2,3}[:.]?\s*")
SPECIAL = re.compile(r"([\\*_\[\]<>])")


class About:
    """The parts of an about.txt."""

    def __init__(self, root, path, findings):
        self.path, self.heading, self.introduction, self.names = path, "", "", []
        if not (root / path).is_file():
            findings.append((path, 1, "missing; it needs a heading, an introduction and a list of names"))
            return
        parts = re.split(r"\n{2,}", (root / path).read_text(encoding="utf-8").strip())
        if len(parts) < 3 or "\n" in parts[0]:
            findings.append((path, 1, "needs a heading, an introduction and a list of names, separated by blank lines"))
            return
        self.heading, self.introduction, self.names = parts[0], " ".join(parts[1:-1]), parts[-1].split("\n")

    def compare(self, folders, findings):
        """The list must name each folder once."""
        for name in sorted(set(folders) - set(self.names)):
            findings.append((self.path, 1, f"{name} is not listed"))
        for name in sorted(set(self.names)):
            if name not in folders:
                findings.append((self.path, 1, f"{name} is listed and does not exist"))
            elif self.names.count(name) > 1:
                findings.append((self.path, 1, f"{name} is listed twice"))


def rule_of(text):
    """The comment lines at the top of a session, joined into one line."""
    lines = []
    for line in text.split("\n"):
        if not line.startswith("# "):
            break
        lines.append(line[2:].strip())
    return " ".join(lines)


def faults_of(rule):
    rest = MARK.sub("", rule)
    if not rest:
        yield "has no rule: the first lines must be a comment that states it"
    elif rest[0].islower() or not rest.endswith("."):
        yield "the rule is not a sentence: it needs a capital and a full stop"


def escaped(text):
    """Markdown for a text that may contain code in backticks."""
    pieces = re.split(r"(`[^`]*`)", text)
    return "".join(piece if piece.startswith("`") else SPECIAL.sub(r"\\\1", piece) for piece in pieces)


def wrapped(text, indent=""):
    return textwrap.fill(text, WIDTH, subsequent_indent=indent, break_long_words=False, break_on_hyphens=False)


def item_of(place, text):
    rule = MARK.sub("", rule_of(text))
    comments = "\n".join(line for line in text.split("\n") if line.startswith("#"))
    numbers = sorted(set(NUMBER.findall(comments)))
    links = [f"[session](../{place.as_posix()})"]
    links += ["deliberate: " + ", ".join(f"[{number}](deliberate.md)" for number in numbers)] if numbers else []
    return wrapped(f"- {escaped(rule)} ({', '.join(links)})", "  ")


def anchor_of(heading):
    return re.sub(r"[^\w -]", "", heading.lower()).replace(" ", "-")


def section_of(root, folder, about):
    items = [item_of(folder / name, (root / folder / name / "session.txt").read_text(encoding="utf-8"))
             for name in about.names]
    return "\n\n".join([f"## {about.heading}", wrapped(escaped(about.introduction)), "\n".join(items)])


def page_of(root, about, subjects):
    contents = "\n".join(f"- [{subject.heading}](#{anchor_of(subject.heading)})" for _, subject in subjects)
    parts = [f"# {about.heading}", wrapped(escaped(about.introduction)), wrapped(MADE), contents]
    return "\n\n".join(parts + [section_of(root, folder, subject) for folder, subject in subjects]) + "\n"


def look(root, findings):
    """Checks the sessions and the about.txt files. Returns the page and the number of sessions."""
    files = sorted(path.relative_to(root) for path in (root / SESSIONS).glob("*/*/session.txt"))
    for path in sorted((root / SESSIONS).glob("*/session.txt")):
        findings.append((path.relative_to(root), 1, "a session belongs in the folder of a subject"))
    for path in files:
        findings += [(path, 1, fault) for fault in faults_of(rule_of((root / path).read_text(encoding="utf-8")))]
    folders = sorted({path.parts[2] for path in files})
    about = About(root, SESSIONS / "about.txt", findings)
    about.compare(folders, findings)
    subjects = {name: About(root, SESSIONS / name / "about.txt", findings) for name in folders}
    for name, subject in subjects.items():
        if subject.names:
            subject.compare([path.parts[3] for path in files if path.parts[2] == name], findings)
    if findings:
        return "", len(files)
    return page_of(root, about, [(SESSIONS / name, subjects[name]) for name in about.names]), len(files)


def first_difference(old, new):
    lines = zip(old.split("\n") + [None], new.split("\n") + [None])
    return next((number for number, (was, now) in enumerate(lines, 1) if was != now), 1)


def main():
    options = arguments(__doc__, (["--check"], {"action": "store_true", "help": "only compare, write nothing"}))
    findings = []
    page, count = look(options.root, findings)
    place = options.root / PAGE
    old = place.read_text(encoding="utf-8") if place.is_file() else ""
    if not findings and page != old:
        if options.check:
            line = first_difference(old, page)
            findings.append((PAGE, line, "does not match the sessions; run tools/make_behaviour.py"))
        else:
            place.write_text(page, encoding="utf-8")
    return report("make_behaviour", findings, f"{count} sessions")


if __name__ == "__main__":
    sys.exit(main())
