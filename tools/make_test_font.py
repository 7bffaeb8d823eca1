#!/usr/bin/python3
"""Makes tests/fonts/vantorix_test.ttf, our own 5x7 pixel font for pictures that are compared by pixel.

Each glyph is drawn in the table below in a cell of 6x12 pixels; at 12 pixels (9 points at 96 dpi) one pixel of the
drawing is one pixel of the screen. Capitals use rows 2 to 8, marks above them rows 0 and 1, descenders rows 9 to 11.
"""

import argparse
import os
from pathlib import Path

UNIT = 100  # font units per pixel of the drawing
CELL_WIDTH, CELL_HEIGHT, BASELINE = 6, 12, 9
FAMILY = "Vantorix Test"
STAMP = 3_786_912_000  # seconds since 1904, the first of January 2024: the same bytes on every run
TARGET = Path(__file__).resolve().parents[1] / "tests/fonts/vantorix_test.ttf"

# Seven rows from the top of the capitals to the base line; further rows are below it.
DRAWINGS = r"""
  | ..... ..... ..... ..... ..... ..... .....
! | ..#.. ..#.. ..#.. ..#.. ..#.. ..... ..#..
" | .#.#. .#.#. .#.#. ..... ..... ..... .....
# | .#.#. .#.#. ##### .#.#. ##### .#.#. .#.#.
$ | ..#.. .#### #.#.. .###. ..#.# ####. ..#..
% | ##..# ##..# ...#. ..#.. .#... #..## #..##
& | .##.. #..#. #.#.. .#... #.#.# #..#. .##.#
' | ..#.. ..#.. ..#.. ..... ..... ..... .....
( | ...#. ..#.. .#... .#... .#... ..#.. ...#.
) | .#... ..#.. ...#. ...#. ...#. ..#.. .#...
* | ..... ..#.. #.#.# .###. #.#.# ..#.. .....
+ | ..... ..#.. ..#.. ##### ..#.. ..#.. .....
, | ..... ..... ..... ..... ..... ..##. ..##. ..#.. .#...
- | ..... ..... ..... ##### ..... ..... .....
. | ..... ..... ..... ..... ..... ..##. ..##.
/ | ....# ....# ...#. ..#.. .#... #.... #....
0 | .###. #...# #..## #.#.# ##..# #...# .###.
1 | ..#.. .##.. ..#.. ..#.. ..#.. ..#.. .###.
2 | .###. #...# ....# ...#. ..#.. .#... #####
3 | ##### ...#. ..#.. ...#. ....# #...# .###.
4 | ...#. ..##. .#.#. #..#. ##### ...#. ...#.
5 | ##### #.... ####. ....# ....# #...# .###.
6 | ..##. .#... #.... ####. #...# #...# .###.
7 | ##### ....# ...#. ..#.. .#... .#... .#...
8 | .###. #...# #...# .###. #...# #...# .###.
9 | .###. #...# #...# .#### ....# ...#. .##..
: | ..... ..##. ..##. ..... ..##. ..##. .....
; | ..... ..##. ..##. ..... ..... ..##. ..##. ..#.. .#...
< | ....# ...#. ..#.. .#... ..#.. ...#. ....#
= | ..... ..... ##### ..... ##### ..... .....
> | #.... .#... ..#.. ...#. ..#.. .#... #....
? | .###. #...# ....# ...#. ..#.. ..... ..#..
@ | .###. #...# #.### #.#.# #.##. #.... .###.
A | .###. #...# #...# ##### #...# #...# #...#
B | ####. #...# #...# ####. #...# #...# ####.
C | .###. #...# #.... #.... #.... #...# .###.
D | ####. #...# #...# #...# #...# #...# ####.
E | ##### #.... #.... ####. #.... #.... #####
F | ##### #.... #.... ####. #.... #.... #....
G | .###. #...# #.... #.### #...# #...# .####
H | #...# #...# #...# ##### #...# #...# #...#
I | .###. ..#.. ..#.. ..#.. ..#.. ..#.. .###.
J | ..### ...#. ...#. ...#. ...#. #..#. .##..
K | #...# #..#. #.#.. ##... #.#.. #..#. #...#
L | #.... #.... #.... #.... #.... #.... #####
M | #...# ##.## #.#.# #.#.# #...# #...# #...#
N | #...# ##..# ##..# #.#.# #..## #..## #...#
O | .###. #...# #...# #...# #...# #...# .###.
P | ####. #...# #...# ####. #.... #.... #....
Q | .###. #...# #...# #...# #.#.# #..#. .##.#
R | ####. #...# #...# ####. #.#.. #..#. #...#
S | .#### #.... #.... .###. ....# ....# ####.
T | ##### ..#.. ..#.. ..#.. ..#.. ..#.. ..#..
U | #...# #...# #...# #...# #...# #...# .###.
V | #...# #...# #...# #...# .#.#. .#.#. ..#..
W | #...# #...# #...# #.#.# #.#.# ##.## #...#
X | #...# #...# .#.#. ..#.. .#.#. #...# #...#
Y | #...# #...# .#.#. ..#.. ..#.. ..#.. ..#..
Z | ##### ....# ...#. ..#.. .#... #.... #####
[ | .###. .#... .#... .#... .#... .#... .###.
\ | #.... #.... .#... ..#.. ...#. ....# ....#
] | .###. ...#. ...#. ...#. ...#. ...#. .###.
^ | ..#.. .#.#. #...# ..... ..... ..... .....
_ | ..... ..... ..... ..... ..... ..... ..... #####
` | .#... ..#.. ...#. ..... ..... ..... .....
a | ..... ..... .###. ....# .#### #...# .####
b | #.... #.... ####. #...# #...# #...# ####.
c | ..... ..... .###. #.... #.... #.... .###.
d | ....# ....# .#### #...# #...# #...# .####
e | ..... ..... .###. #...# ##### #.... .###.
f | ..##. .#... ###.. .#... .#... .#... .#...
g | ..... ..... .#### #...# #...# #...# .#### ....# .###.
h | #.... #.... ####. #...# #...# #...# #...#
i | ..#.. ..... .##.. ..#.. ..#.. ..#.. .###.
j | ...#. ..... ..##. ...#. ...#. ...#. ...#. #..#. .##..
k | #.... #.... #..#. #.#.. ##... #.#.. #..#.
l | .##.. ..#.. ..#.. ..#.. ..#.. ..#.. .###.
m | ..... ..... ##.#. #.#.# #.#.# #.#.# #.#.#
n | ..... ..... ####. #...# #...# #...# #...#
o | ..... ..... .###. #...# #...# #...# .###.
p | ..... ..... ####. #...# #...# #...# ####. #.... #....
q | ..... ..... .#### #...# #...# #...# .#### ....# ....#
r | ..... ..... #.##. ##... #.... #.... #....
s | ..... ..... .#### #.... .###. ....# ####.
t | .#... .#... ###.. .#... .#... .#... ..##.
u | ..... ..... #...# #...# #...# #...# .####
v | ..... ..... #...# #...# #...# .#.#. ..#..
w | ..... ..... #...# #...# #.#.# #.#.# .#.#.
x | ..... ..... #...# .#.#. ..#.. .#.#. #...#
y | ..... ..... #...# #...# #...# #...# .#### ....# .###.
z | ..... ..... ##### ...#. ..#.. .#... #####
{ | ...## ..#.. ..#.. .#... ..#.. ..#.. ...##
| | ..#.. ..#.. ..#.. ..#.. ..#.. ..#.. ..#..
} | ##... ..#.. ..#.. ...#. ..#.. ..#.. ##...
~ | ..... ..... .#... #.#.# ...#. ..... .....
Ø | .##.# #..#. #.#.# #.#.# #.#.# .#..# #.##.
ø | ..... ..... .###. #..## #.#.# ##..# .###.
"""

