#!/usr/bin/python3
"""Writes the fixtures of tests/images/ico, icons and cursors, and their ledger.

The encoder and the rules for the expected pixels are independent of the decoder under test. Where the rules are those
of the format, the expected pixels are compared with those that Pillow reads. Run it from any folder, without arguments.
The output is the same on every run.
"""

import random
import struct
import zlib

from picture_ledger import ICON, Ledger, expect_like, premultiplied

NOTHING = (0, 0, 0, 0)
CURSOR = 2


def padded(bits):
    bits += "0" * (-len(bits) % 32)
    return bytes(int(bits[i:i + 8], 2) for i in range(0, len(bits), 8))


def widened(sample):
    return sample << 3 | sample >> 2


class Bitmap:
    """A bitmap with a mask: samples of pixels, the top row first."""

    def __init__(self, depth, width=7, height=5, seed=0, used=0):
        dice = random.Random(f"{depth} {width} {height} {seed}")
        self.depth, self.width, self.height, self.used = depth, width, height, used
        self.entries = used or 1 << min(depth, 8)
        self.palette = [tuple(dice.randrange(256) for _ in range(3)) for _ in range(self.entries)]
        if depth <= 8:
            self.rows = [[dice.randrange(self.entries) for _ in range(width)] for _ in range(height)]
        elif depth == 32:
            self.rows = [[tuple(dice.randrange(256) for _ in range(4)) for _ in range(width)] for _ in range(height)]
        else:
            top = 32 if depth == 16 else 256
            self.rows = [[tuple(dice.randrange(top) for _ in range(3)) for _ in range(width)] for _ in range(height)]
        self.mask = [[dice.randrange(4) == 0 for _ in range(width)] for _ in range(height)]
        self.compression, self.header, self.stated = 0, 40, 2 * height

    def row_bits(self, row):
        if self.depth <= 8:
            return "".join(format(sample, f"0{self.depth}b") for sample in row)
        if self.depth == 16:
            words = (red << 10 | green << 5 | blue for red, green, blue in row)
            return "".join(format(word & 255, "08b") + format(word >> 8, "08b") for word in words)
        order = (2, 1, 0) if self.depth == 24 else (2, 1, 0, 3)
        return "".join(format(pixel[i], "08b") for pixel in row for i in order)

    def bytes(self, with_mask=True):
        data = struct.pack("<IiiHHIIiiII", self.header, self.width, self.stated, 1, self.depth, self.compression, 0, 0, 0,
                           self.used, 0)
        data += bytes(self.header - 40)
        if self.depth <= 8:
            data += b"".join(bytes((blue, green, red, 0)) for red, green, blue in self.palette)
        data += b"".join(padded(self.row_bits(row)) for row in reversed(self.rows))
        if with_mask:
            data += b"".join(padded("".join("01"[bit] for bit in row)) for row in reversed(self.mask))
        return data

    def straight(self):
        """Rows of red, green, blue and alpha."""
        if self.depth == 32:
            return self.rows
        colours = {8: self.palette.__getitem__, 16: lambda pixel: tuple(widened(sample) for sample in pixel)}
        colour = colours.get(max(8, self.depth), lambda pixel: pixel)
        return [[NOTHING if hidden else colour(sample) + (255,) for sample, hidden in zip(row, mask)]
                for row, mask in zip(self.rows, self.mask)]

    def stored(self):
        return [[premultiplied(pixel) for pixel in row] for row in self.straight()]


def icon(*entries, kind=1, count=None, gap=0):
    """A file of entries (width, height, depth, data); a size of 256 is stored as 0."""
    count = len(entries) if count is None else count
    place = 6 + 16 * len(entries) + gap
    directory, data = struct.pack("<HHH", 0, kind, count), bytes(gap)
    for width, height, depth, content in entries:
        directory += struct.pack("<BBBBHHII", width & 255, height & 255, 0, 0, 1, depth, len(content), place)
        place += len(content)
        data += content
    return directory + data


def entry(bitmap, width=None, height=None, depth=None, **options):
    return (width or bitmap.width, height or bitmap.height, bitmap.depth if depth is None else depth,
            bitmap.bytes(**options))


def chunk(kind, data, wrong=0):
    return struct.pack(">I", len(data)) + kind + data + struct.pack(">I", zlib.crc32(kind + data) ^ wrong)


