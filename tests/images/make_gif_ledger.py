#!/usr/bin/python3
"""Writes the GIF fixtures of tests/images/gif and their ledger.

The encoder and the rules for the expected pixels are independent of the decoder under test. Where the rules are those
of the format, the expected pixels are compared with those that Pillow reads. Run it from any folder, without arguments.
The output is the same on every run.
"""

import random
import struct

from picture_ledger import GIF, Ledger, expect_like

NOTHING = (0, 0, 0, 0)
TRAILER = b"\x3b"


def palette_of(entries, seed=0):
    dice = random.Random(f"palette {entries} {seed}")
    return [tuple(dice.randrange(256) for _ in range(3)) for _ in range(entries)]


def table(palette):
    return b"".join(bytes(entry) for entry in palette)


def size_bits(palette):
    bits = 1
    while 1 << bits < len(palette):
        bits += 1
    assert 1 << bits == len(palette)
    return bits - 1


class Bits:
    """Codes of varying width, the lowest bit first."""

    def __init__(self):
        self.value, self.count = 0, 0

    def put(self, code, width):
        self.value |= code << self.count
        self.count += width

    def bytes(self):
        return self.value.to_bytes((self.count + 7) // 8, "little")


def lzw(indices, code_size, clear_when_full=True, clear_every=None, end=True):
    """The compressed data of a frame, without its blocks."""
    clear, stop = 1 << code_size, (1 << code_size) + 1
    bits = Bits()
    width, codes = code_size + 1, {(i,): i for i in range(clear)}
    next_code = stop + 1
    bits.put(clear, width)
    known, since = (), 0
    for index in indices:
        longer = known + (index,)
        if longer in codes:
            known = longer
            continue
        bits.put(codes[known], width)
        since += 1
        if next_code < 4096:
            codes[longer] = next_code
            next_code += 1
            if next_code > 1 << width and width < 12:
                width += 1
        full = next_code == 4096 and clear_when_full
        if full or since == clear_every:
            bits.put(clear, width)
            width, codes = code_size + 1, {(i,): i for i in range(clear)}
            next_code, since = stop + 1, 0
        known = (index,)
    if known:
        bits.put(codes[known], width)
        # The reader adds an entry for this code too.
        if next_code == 1 << width and width < 12:
            width += 1
    if end:
        bits.put(stop, width)
    return bits.bytes()


def blocks(data, length=255):
    parts = [data[i:i + length] for i in range(0, len(data), length)]
    return b"".join(bytes([len(part)]) + part for part in parts) + b"\0"


def interlaced(rows):
    order = [y for first, step in ((0, 8), (4, 8), (2, 4), (1, 2)) for y in range(first, len(rows), step)]
    return [rows[y] for y in order]


def extension(label, data):
    return bytes((0x21, label)) + data


def control(transparent=None, delay=7, length=4):
    flags, index = (4, 0) if transparent is None else (5, transparent)
    return extension(249, struct.pack("<BBHBB", length, flags, delay, index, 0))


COMMENT = extension(254, blocks(b"a comment of more than one block", 20))
TEXT = extension(1, b"\x0c" + bytes(12) + blocks(b"plain text"))
LOOP = extension(255, b"\x0bNETSCAPE2.0" + blocks(b"\x01\0\0"))


class Frame:
    """One image: rows of indices, an optional palette of its own, and how it is encoded."""

    def __init__(self, width=7, height=6, entries=16, seed=0, **options):
        dice = random.Random(f"{width} {height} {entries} {seed}")
        if "rows" not in options:
            self.rows = [[dice.randrange(entries) for _ in range(width)] for _ in range(height)]
        self.width, self.height, self.entries = width, height, entries
        self.palette, self.interlace, self.place = None, False, (0, 0)
        self.code_size, self.data, self.block = None, None, 255
        self.__dict__.update(options)

    def bytes(self):
        flags = 0x40 if self.interlace else 0
        if self.palette:
            flags |= 0x80 | size_bits(self.palette)
        start = struct.pack("<BHHHHB", 0x2C, *self.place, self.width, self.height, flags)
        code_size = self.code_size or max(2, (self.entries - 1).bit_length())
        rows = interlaced(self.rows) if self.interlace else self.rows
        data = self.data
        if data is None:
            data = lzw([index for row in rows for index in row], code_size)
        return start + table(self.palette or []) + bytes([code_size]) + blocks(data, self.block)


def gif(*parts, palette=None, screen=(7, 6), signature=b"GIF89a", background=0):
    flags = 0x70 | (0x80 | size_bits(palette) if palette else 0)
    start = signature + struct.pack("<HHBBB", *screen, flags, background, 0) + table(palette or [])
    return start + b"".join(part if isinstance(part, bytes) else part.bytes() for part in parts)


def colours(frame, palette, transparent=None):
    return [[NOTHING if index == transparent else palette[index] + (255,) for index in row] for row in frame.rows]


class Cases:
    """Writes files and, where requested, compares them with the independent reader."""

    def __init__(self, ledger):
        self.ledger = ledger

    def good(self, name, frame, palette, data, transparent=None, pillow=True):
        rows = colours(frame, palette, transparent)
        # Shorter files are not tried at all. The bytes after the frame are not read.
        data = data.ljust(57, b"\0")
        if pillow:
            expect_like(name, data, rows)
        self.ledger.good(name, data, rows, transparent is not None, GIF)


def write_codes(cases):
    for bits in range(1, 9):
        palette = palette_of(1 << bits)
        frame = Frame(9, 8, 1 << bits, code_size=max(2, bits))
        cases.good(f"code-size-{max(2, bits)}-of-{1 << bits}-colours", frame, palette,
                   gif(frame, TRAILER, palette=palette, screen=(9, 8)))
        frame = Frame(9, 8, 1 << bits, seed=1, code_size=max(2, bits), interlace=True)
        cases.good(f"code-size-{max(2, bits)}-of-{1 << bits}-colours-interlaced-transparent", frame, palette,
                   gif(control(1), frame, TRAILER, palette=palette, screen=(9, 8)), transparent=1)
    palette = palette_of(4)
    frame = Frame(entries=4, code_size=8)
    cases.good("code-size-larger-than-the-palette", frame, palette, gif(frame, TRAILER, palette=palette))
    two = palette_of(2)
    frame = Frame(entries=2, code_size=1)
    cases.good("code-size-1", frame, two, gif(frame, TRAILER, palette=two), pillow=False)

    palette = palette_of(256)
    frame = Frame(80, 70, 256)
    indices = [index for row in frame.rows for index in row]
    frame.data = lzw(indices, 8)
    cases.good("table-cleared-when-full", frame, palette, gif(frame, TRAILER, palette=palette, screen=(80, 70)))
    frame.data = lzw(indices, 8, clear_when_full=False)
    cases.good("table-kept-when-full", frame, palette, gif(frame, TRAILER, palette=palette, screen=(80, 70)))
    palette = palette_of(16)
    frame = Frame()
    indices = [index for row in frame.rows for index in row]
    for name, data in (("cleared-after-every-five-codes", lzw(indices, 4, clear_every=5)),
                       ("without-an-end-code", lzw(indices, 4, end=False)),
                       ("more-pixels-than-the-frame", lzw(indices + [1, 2, 3] * 9, 4))):
        frame = Frame(data=data)
        cases.good(f"data-{name}", frame, palette, gif(frame, TRAILER, palette=palette), pillow=False)
    one = Frame(entries=16, rows=[[3] * 7] * 6)
    cases.good("data-of-one-colour", one, palette, gif(one, TRAILER, palette=palette))
    frame = Frame(block=1)
    cases.good("data-in-blocks-of-one-byte", frame, palette, gif(frame, TRAILER, palette=palette))


def write_shapes(cases):
    palette = palette_of(16)
    for height in (1, 5, 17):
        frame = Frame(5, height, interlace=True)
        cases.good(f"interlaced-of-{height}-rows", frame, palette,
                   gif(frame, TRAILER, palette=palette, screen=(5, height)))
    frame = Frame(3, 2, place=(2, 3))
    cases.good("a-frame-smaller-than-the-screen-is-the-picture", frame, palette,
               gif(frame, TRAILER, palette=palette, screen=(20, 20)), pillow=False)
    frame = Frame(9, 9)
    cases.good("a-frame-larger-than-the-screen-is-the-picture", frame, palette,
               gif(frame, TRAILER, palette=palette, screen=(2, 2)), pillow=False)
    first, second = Frame(seed=1), Frame(seed=2)
    cases.good("an-animation-shows-its-first-frame", first, palette,
               gif(LOOP, control(), first, control(), second, TRAILER, palette=palette))
    cases.good("nothing-behind-the-first-frame-is-read", first, palette,
               gif(first, b"\x99\xfe anything", palette=palette))
    cases.good("no-trailer", first, palette, gif(first, palette=palette))


def write_colours(cases):
    screen, own = palette_of(16), palette_of(32, seed=1)
    frame = Frame(palette=own, entries=32)
    cases.good("own-colours-replace-those-of-the-screen", frame, own, gif(frame, TRAILER, palette=screen))
    cases.good("own-colours-alone", frame, own, gif(frame, TRAILER))
    frame = Frame()
    cases.good("transparent-colour", frame, screen, gif(control(5), frame, TRAILER, palette=screen), transparent=5)
    cases.good("transparent-colour-that-no-pixel-has", Frame(entries=9), screen,
               gif(control(14), Frame(entries=9), TRAILER, palette=screen), transparent=14)
    interlace = Frame(interlace=True, palette=own, entries=32)
    cases.good("transparent-colour-interlaced-own-colours", interlace, own,
               gif(control(30), interlace, TRAILER, palette=screen), transparent=30)
    beyond = Frame(entries=5, code_size=4)
    beyond.rows[2][3] = 15
    cases.good("transparent-colour-behind-the-palette", beyond, palette_of(8),
               gif(control(15), beyond, TRAILER, palette=palette_of(8)), transparent=15, pillow=False)
    cases.good("an-index-that-is-transparent-later-counts-too", frame, screen,
               gif(control(5), control(9), frame, TRAILER, palette=screen), transparent=9)
    cases.good("a-later-control-without-transparency-undoes-nothing", frame, screen,
               gif(control(5), control(), frame, TRAILER, palette=screen), transparent=5, pillow=False)
    cases.ledger.bad("index-behind-the-palette", gif(Frame(entries=16), TRAILER, palette=palette_of(8), screen=(7, 6)))
    cases.ledger.bad("no-colours-at-all", gif(Frame(), COMMENT, TRAILER))


def write_extensions(cases):
    palette = palette_of(16)
    frame = Frame()
    unknown = extension(0x77, blocks(b"of a kind that nobody knows"))
    parts = {
        "comment": COMMENT, "plain-text": TEXT, "application": LOOP, "unknown": unknown, "control": control(),
        "comment-without-blocks": extension(254, b"\0"), "all-kinds": COMMENT + LOOP + TEXT + unknown + control(),
    }
    for name, part in parts.items():
        cases.good(f"extension-{name}", frame, palette, gif(part, frame, TRAILER, palette=palette))
    for name in ("comment", "plain-text", "application", "unknown"):
        own = Frame(palette=palette_of(32, seed=1), entries=32)
        cases.good(f"extension-{name}-behind-the-control", own, own.palette,
                   gif(control(5), parts[name], own, TRAILER, palette=palette), transparent=5,
                   pillow=name != "plain-text")
    # The length of an application's name is skipped as stated. Blocks follow even after a length of 0.
    short = extension(255, b"\0" + blocks(b"data"))
    cases.good("extension-application-without-a-name", frame, palette,
               gif(short, frame, TRAILER, palette=palette), pillow=False)
    cases.good("zeros-between-blocks", frame, palette,
               gif(b"\0\0", COMMENT, b"\0", frame, TRAILER, palette=palette), pillow=False)
    cases.good("signature-of-87", frame, palette, gif(frame, TRAILER, palette=palette, signature=b"GIF87a"))
    cases.good("signature-in-other-letters", frame, palette,
               gif(frame, TRAILER, palette=palette, signature=b"gIf89A"), pillow=False)


def write_bad(ledger):
    palette = palette_of(16)
    frame = Frame()
    indices = [index for row in frame.rows for index in row]
    good = gif(frame, TRAILER, palette=palette)
    start = len(gif(palette=palette))
    ledger.bad("bad-block-before-the-frame", gif(b"\x99", frame, TRAILER, palette=palette))
    ledger.bad("trailer-before-the-frame", gif(TRAILER, frame, palette=palette))
    ledger.bad("signature-of-another-year", gif(frame, TRAILER, palette=palette, signature=b"GIF88a"))
    ledger.bad("no-frame", gif(COMMENT, TRAILER, palette=palette))
    ledger.bad("cut-in-the-palette", gif(palette=palette_of(64))[:100])
    ledger.bad("cut-in-an-extension", gif(COMMENT, palette=palette)[:-5])
    ledger.bad("cut-in-the-description", good[:start + 6])
    ledger.bad("cut-in-the-own-palette", gif(Frame(palette=palette_of(32)), palette=palette)[:start + 40])
    ledger.bad("cut-in-the-data", good[:-10])
    ledger.bad("cut-before-the-last-block", good[:-2])
    ledger.bad("data-empty", gif(Frame(data=b""), TRAILER, palette=palette))
    ledger.bad("data-of-an-end-alone", gif(Frame(data=lzw([], 4)), TRAILER, palette=palette))
    ledger.bad("data-of-too-few-pixels", gif(Frame(data=lzw(indices[:-1], 4)), TRAILER, palette=palette))
    for size in (9, 255):
        wrong = bytearray(good)
        wrong[start + 10] = size
        ledger.bad(f"code-size-{size}", bytes(wrong))
    ledger.bad("frame-without-columns", gif(Frame(width=0, rows=[], data=lzw(indices, 4)), TRAILER, palette=palette))
    ledger.bad("frame-of-four-thousand-million-pixels",
               gif(Frame(width=65535, height=65535, rows=[], data=lzw(indices, 4)), TRAILER, palette=palette))
    ledger.bad("frame-larger-than-its-data",
               gif(Frame(width=16384, height=16384, rows=[], data=lzw(indices, 4)), TRAILER, palette=palette))
    # All of its pixels are there: six bytes give 16,000 of them.
    ledger.bad("frame-of-one-colour-and-56-million-pixels",
               gif(Frame(width=7500, height=7500, rows=[], code_size=2, data=zeros(7500 * 7500)), TRAILER, palette=palette))


def zeros(count):
    """The compressed data of at least `count` pixels of index 0: each code is one pixel longer than the last."""
    bits, width, next_code, length, made = Bits(), 3, 6, 1, 1
    bits.put(4, width)
    bits.put(0, width)
    while made < count:
        if next_code < 4096:
            bits.put(next_code, width)
            next_code += 1
            length += 1
            width += next_code == 1 << width and width < 12
        else:
            bits.put(4095, width)
        made += length
    bits.put(5, width)
    return bits.bytes()


def main():
    ledger = Ledger("gif")
    cases = Cases(ledger)
    for part in (write_codes, write_shapes, write_colours, write_extensions):
        part(cases)
    write_bad(ledger)
    ledger.close()


if __name__ == "__main__":
    main()