# Two rows above a capital, or above a small letter two rows further down.
MARKS = {
    "grave": (".#...", "..#.."),
    "acute": ("...#.", "..#.."),
    "circumflex": ("..#..", ".#.#."),
    "tilde": (".##.#", "#.##."),
    "ring": (".###.", ".#.#."),
    "diaeresis": (".#.#.", "....."),
}
CEDILLA = ("..#..", ".##..")

# Letters made of a base letter and a mark; letters with a stroke are drawn above.
ACCENTED = {
    "grave": "ÀAàaÒOòoÈEèeÌIìiÙUùu",
    "acute": "ÁAáaÓOóoÉEéeÍIíiÚUúu",
    "circumflex": "ÂAâaÔOôoÊEêeÎIîiÛUûu",
    "tilde": "ÃAãaÕOõoÑNñn",
    "diaeresis": "ÄAäaÖOöoËEëeÏIïiÜUüuÿy",
    "ring": "ÅAåa",
}


def cell(rows, top):
    """A cell of CELL_HEIGHT rows with these rows from row `top` on."""
    empty = ["....."] * CELL_HEIGHT
    return empty[:top] + list(rows) + empty[top + len(rows) :]


def merged(one, other):
    return ["".join("#" if "#" in pair else "." for pair in zip(a, b)) for a, b in zip(one, other)]