def png(bitmap, wrong=0):
    raw = b"".join(b"\0" + b"".join(bytes(pixel) for pixel in row) for row in bitmap.rows)
    header = struct.pack(">IIBBBBB", bitmap.width, bitmap.height, 8, 6, 0, 0, 0)
    return (b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", header) + chunk(b"IDAT", zlib.compress(raw, 9), wrong)
            + chunk(b"IEND", b""))


def write_depths(ledger):
    for depth in (1, 4, 8, 16, 24):
        for width in ((7, 33) if depth in (1, 16) else (7,)):
            bitmap = Bitmap(depth, width)
            data = icon(entry(bitmap))
            expect_like(f"depth {depth}", data, bitmap.straight(), tolerance=1 if depth == 16 else 0)
            ledger.good(f"depth-{depth}-of-{width}-columns", data, bitmap.stored(), True, ICON)
        bitmap = Bitmap(depth, seed=1)
        bitmap.mask = [[False] * bitmap.width for _ in bitmap.rows]
        if depth in (4, 24):
            ledger.good(f"depth-{depth}-without-a-masked-pixel", icon(entry(bitmap)), bitmap.stored(), False, ICON)
    # A mask bit after the last column, in the padding of the row, hides nothing.
    bitmap = Bitmap(24, seed=2)
    bitmap.mask = [[False] * 32 for _ in bitmap.rows]
    bitmap.mask[1][20] = True
    ledger.good("mask-bit-in-the-padding", icon(entry(bitmap)), [row[:7] for row in bitmap.stored()], False, ICON)
    used = Bitmap(8, seed=3, used=10)
    ledger.good("palette-of-ten-entries", icon(entry(used)), used.stored(), True, ICON)
    large = Bitmap(8, seed=4)
    large.header = 124
    ledger.good("header-of-124-bytes", icon(entry(large)), large.stored(), True, ICON)
    cursor = Bitmap(4, seed=5)
    ledger.good("cursor.cur", icon(entry(cursor, depth=3), kind=CURSOR), cursor.stored(), True, ICON)
    far = Bitmap(24, seed=6)
    ledger.good("picture-behind-a-gap", icon(entry(far), gap=50), far.stored(), True, ICON)


def write_alpha(ledger):
    straight = Bitmap(32)
    data = icon(entry(straight))
    expect_like("straight", data, straight.straight())
    ledger.good("alpha-straight", data, straight.stored(), True, ICON)
    ready = Bitmap(32, seed=1)
    ready.rows = [[premultiplied(pixel) for pixel in row] for row in ready.rows]
    ledger.good("alpha-premultiplied-already", icon(entry(ready)), ready.rows, True, ICON)
    none = Bitmap(32, seed=2)
    none.rows = [[pixel[:3] + (0,) for pixel in row] for row in none.rows]
    opaque = [[pixel[:3] + (255,) for pixel in row] for row in none.rows]
    ledger.good("alpha-of-zeros-is-opaque", icon(entry(none)), opaque, False, ICON)
    full = Bitmap(32, seed=3)
    full.rows = [[pixel[:3] + (255,) for pixel in row] for row in full.rows]
    ledger.good("alpha-of-255-alone", icon(entry(full)), full.rows, True, ICON)
    # A colour under an alpha of 0 makes all other colours straight.
    hidden = Bitmap(32, seed=4)
    hidden.rows = [[premultiplied(pixel[:3] + (pixel[3] | 1,)) for pixel in row] for row in hidden.rows]
    hidden.rows[4][0] = (9, 8, 7, 0)
    ledger.good("alpha-with-a-hidden-colour", icon(entry(hidden)), hidden.stored(), True, ICON)
    ledger.good("alpha-needs-no-mask", icon(entry(straight, with_mask=False)), straight.stored(), True, ICON)


