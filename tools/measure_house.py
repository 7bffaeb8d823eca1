#!/usr/bin/python3
"""Measures the structure of src/: folders, state, sizes of files, words of comments. Prints a table.

    measure_house.py [--root TREE]

Circles are strongly connected folders of the include graph. A variable of the state is written by a room if a source of
the room assigns it or calls a member that changes it. The way of the form through a routine is the tree of calls from it
that pass the form, found by name: the files it reaches, the calls into a higher room, the calls into a lower one. An
idiom is a word or a phrase of tools/idioms.txt in a comment. All of it is text search, good to compare two trees.
"""

import re
import statistics
import sys
from collections import defaultdict
from pathlib import Path

from check_support import arguments, files_below, text_of
from check_writes import WRITE

# The rooms from the ground up.
ROOMS = ["core", "platform", "imaging", "state", "settings", "theme", "library", "playback", "rendering", "lightshow",
         "dialogs", "interaction", "shell", "app"]
# The struct of the form that a room owns.
OWNERS = {"shell": "shell", "settings": "settings", "theme": "theme", "slots": "theme", "menu": "theme",
          "assets": "theme", "library": "library", "queue": "playback", "player": "playback", "frame": "rendering",
          "lights": "lightshow", "keyboard": "dialogs", "config": "dialogs", "keyAssign": "dialogs",
          "folderDialog": "dialogs", "cursor": "interaction",
          "touch": "interaction", "coins": "interaction"}
SMALL = 20

INCLUDE = re.compile(r'^#include "([^"]+)"', re.M)
COMMENT = re.compile(r"//\s?(.*)$", re.M)
ROUTINE = re.compile(r"^(?:\[\[\w+\]\] )?[A-Za-z_][\w:<>*& ]*?\b(\w+)\((?:const )?Form_Main& form\b[^;{]*\{\n(.*?)^\}", re.M | re.S)
PASSES = re.compile(r"\b(\w+)\(form\b")
CODE_TYPES = (".h", ".cpp")


def circles(edges):
    """The strongly connected sets of more than one node."""
    def reached(start):
        seen, waiting = set(), [start]
        while waiting:
            for target in edges[waiting.pop()]:
                if target not in seen:
                    seen.add(target)
                    waiting.append(target)
        return seen
    reach = {node: reached(node) for node in list(edges)}
    return {frozenset(other for other in reach[node] if node in reach.get(other, ())) for node in reach if node in reach[node]}


def room_of(path):
    return path.parts[1]


class Tree:
    """The sources of a tree by their paths."""

    def __init__(self, root):
        self.texts = {path: text_of(root / path) or "" for path in files_below(root, "src", *CODE_TYPES)}
        self.sources = {path: text for path, text in self.texts.items() if path.suffix == ".cpp"}

    def folder_circles(self):
        edges = defaultdict(set)
        for path, text in self.texts.items():
            for header in INCLUDE.findall(text):
                target = Path("src") / header
                if target in self.texts and target.parent != path.parent:
                    edges[path.parent].add(target.parent)
        return [found for found in circles(edges) if len(found) > 1]

    def writers(self):
        """The rooms that write each variable."""
        found = defaultdict(lambda: defaultdict(int))
        for path, text in self.sources.items():
            for hit in WRITE.finditer(text):
                owner, name = hit[1] or hit[3], hit[2] or hit[4]
                if owner in OWNERS and room_of(path) != "app":
                    found[owner, name][room_of(path)] += 1
        return found

    def way_of_form(self, start):
        """Files, climbs and returns of the calls that pass the form, from a routine on."""
        routines = {}
        for path, text in self.sources.items():
            if room_of(path) != "app":
                for name, body in ROUTINE.findall(text):
                    routines.setdefault((path, name), body)
        places = defaultdict(list)
        for path, name in routines:
            places[name].append(path)

        def resolved(path, name):
            own = [place for place in places.get(name, ()) if place == path]
            return own or places.get(name, [])
        waiting = [(path, start) for path in places.get(start, ())]
        seen, climbs, returns = set(waiting), 0, 0
        while waiting:
            path, name = waiting.pop()
            for called in PASSES.findall(routines[path, name]):
                for target in resolved(path, called):
                    levels = ROOMS.index(room_of(path)), ROOMS.index(room_of(target))
                    climbs += levels[1] > levels[0]
                    returns += levels[1] < levels[0]
                    if (target, called) not in seen:
                        seen.add((target, called))
                        waiting.append((target, called))
        return len({path for path, _ in seen}), climbs, returns

    def headers_with_one_user(self):
        users = defaultdict(set)
        for path, text in self.texts.items():
            for header in INCLUDE.findall(text):
                users[header].add(path)
        headers = [path for path in self.texts if path.suffix == ".h"]
        others = [users[str(Path(*header.parts[1:]))] - {header.with_suffix(".cpp")} for header in headers]
        return sum(len(files) == 1 for files in others), len(headers)


def idioms_of(root):
    phrases = (root / "tools" / "idioms.txt").read_text(encoding="utf-8").splitlines()
    return re.compile("|".join(rf"\b(?:{phrase})\b" for phrase in phrases if phrase and not phrase.startswith("#")), re.I)


def comment_lines(tree):
    return [line for text in tree.texts.values() for line in COMMENT.findall(text) if line.strip()]


def main():
    root = arguments(__doc__.split("\n", maxsplit=1)[0]).root
    tree = Tree(root)
    lengths = {path: text.count("\n") for path, text in tree.texts.items()}
    sources = [length for path, length in lengths.items() if path.suffix == ".cpp"]
    writers = tree.writers()
    foreign = {variable: {room: count for room, count in rooms.items() if room != OWNERS[variable[0]]}
               for variable, rooms in writers.items()}
    interaction = sum(rooms.get("interaction", 0) for (owner, _), rooms in writers.items() if OWNERS[owner] == "playback")
    idioms = idioms_of(Path(__file__).resolve().parent.parent)
    lines = comment_lines(tree)
    unidiomatic = sum(bool(idioms.search(line)) for line in lines)
    one_user, headers = tree.headers_with_one_user()
    way = tree.way_of_form("Valider")
    rows = [
        ("circles of folders", len(tree.folder_circles())),
        ("variables written by a foreign room", sum(bool(rooms) for rooms in foreign.values())),
        ("variables written by several rooms", sum(len(rooms) > 1 for rooms in writers.values())),
        ("writes of interaction to the queue and the player", interaction),
        ("the way of the form through Valider: files, climbs, returns", ", ".join(map(str, way))),
        (f"files of {SMALL} lines or less, of all", f"{sum(length <= SMALL for length in lengths.values())} of {len(lengths)}"),
        ("headers with one user, of all", f"{one_user} of {headers}"),
        ("median length of a source", statistics.median(sources)),
        ("files in interaction", sum(room_of(path) == "interaction" for path in lengths)),
        ("files in platform/simulated", sum(path.parent.name == "simulated" for path in lengths)),
        ("most files in one folder of imaging", max(count_by_folder(lengths, "imaging").values())),
        ("comment lines with an idiom, of all", f"{unidiomatic} of {len(lines)} ({100 * unidiomatic / len(lines):.1f} %)"),
    ]
    for name, value in rows:
        print(f"{name:<62}{value}")
    return 0


def count_by_folder(paths, room):
    counts = defaultdict(int)
    for path in paths:
        if room_of(path) == room:
            counts[path.parent] += 1
    return counts


if __name__ == "__main__":
    sys.exit(main())