def read_drawings():
    """All cells by character."""
    cells = {line[0]: cell(line[3:].split(), 2) for line in DRAWINGS.strip("\n").splitlines()}
    for mark, letters in ACCENTED.items():
        for letter, base in zip(letters[::2], letters[1::2]):
            body = cells[base]
            if base == "i":  # its dot is replaced by the mark
                body = cell(body[4:], 4)
            cells[letter] = merged(body, cell(MARKS[mark], 0 if base.isupper() else 2))
    for letter, base in ("ÇC", "çc"):
        cells[letter] = merged(cells[base], cell(CEDILLA, BASELINE))
    assert len(cells) == 95 + 53
    return cells


def glyph(rows):
    """A TrueType glyph: a rectangle for each run of lit pixels in a row."""
    from fontTools.pens.ttGlyphPen import TTGlyphPen

    pen = TTGlyphPen(None)
    for number, row in enumerate(rows):
        top = (BASELINE - number) * UNIT
        column = 0
        while column < len(row):
            end = column
            while end < len(row) and row[end] == "#":
                end += 1
            if end > column:
                left, right, bottom = column * UNIT, end * UNIT, top - UNIT
                pen.moveTo((left, bottom))
                for point in ((left, top), (right, top), (right, bottom)):
                    pen.lineTo(point)
                pen.closePath()
            column = end + 1
    return pen.glyph()


def build(path):
    """Writes the font file."""
    os.environ["SOURCE_DATE_EPOCH"] = "1704067200"
    from fontTools.fontBuilder import FontBuilder

    cells = read_drawings()
    frame = cell(["#####"] + ["#...#"] * 5 + ["#####"], 2)
    names = {character: f"uni{ord(character):04X}" for character in sorted(cells)}
    glyphs = {".notdef": glyph(frame)} | {names[character]: glyph(cells[character]) for character in names}
    builder = FontBuilder(CELL_HEIGHT * UNIT, isTTF=True)
    builder.setupGlyphOrder(list(glyphs))
    builder.setupCharacterMap({ord(character): name for character, name in names.items()})
    builder.setupGlyf(glyphs)
    table = builder.font["glyf"]
    builder.setupHorizontalMetrics(
        {name: (CELL_WIDTH * UNIT, getattr(table[name], "xMin", 0)) for name in glyphs}
    )
    ascent, descent = BASELINE * UNIT, (CELL_HEIGHT - BASELINE) * UNIT
    builder.setupHorizontalHeader(ascent=ascent, descent=-descent, lineGap=0)
    builder.setupNameTable({"familyName": FAMILY, "styleName": "Regular", "uniqueFontIdentifier": f"{FAMILY} 1.0",
                            "fullName": FAMILY, "psName": "VantorixTest-Regular", "version": "Version 1.0",
                            "licenseDescription": "MIT"})  # fmt: skip
    builder.setupOS2(sTypoAscender=ascent, sTypoDescender=-descent, sTypoLineGap=0, usWinAscent=ascent,
                     usWinDescent=descent, sxHeight=5 * UNIT, sCapHeight=7 * UNIT, fsSelection=0x40,
                     achVendID="VTRX")  # fmt: skip
    builder.setupPost(keepGlyphNames=False, isFixedPitch=1)
    builder.font["head"].created = builder.font["head"].modified = STAMP
    builder.font["head"].lowestRecPPEM = CELL_HEIGHT
    builder.font.recalcTimestamp = False
    path.parent.mkdir(parents=True, exist_ok=True)
    builder.save(str(path))
    print(f"{path}: {len(glyphs)} glyphs, {path.stat().st_size} bytes")


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--out", type=Path, default=TARGET)
    build(parser.parse_args().out)


if __name__ == "__main__":
    main()
