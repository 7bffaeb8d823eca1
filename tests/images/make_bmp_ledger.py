#!/usr/bin/python3
"""Writes the fixtures of tests/images/bmp, bitmaps and some JPEG files, and their ledger.

The encoder and the rules for the expected pixels are independent of the decoder under test. Where the rules are those
of the format, the expected pixels are compared with those that Pillow reads; the pixels of JPEG files are those of
Pillow. Run it from any folder, without arguments. The output is the same on every run.
"""

import io
import random
import struct

from PIL import Image

from picture_ledger import BITMAP, Ledger, expect_like, premultiplied, seen_by_pillow

RLE8, RLE4, FIELDS = 1, 2, 3


def widened(sample, bits):
    """Widens a sample of fewer than eight bits to eight by repeating its bits; 0 for a sample without bits."""
    if bits == 0:
        return 0
    value, filled = sample << (8 - bits), bits
    while filled < 8:
        value |= value >> filled
        filled *= 2
    return value


def padded(bits):
    bits += "0" * (-len(bits) % 32)
    return bytes(int(bits[i:i + 8], 2) for i in range(0, len(bits), 8))


class Bitmap:
    """Samples of pixels, the top row first, and how the file stores them."""

    def __init__(self, depth, width=7, height=5, seed=0, used=0, **options):
        dice = random.Random(f"{depth} {width} {height} {seed}")
        self.depth, self.width, self.height, self.used = depth, width, height, used
        entries = used or 1 << min(depth, 8)
        self.palette = [tuple(dice.randrange(256) for _ in range(3)) for _ in range(entries)] if depth <= 8 else []
        self.widths, self.masks = (5, 5, 5), None
        if depth <= 8:
            self.rows = [[dice.randrange(entries) for _ in range(width)] for _ in range(height)]
        else:
            self.rows = [[tuple(dice.randrange(256) for _ in range(4)) for _ in range(width)] for _ in range(height)]
        self.header, self.compression, self.top_down, self.gap, self.data = 40, 0, False, 0, None
        self.planes, self.offset = 1, None
        self.__dict__.update(options)

    def word(self, pixel):
        """A pixel of 16 bits with its fields at the positions of their masks, red in the highest bits."""
        word = 0
        for sample, bits in zip(pixel, self.widths):
            word = word << bits | sample >> (8 - bits)
        return word

    def row_bits(self, row):
        if self.depth <= 8:
            return "".join(format(sample, f"0{self.depth}b") for sample in row)
        if self.depth == 16:
            return "".join(format(byte, "08b") for pixel in row for byte in struct.pack("<H", self.word(pixel)))
        order = (2, 1, 0) if self.depth == 24 else (2, 1, 0, 3)
        return "".join(format(pixel[i], "08b") for pixel in row for i in order)

    def info(self):
        height = -self.height if self.top_down else self.height
        if self.header == 12:
            return struct.pack("<IHHHH", 12, self.width, self.height, self.planes, self.depth)
        info = struct.pack("<IiiHHIIiiII", self.header, self.width, height, self.planes, self.depth, self.compression,
                           0, 0, 0, self.used, 0)
        masks = b"".join(struct.pack("<I", mask) for mask in self.masks or ())
        return (info + masks).ljust(self.header, b"\0") if self.header > 40 else info + masks

    def bytes(self):
        start = self.info()
        for red, green, blue in self.palette:
            start += bytes((blue, green, red)) + (b"" if self.header == 12 else b"\0")
        start += bytes(self.gap)
        rows = self.rows if self.top_down else self.rows[::-1]
        data = self.data
        if data is None:
            data = b"".join(padded(self.row_bits(row)) for row in rows)
        offset = 14 + len(start) if self.offset is None else self.offset
        return b"BM" + struct.pack("<IHHI", 14 + len(start) + len(data), 0, 0, offset) + start + data

    def opaque(self):
        """Rows of red, green, blue and 255."""
        if self.depth <= 8:
            return [[self.palette[sample] + (255,) for sample in row] for row in self.rows]
        if self.depth == 16:
            return [[tuple(widened(sample >> (8 - bits), bits) for sample, bits in zip(pixel, self.widths)) + (255,)
                     for pixel in row] for row in self.rows]
        return [[pixel[:3] + (255,) for pixel in row] for row in self.rows]


