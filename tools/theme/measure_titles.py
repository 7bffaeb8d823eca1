#!/usr/bin/python3
"""Counts the titles that a theme shows badly: shortened, running into one another, or leaving their slot.

    measure_titles.py [THEME_FOLDER...]     without a folder: the delivered themes

A thousand titles like those of real records, each with and without a cover and an artist, are laid out in every shown
slot in turn by the jukebox's rules. What counts is the ink: two lines overlap where both draw the same pixel.
"""

import random
import sys
from pathlib import Path

import numpy
from PIL import Image, ImageDraw

from mock_screen import Theme, shorten, title_lines

ROOT = Path(__file__).resolve().parents[2]
COUNT = 1000
# Less than this is the soft edge of a letter.
INK = 64
WORDS = {
    "en": "love night day heart dance summer rain blue lonely sweet midnight river city street fire dream baby golden "
          "silver wild crazy rock soul train moon sun star road home winter morning shadow magic diamond water ocean "
          "highway radio guitar mama angel devil heaven thunder lightning paradise yesterday tomorrow forever never",
    "de": "Liebe Nacht Herz Sehnsucht überall Mädchen Glück Straße Heimweh König Träume Wolkenbruch Frühling Sommer",
    "fr": "amour toujours étoile française rêve soir Paris vie âme ça garçon déjà forêt île août",
    "es": "corazón niña bailando mañana noche sol canción mariachi amor eterno bésame mucho señorita cumbia",
    "sv": "kärlek måne ängel sjö nätter öga vår hjärta ljus himmel",
}  # fmt: skip
PATTERNS = (
    "{a}", "{a} {b}", "The {a} of {b}", "I Want to {a} with You", "Don't Stop the {a}", "{a}, {b} and {c}",
    "{a} ({b} Remix)", "{a} in the {b} {c}", "When the {a} Goes Down on {b} Street", "{a} (Live at the {b} Hall, 1978)",
    "{a} {a} {a}", "You're the {a} of My {b}", "{a} No. 5 in C minor, Op. 67", "In the {a} of the {b} {c}", "{a} & {b}",
    "Mr. {a}", "{a}?", "(I Can't Get No) {a}", "Summer of '69", "24 Hours of {a}", "What a {a} It Would Be",
    "{a} Is Just Another Word for {b}",
)  # fmt: skip
ARTISTS = (
    "The Harbour Lights Orchestra", "Étoile Rouge", "Mr. Brown and the Swinging Doors", "Queen Bees", "DJ Ångström",
    "Los Hermanos Rodríguez y su Conjunto", "König & Söhne", "The Late Night Brass Band feat. Miss Lily", "",
)  # fmt: skip


def titles():
    """The same thousand pairs of title and artist on every run, in capitals, as the jukebox draws them."""
    chance = random.Random(5)
    for _ in range(COUNT):
        words = WORDS[chance.choices(list(WORDS), (7, 1.5, 1, 1, 0.7))[0]].split()
        parts = {name: word.capitalize() for name, word in zip("abc", chance.choices(words, k=3))}
        yield chance.choice(PATTERNS).format(**parts).upper(), chance.choice(ARTISTS).upper()


def ink_of(theme, size, text, style, box):
    """Which pixels of a picture of the zone a line covers. It follows draw_text of mock_screen.py."""
    font = theme.font(style)
    ascent, descent = font.getmetrics()
    left = round(box[0] + box[2] / 2 - font.getlength(text) / 2)
    page = Image.new("L", size)
    ImageDraw.Draw(page).text((left, round(box[1] + box[3] / 2 - (ascent + descent) / 2)), text, 255, font)
    return numpy.asarray(page) > INK


def faults(theme, section, title, artist, placed):
    """The names of what is wrong with a title in a slot."""
    def box(part):
        return theme.ini.box(section, f"ZoneListPiste{part}", ("X", "Y", "W", "H"))

    x, y, w, h = box("Hilight")
    margin = 40

    def near(part):
        return (part[0] - x + margin, part[1] - y + margin, part[2], part[3])

    found, above = set(), None
    for text, style, line in title_lines(theme, lambda part: near(box(part)), title, artist, placed, False):
        if shorten(theme.font(style), text, line[2]) != text:
            found.add("shortened")
            continue
        ink = ink_of(theme, (w + 2 * margin, h + 2 * margin), text, style, line)
        if ink.sum() != ink[margin : margin + h, margin : margin + w].sum():
            found.add("outside the slot")
        if above is not None and (above & ink).any():
            found.add("overlapping")
        left, top, width, height = near(box("NumSaisie"))
        if ink[top : top + height, left : left + width].any():
            found.add("on the label")
        above = ink if above is None else above | ink
    return found


def shown_slots(theme):
    rows = theme.ini.number("zonelist", "ZoneListNbTracksParColonne")
    return [f"zonelist{side}{row}" for side in ("Gauche", "Droite") for row in range(1, rows + 1)]


def main():
    bad = 0
    for folder in sys.argv[1:] or sorted((ROOT / "home/themes").iterdir()):
        theme = Theme(folder)
        slots = shown_slots(theme)
        counts, examples = {}, []
        for i, (title, artist) in enumerate(titles()):
            for placed in (True, False):
                for fault in faults(theme, slots[i % len(slots)], title, artist, placed):
                    counts[fault] = counts.get(fault, 0) + 1
                    examples.append(f"  {fault}, {'with' if placed else 'without'} a cover: {title} / {artist}")
        print(f"{folder}: {2 * COUNT} titles, {counts or 'no fault'}")
        print("\n".join(examples[:20]))
        bad += len(examples)
    return bad > 0


if __name__ == "__main__":
    sys.exit(main())