def write_selection(ledger):
    small, middle, large = (Bitmap(24, size, size, seed=size) for size in (5, 9, 14))
    ledger.good("several-the-smallest-wins", icon(entry(large), entry(small), entry(middle)), small.stored(), True, ICON)
    deep, flat = Bitmap(32, 6, 6), Bitmap(4, 6, 6)
    ledger.good("several-the-deepest-of-one-size-wins", icon(entry(flat), entry(deep)), deep.stored(), True, ICON)
    every = [Bitmap(depth, 6, 6) for depth in (1, 4, 8, 16, 24, 32)]
    for count in range(2, 7):
        chosen = every[count - 1]
        ledger.good(f"several-of-every-depth-up-to-{chosen.depth}", icon(*(entry(bitmap) for bitmap in every[:count])),
                    chosen.stored(), True, ICON)
    ledger.good("several-a-png-of-the-deepest", icon(*(entry(bitmap) for bitmap in every[:5]), (6, 6, 32, png(every[5]))),
                every[5].stored(), True, ICON)
    ledger.good("several-depth-weighs-like-size", icon(entry(deep, 21, 20), entry(flat)), flat.stored(), True, ICON)
    ledger.good("several-the-first-of-equals-wins", icon(entry(Bitmap(8, 6, 6, seed=1)), entry(Bitmap(8, 6, 6, seed=2))),
                Bitmap(8, 6, 6, seed=1).stored(), True, ICON)
    ledger.good("several-one-deeper-than-32-is-never-taken", icon(entry(small, depth=48), entry(large)), large.stored(),
                True, ICON)
    ledger.good("several-a-size-of-0-means-256", icon(entry(small, 256, 256), entry(large)), large.stored(), True, ICON)
    ledger.bad("several-all-deeper-than-32", icon(entry(small, depth=33), entry(large, depth=64)))
    ledger.good("one-deeper-than-32-is-taken", icon(entry(small, depth=48)), small.stored(), True, ICON)
    ledger.bad("one-without-bytes", icon((5, 5, 24, b""), gap=60))
    ledger.bad("several-the-chosen-one-without-bytes", icon((1, 1, 24, b""), entry(large)))


def write_png(ledger):
    bitmap = Bitmap(32, seed=7)
    data = icon((7, 5, 32, png(bitmap)))
    expect_like("png", data, bitmap.straight())
    ledger.good("png", data, bitmap.stored(), True, ICON)
    ledger.good("png-chosen-among-several", icon(entry(Bitmap(24, 30, 30)), (7, 5, 32, png(bitmap))), bitmap.stored(),
                True, ICON)
    ledger.bad("png-with-a-bad-checksum", icon((7, 5, 32, png(bitmap, wrong=1))))
    large = Bitmap(32, seed=7)
    large.width, large.height, large.rows = 15360, 15300, []
    ledger.bad("png-of-few-bytes-for-many-pixels", icon((7, 5, 32, png(large))))


def write_bad(ledger):
    bitmap = Bitmap(24, 9, 9)
    good = icon(entry(bitmap))
    ledger.bad("reserved-word-not-zero", b"\1" + good[1:])
    ledger.bad("type-3", icon(entry(bitmap), kind=3))
    ledger.bad("count-0", icon(entry(bitmap), count=0))
    ledger.bad("directory-past-the-end", icon(entry(Bitmap(1, 1, 1)), count=40))
    ledger.bad("data-past-the-end", good[:-1])
    ledger.bad("data-of-another-entry-past-the-end", icon(entry(bitmap), entry(Bitmap(24, 30, 30)))[:-1])
    ledger.bad("mask-missing", icon(entry(bitmap, with_mask=False)))
    beyond = Bitmap(8, used=10, seed=3)
    beyond.rows[2][3], beyond.mask[2][3] = 10, False
    ledger.bad("index-behind-the-palette", icon(entry(beyond)))
    for name, change in (("compressed", {"compression": 1}), ("width-0", {"width": 0}),
                         ("height-negative", {"stated": -18}), ("header-12", {"header": 12}),
                         ("width-of-two-thousand-million", {"width": 0x7FFFFFFF})):
        values = {"header": 40, "width": 9, "stated": 18, "depth": 24, "compression": 0} | change
        header = struct.pack("<IiiHHI", values["header"], values["width"], values["stated"], 1, values["depth"],
                             values["compression"])
        ledger.bad(f"header-{name}", icon((9, 9, 24, header + bitmap.bytes()[len(header):])))


def main():
    ledger = Ledger("ico")
    for part in (write_depths, write_alpha, write_selection, write_png, write_bad):
        part(ledger)
    ledger.close()


if __name__ == "__main__":
    main()