def fields(*widths):
    """The masks of adjacent fields, red in the highest bits."""
    masks, shift = [], sum(widths)
    for bits in widths:
        shift -= bits
        masks.append(((1 << bits) - 1) << shift)
    return tuple(masks)


class Cases:
    def __init__(self, ledger):
        self.ledger = ledger

    def good(self, name, bitmap, rows=None, alpha=False, pillow=True):
        data = bitmap.bytes()
        rows = bitmap.opaque() if rows is None else rows
        if pillow:
            expect_like(name, data, rows, tolerance=1 if bitmap.depth == 16 else 0)
        self.ledger.good(name, data, rows, alpha, BITMAP)


def write_depths(cases):
    for depth in (1, 4, 8, 16, 24):
        cases.good(f"depth-{depth}", Bitmap(depth, 9))
        cases.good(f"depth-{depth}-top-down", Bitmap(depth, 9, seed=1, top_down=True))
    cases.good("depth-1-white-first", Bitmap(1, 33, palette=[(255, 255, 255), (0, 0, 0)]))
    cases.good("depth-8-of-ten-colours", Bitmap(8, used=10))
    cases.good("depth-24-behind-a-gap", Bitmap(24, gap=21))
    for name, widths in (("565", (5, 6, 5)), ("555", (5, 5, 5)), ("444", (4, 4, 4)), ("655", (6, 5, 5)),
                         ("332", (3, 3, 2)), ("0-8-8", (0, 8, 8))):
        cases.good(f"fields-{name}", Bitmap(16, compression=FIELDS, widths=widths, masks=fields(*widths)),
                   pillow=name in ("565", "555"))
    for header in (108, 124):
        bitmap = Bitmap(16, header=header, compression=FIELDS, widths=(5, 6, 5), masks=fields(5, 6, 5), top_down=True)
        cases.good(f"header-{header}-depth-16-top-down", bitmap)
    for depth in (1, 8, 24):
        cases.good(f"header-12-depth-{depth}", Bitmap(depth, 9, 9, header=12))
    for header, depth in ((52, 16), (56, 24), (64, 8), (108, 8), (124, 24)):
        bitmap = Bitmap(depth, header=header)
        if header == 52:
            bitmap = Bitmap(16, header=52, compression=FIELDS, widths=(5, 6, 5), masks=fields(5, 6, 5))
        cases.good(f"header-{header}-depth-{depth}", bitmap, pillow=header not in (52, 56))
    cases.good("header-56-depth-8", Bitmap(8, header=56, used=20), pillow=False)


def write_run_lengths(cases):
    rows = [[3, 3, 3, 3, 3, 3, 3], [0, 1, 2, 3, 4, 4, 4], [5, 5, 5, 6, 7, 8, 9]]
    palette = Bitmap(8).palette[:16]
    # Bottom row first: a run, and five literal pixels padded to a whole word.
    eight = (b"\x03\x05\x00\x04\x06\x07\x08\x09" b"\0\0" b"\x00\x05\x00\x01\x02\x03\x04\x00\x02\x04" b"\0\0"
             b"\x07\x03" b"\0\1")
    four = (b"\x03\x55\x00\x04\x67\x89" b"\0\0" b"\x00\x05\x01\x23\x40\x00\x02\x44" b"\0\0" b"\x07\x33" b"\0\1")
    for depth, compression, data in ((8, RLE8, eight), (4, RLE4, four)):
        options = {"rows": rows, "palette": palette, "compression": compression, "used": 16}
        # Pillow loses the last pixel of an odd number of 4-bit pixels.
        cases.good(f"runs-{depth}", Bitmap(depth, 7, 3, data=data, **options), pillow=depth == 8)
        # Pixels that a jump skips or that are missing are colour 0.
        jumped = [[0, 0, 0, 0, 0, 0, 0], [0, 0, 0, 0, 2, 2, 2], [1, 1, 0, 0, 0, 0, 0]]
        run = bytes((2, 0x11)) + b"\0\2\2\1" + bytes((3, 0x22)) + b"\0\1"
        if depth == 8:
            run = bytes((2, 1)) + b"\0\2\2\1" + bytes((3, 2)) + b"\0\1"
        cases.good(f"runs-{depth}-with-a-jump", Bitmap(depth, 7, 3, data=run, **options | {"rows": jumped}),
                   pillow=False)


