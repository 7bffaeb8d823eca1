#!/usr/bin/python3
"""Measures the contrast of every text of a theme against the pixels that can be behind it, as WCAG 2 defines contrast.

For each text colour of theme.ini, in both looks, the worst pixel of its rectangle counts. All rectangles of all live
slots are measured, with and without the picture of the track numbers and the marks of queued tracks. Less than 4.5 is
an error.
"""

import argparse
import sys
from pathlib import Path

import numpy

from check_theme import live_slots
from light import LEAST_CONTRAST, contrast
from mock_screen import Theme, cut

CAPITAL = 0.73  # height of a capital relative to the font size


def ground(theme, box, names):
    """The pixels of a rectangle, with pictures drawn over one another in this order on black."""
    x, y, w, h = box
    result = numpy.zeros((h, w, 3))
    for name in names:
        part = numpy.asarray(cut(theme.picture(name), box), dtype=float)
        share = part[..., 3:] / 255
        result = result * (1 - share) + part[..., :3] * share
    return result


def band(box, style, lines=1):
    """The rows of a rectangle that capitals occupy, for one line of text or for three."""
    x, y, w, h = box
    half = round(style[1] * 96 / 72 * CAPITAL / 2) + (style[1] + 2 if lines == 3 else 0)
    middle = y + h // 2
    return x, middle - half, w, 2 * half


def slot_texts(theme, lit):
    """Name, style, rectangle and the pictures below it, for the texts of the slots."""
    ending = "_hilight.png" if lit else ".png"
    zone, numbers = "zonelist" + ending, "zonelistWithNumTrack" + ending
    piles = ([zone], [zone, "zonelist_nowplaying.png"], [zone, "zonelist_comingnext.png"], [zone, "zonelist_video.png"])
    for place in live_slots(theme):
        cover, title = theme.ini.slot(*place, "Cover"), theme.ini.slot(*place, "Titre")
        wide = (cover[0], title[1], title[0] + title[2] - cover[0], title[3])
        for part, prefix, boxes, lines in (
            ("label", "NumSaisie", [theme.ini.slot(*place, "NumSaisie")], 1),
            ("title", "TitreTitre", [title, wide], 3),
            ("artist", "TitreInterprete", [title, wide], 3),
        ):
            style = theme.ini.style("zonelist", f"ZoneListPiste{prefix}", lit)
            for box in boxes:
                yield from ((part, style, band(box, style, lines), pile) for pile in piles)
        style = theme.ini.style("zonelist", "ZoneListPisteNumPiste", lit)
        number = band(theme.ini.slot(*place, "NumPiste"), style)
        # A number has at most three digits.
        width = round(style[1] * 96 / 72 * 0.55 * 3)
        middle = (number[0] + max(number[2] - width, 0) // 2, number[1], min(width, number[2]), number[3])
        yield "track number", style, middle, [zone, numbers]


def block_texts(theme, lit):
    """The same for the texts of the blocks and the keyboard."""
    if not lit:
        for name in ("InsertCoin", "Remain", "InfosZoneLigne1", "InfosZoneLigne2"):
            style = theme.ini.style("BlockMain", f"BlockMain{name}")
            yield f"BlockMain{name}", style, band(theme.ini.box("BlockMain", f"BlockMain{name}"), style), ["main.png"]
        for name in ("Title", "Texte"):
            style = theme.ini.style("keyboard", name)
            yield f"keyboard {name}", style, band(theme.ini.box("keyboard", name), style), ["keyboard.png"]
    style = theme.ini.style("keyboard", "BtnTexte", lit)
    picture = "keyboard_hilight.png" if lit else "keyboard.png"
    yield "keyboard BtnTexte", style, band(theme.ini.box("keyboard", "BtnTexte"), style), [picture]
    style = theme.ini.style("BlockPlaylist", "BlockPlaylistPlaylist", lit)
    if lit:
        width, height = theme.picture("playlist_playlisthilight.png").size
        yield "queue", style, (5, 4, width - 10, height - 8), ["playlist_playlisthilight.png"]
    else:
        x, y, w, h = theme.ini.box("BlockPlaylist", "BlockPlaylistPlaylist")
        yield "queue", style, (x + 5, y + 4, w - 10, h - 8), ["playlist.png"]
    ending = "_hilight.png" if lit else ".png"
    for name, kind in (("ListBoxTexte", "listbox"), ("ListBoxChoiceTexte", "listbox"), ("BtnTexte", "btn")):
        style = theme.ini.style("zonecommand", f"BlockCommand{name}", lit)
        box = band(theme.ini.box("zonecommand", f"BlockCommand{name}"), style)
        yield f"BlockCommand{name}", style, box, [f"command_{kind}{ending}"]


def measure(theme):
    """The worst contrast of each text by (name, whether it is the selected look)."""
    worst = {}
    for lit in (False, True):
        for texts in (slot_texts, block_texts):
            for name, style, box, pile in texts(theme, lit):
                found = float(contrast(style[2], ground(theme, box, pile)).min())
                worst[name, lit] = min(found, worst.get((name, lit), 99.0))
    return worst


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("theme", type=Path, nargs="+", help="theme folder")
    parser.add_argument("--least", type=float, default=LEAST_CONTRAST)
    args = parser.parse_args()
    good = True
    for folder in args.theme:
        for (name, lit), value in measure(Theme(folder)).items():
            bad = value < args.least
            good = good and not bad
            print(f"{folder.name:10} {name:28} {'selected' if lit else '':8} {value:5.1f}{'  too little' if bad else ''}")
    sys.exit(0 if good else 1)


if __name__ == "__main__":
    main()
