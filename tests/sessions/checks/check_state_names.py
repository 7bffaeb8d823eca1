#!/usr/bin/env python3
"""Every member of a state header has a name in the console's state, and every theme key too."""

import glob
import os
import re
import sys

import check_support

SOURCE = os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "..", "..", "src")

# Objects are shown by their members: the type, and what stands behind the dot.
OBJECTS = {
    "Surface": ["Left", "Top", "Width", "Height", "Visible"],
    "Strip": ["Left", "Top", "Width", "Height", "Visible"],
    "c32bppDIB": ["Width", "Height"],
    "LatePicture": ["Width", "Height"],
    "CoverPicture": ["Width", "Height"],
    "FolderList": ["Path", "List"],
    "FileList": ["Path", "Pattern", "List"],
    "Timer": ["Enabled", "Interval"],
    "WindowPlace": ["Left", "Top", "Width", "Height", "Visible"],
}

# Members whose name in the console is another one, or none.
CALLED = {
    "MainWindow": "Form_Main",
    "shareFolder": None,  # where the delivered themes are; always empty in the console
    "videoFormLoaded": None,  # whether the place of a window has been read, no variable
    "iniFiles": None,  # parsed copies of files, no variable
    "TaggedImages": None,  # the last tag that was read, no variable
    "readyCovers": None,  # covers ready to be drawn, no variable
    "tmpCoverSource": None,  # a picture still to be decoded, no variable
    "playlistTexts": None,  # measured texts, no variable
    "playlistHilightTexts": None,  # measured texts, no variable
    "pictureQueue": None,  # pictures still being read, no variable
    "tickRuns": None,  # whether a tick of the light show is being sent, no variable
    "ZoneListPage": None,  # shown as ZoneListPageX, ZoneListPageY, ZoneListPageWidth and ZoneListPageHeight
}

# The controls of the dialogs are shown by "get".
CONTROLS = {"SlotControls", "ConfigDialogState", "KeyAssignState", "FolderDialogState"}

MEMBER = re.compile(r"^    ([A-Za-z_][\w:]*(?:<.*>)?)\s+(\w+)\s*(?:=[^;]*|\{[^;]*\})?;$")
THEME_ROW = re.compile(r"^\s+ROW\((\w+),\s*(?:\"\w+\",\s*)?(\w+)\)")
LONG = ["X", "Y", "Width", "Height"]
# What the keys of a row of the theme's lists have after its name.
KEYS_OF = {
    "INTEGER": [""],
    "TEXT": [""],
    "CORNER": ["X", "Y"],
    "RECT": ["X", "Y", "W", "H"],
    "LONG_RECT": LONG,
    "NAVIGATION_RECT": ["x", "Y", "Width", "Height"],
    "LEFT_PAGE": LONG,
    "RIGHT_PAGE": LONG,
    "LOOK": ["Font", "FontSize", "FontColor"],
    "HILIGHT_LOOK": ["FontHilight", "FontSizeHilight", "FontColorHilight"],
}


def members_of(text):
    """Type and name of every member of the structs whose names tell of state."""
    for struct in re.finditer(r"^struct (\w+) \{\n(.*?)^\};", text, re.M | re.S):
        if struct.group(1) in OBJECTS or struct.group(1) in CONTROLS | {"ListLine"}:
            continue
        for line in struct.group(2).split("\n"):
            member = MEMBER.match(line)
            if member:
                yield member.groups()


def expected_names():
    for header in sorted(glob.glob(os.path.join(SOURCE, "*", "*_state.h"))):
        with open(header, encoding="utf-8") as file:
            for kind, name in members_of(file.read()):
                name = CALLED.get(name, name)
                if name is not None:
                    yield from (name + "." + part for part in OBJECTS[kind]) if kind in OBJECTS else [name]
    for header in ("theme_keys.h", "keyboard_state.h"):
        with open(os.path.join(SOURCE, "state", header), encoding="utf-8") as file:
            for line in file:
                row = THEME_ROW.match(line)
                if row:
                    yield from (row.group(2) + key for key in KEYS_OF[row.group(1)])


def main():
    given = check_support.arguments()
    session = check_support.make_home(given, "state_names", "base plain\n")
    code, answers, errors = check_support.run(given, ["--home", session.home], b"state\n")
    if code != 0 or "state" not in answers[-1]:
        sys.exit("no state: %s %s" % (answers, errors))
    expected = set(expected_names())
    if len(expected) < 400:
        sys.exit("only %d names were found in the headers: has their format changed?" % len(expected))
    missing = sorted(expected - set(answers[-1]["state"]))
    if missing:
        sys.exit("members without a name in the console's state: " + ", ".join(missing))
    # Each can be asked for by itself.
    for name in answers[-1]["state"]:
        if re.search(r"\s", name):
            sys.exit("a name that does not fit into a command: " + name)


if __name__ == "__main__":
    main()