def write_alpha(cases):
    straight = Bitmap(32)
    rows = [[premultiplied(pixel) for pixel in row] for row in straight.rows]
    cases.good("depth-32-straight", straight, rows, True, pillow=False)
    cases.good("depth-32-straight-top-down", Bitmap(32, top_down=True), rows, True, pillow=False)
    ready = Bitmap(32, seed=1)
    ready.rows = [[premultiplied(pixel) for pixel in row] for row in ready.rows]
    cases.good("depth-32-premultiplied-already", ready, ready.rows, True, pillow=False)
    none = Bitmap(32, seed=2)
    none.rows = [[pixel[:3] + (0,) for pixel in row] for row in none.rows]
    cases.good("depth-32-without-alpha-is-opaque", none)
    zeros = Bitmap(32, seed=2)
    zeros.rows = [[(0, 0, 0, 0) for pixel in row] for row in zeros.rows]
    cases.good("depth-32-of-zeros-is-black", zeros)
    some = Bitmap(32, seed=5)
    some.rows = [[(0, 0, 0, 0) if x % 3 == 0 else premultiplied(pixel) for x, pixel in enumerate(row)]
                 for row in some.rows]
    cases.good("depth-32-premultiplied-with-empty-pixels", some, some.rows, True, pillow=False)
    full = Bitmap(32, seed=3)
    full.rows = [[pixel[:3] + (255,) for pixel in row] for row in full.rows]
    cases.good("depth-32-all-of-255", full, full.rows, True)
    # A colour under an alpha of 0, at any position, makes all other colours straight.
    for name, place in (("first", (4, 0)), ("last", (0, 6))):
        hidden = Bitmap(32, seed=4)
        hidden.rows = [[premultiplied(pixel[:3] + (pixel[3] | 1,)) for pixel in row] for row in hidden.rows]
        y, x = place
        hidden.rows[y][x] = (9, 8, 7, 0)
        rows = [[premultiplied(pixel) for pixel in row] for row in hidden.rows]
        cases.good(f"depth-32-a-hidden-colour-{name}", hidden, rows, True, pillow=False)
    swapped = Bitmap(32, compression=FIELDS, masks=(0xFF, 0xFF00, 0xFF0000))
    cases.good("depth-32-masks-are-not-looked-at", swapped,
               [[premultiplied(pixel) for pixel in row] for row in swapped.rows], True, pillow=False)
    five = Bitmap(32, header=124, masks=(0xFF0000, 0xFF00, 0xFF, 0xFF000000), compression=FIELDS)
    cases.good("depth-32-header-124", five, [[premultiplied(pixel) for pixel in row] for row in five.rows], True,
               pillow=False)


def write_jpeg(ledger):
    dice = random.Random("jpeg")
    picture = Image.new("RGB", (17, 11))
    picture.putdata([(x * 15 % 256, (x * y) % 256, dice.randrange(60)) for y in range(11) for x in range(17)])
    kinds = {"colour": (picture, {"quality": 90}), "grey": (picture.convert("L"), {"quality": 90}),
             "progressive": (picture, {"quality": 60, "progressive": True}),
             "every-sample": (picture, {"quality": 90, "subsampling": 0})}
    turned = Image.Exif()
    turned[0x0112] = 6
    kinds["orientation-is-not-applied"] = (picture, {"quality": 90, "exif": turned})
    for name, (source, options) in kinds.items():
        buffer = io.BytesIO()
        source.save(buffer, "JPEG", **options)
        data = buffer.getvalue()
        ledger.good(f"{name}.jpg", data, seen_by_pillow(data), False, BITMAP)
    ledger.bad("without-a-frame.jpg", data[:60])


