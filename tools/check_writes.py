#!/usr/bin/python3
"""Checks that the rooms write only their own state, against two tables in docs/architecture.md.

"The state" names the room that owns each struct of the main form. "Who else writes what" lists the variables that another
room may write, with the reason; a row that no source needs any more is a finding too. Found are assignments to
`form.<struct>.<variable>` and calls of a member that changes it, but not writes through a reference. The programs
(src/app) may write everything.
"""

import re
import sys
from pathlib import PurePosixPath

from check_support import arguments, files_below, numbered, report, table_below, text_of

TABLES = "docs/architecture.md"
OWNERS = "The state"
OTHERS = "Who else writes what"

# A subscript may contain calls, and those may contain calls.
CALL = r"\([^()]*\)"
SUBSCRIPT = rf"(?:\((?:[^()]|\((?:[^()]|{CALL})*\))*\))?"
VARIABLE = rf"\bform\.(\w+)\.(\w+){SUBSCRIPT}(?:\.\w+{SUBSCRIPT})*?"
WRITE = re.compile(rf"{VARIABLE}\s*(?:=(?!=)|[-+]=)|{VARIABLE}\.(?:clear|reset|Set|append|replace)\(")
NAME = re.compile(r"`form\.(\w+)\.(\w+)`")
COMMENT = re.compile(r"//[^\n]*")


class Writes:
    """The writes of src/ to the main form, checked against the two tables."""

    def __init__(self, root):
        self.root, self.findings, self.count = root, [], 0
        text = (root / TABLES).read_text(encoding="utf-8")
        self.owners = {name: owner for _, (names, owner, _) in table_below(text, OWNERS)
                       for name in re.findall(r"`form\.(\w+)`", names)}
        self.rows = [(line, set(NAME.findall(names)), {room.strip() for room in rooms.split(",")})
                     for line, (names, rooms, _) in table_below(text, OTHERS)]
        self.used = set()

    def run(self):
        if not self.owners:
            self.findings.append((TABLES, 1, f'no table of structs below "{OWNERS}"'))
            return
        for path in files_below(self.root, "src", ".cpp"):
            room = path.parts[1]
            if room != "app":
                self.check_source(PurePosixPath(path), room)
        for line, names, rooms in self.rows:
            for struct, variable in sorted(names):
                for room in sorted(rooms):
                    if (struct, variable, room) not in self.used:
                        self.findings.append((TABLES, line, f'"{room}" does not write form.{struct}.{variable}'))

    def check_source(self, path, room):
        for number, line in numbered(text_of(self.root / path) or ""):
            for hit in WRITE.finditer(COMMENT.sub("", line)):
                self.check_write(path, number, room, hit[1] or hit[3], hit[2] or hit[4])

    def check_write(self, path, line, room, struct, variable):
        if struct not in self.owners:
            return
        self.count += 1
        if self.owners[struct] == room:
            return
        if any((struct, variable) in names and room in rooms for _, names, rooms in self.rows):
            self.used.add((struct, variable, room))
            return
        self.findings.append((path, line, f'"{room}" may not write form.{struct}.{variable}, which '
                                          f'"{self.owners[struct]}" owns; {TABLES}, "{OTHERS}"'))


def main():
    root = arguments(__doc__).root
    check = Writes(root)
    check.run()
    return report("check_writes", check.findings, f"{check.count} writes, {len(check.owners)} structs")


if __name__ == "__main__":
    sys.exit(main())