def write_bad(ledger):
    good = Bitmap(24, 9, 9).bytes()
    ledger.bad("cut", good[:-1])
    ledger.bad("depth-32-cut", Bitmap(32).bytes()[:-1])
    ledger.bad("header-alone", Bitmap(24, data=b"", gap=9).bytes())
    ledger.bad("mark-of-another-kind", b"BA" + good[2:])
    ledger.bad("depth-5", Bitmap(24).bytes()[:28] + b"\5" + Bitmap(24).bytes()[29:])
    for name, options in (("width-0", {"width": 0}), ("width-negative", {"width": -5}), ("height-0", {"height": 0}),
                          ("of-a-million-million-pixels", {"width": 1000000, "height": 1000000})):
        options = {"rows": [], "data": bytes(40)} | options
        bitmap = Bitmap(24)
        bitmap.__dict__.update(options)
        ledger.bad(name, bitmap.bytes())
    runs = Bitmap(8, data=bytes(40), compression=RLE8)
    runs.width = runs.height = 60000
    ledger.bad("runs-of-a-thousand-million-pixels", runs.bytes())


def write_costly(ledger):
    """Small files that need much time or memory. Larger sizes are refused for their cost, not for an error."""
    for depth, compression, data in ((8, RLE8, b"\x03\x05\x05"), (4, RLE4, b"\x03\x55\x05"), (8, RLE8, b"\0\5\1\2"),
                                     (4, RLE4, b"\0\5\x12"), (8, RLE8, b"\0\2\1"), (4, RLE4, b"\0\2\1")):
        name = {3: "a-run", 5: "plain-pixels", 2: "a-jump"}[data[0] or data[1]]
        ledger.bad(f"runs-{depth}-cut-in-{name}",
                   Bitmap(depth, rows=[], data=data, compression=compression).bytes())
    for depth, compression in ((8, RLE8), (4, RLE4)):
        ledger.bad(f"runs-{depth}-of-few-bytes-for-many-pixels",
                   Bitmap(depth, 4096, 4097, rows=[], data=b"\0\1", compression=compression).bytes())
    colour = (1, 2, 3)
    first = jpeg_scan((1,), 0, 0)
    end = b"\xFF\xD9"
    progressive = jpeg_start(0xC2, 2048, 2048, (1,)) + first
    ledger.bad("progressive-of-600-scans.jpg", progressive + jpeg_scan((1,), 1, 63) * 600 + end)
    ledger.bad("progressive-of-80-refining-scans.jpg", progressive + jpeg_scan((1,), 1, 63, 0x10) * 80 + end)
    ledger.bad("baseline-of-600-scans.jpg", jpeg_start(0xC0, 2048, 2048, colour) + jpeg_scan((2,), 0, 63) * 600 + end)
    ledger.bad("few-bytes-for-many-pixels.jpg",
               jpeg_start(0xC0, 8192, 8192, colour) + jpeg_scan(colour, 0, 63) + end)


def jpeg_segment(code, contents):
    return bytes((0xFF, code)) + struct.pack(">H", len(contents) + 2) + contents


def jpeg_start(frame, width, height, components):
    """Everything before the first scan. Each table has a single code: a difference of 0, and the end of a block."""
    code = b"\1" + bytes(15) + b"\0"
    sizes = struct.pack(">BHHB", 8, height, width, len(components))
    return (b"\xFF\xD8" + jpeg_segment(0xDB, b"\0" + b"\1" * 64) +
            jpeg_segment(frame, sizes + b"".join(bytes((component, 0x11, 0)) for component in components)) +
            jpeg_segment(0xC4, b"\x00" + code) + jpeg_segment(0xC4, b"\x10" + code))


def jpeg_scan(components, first, last, step=0):
    """A scan without data, which decoders read as zeros."""
    named = b"".join(bytes((component, 0)) for component in components)
    return jpeg_segment(0xDA, bytes((len(components),)) + named + bytes((first, last, step)))


def main():
    ledger = Ledger("bmp")
    cases = Cases(ledger)
    for part in (write_depths, write_run_lengths, write_alpha):
        part(cases)
    write_jpeg(ledger)
    write_bad(ledger)
    write_costly(ledger)
    ledger.close()


if __name__ == "__main__":
    main()
