#!/usr/bin/python3
"""Writes the PNG fixtures of tests/images/png and their ledger.

The script has its own encoder and its own rules for the expected pixels; it never uses the decoder under test. Where
the rules are those of the format, every expected pixel is compared with Pillow's. Run from anywhere, no arguments; the
output is the same on every run.

A line of the ledger: the result for the file on a machine with the compression library (OK or BAD), the result without
it, the SHA-256 of the pixels (bottom-up rows, blue green red alpha, colour multiplied by alpha), whether the image
object's `alpha` is set, the file. "-" means that there is no picture either way.
"""

import hashlib
import io
import os
import random
import struct
import zlib

from PIL import Image

FOLDER = os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "tests", "images", "png")
SIGNATURE = b"\x89PNG\r\n\x1a\n"
GREY, COLOUR, PALETTE, GREY_ALPHA, COLOUR_ALPHA = 0, 2, 3, 4, 6
NAMES = {GREY: "grey", COLOUR: "colour", PALETTE: "palette", GREY_ALPHA: "grey-alpha", COLOUR_ALPHA: "colour-alpha"}
CHANNELS = {GREY: 1, COLOUR: 3, PALETTE: 1, GREY_ALPHA: 2, COLOUR_ALPHA: 4}
LEGAL = {GREY: (1, 2, 4, 8, 16), COLOUR: (8, 16), PALETTE: (1, 2, 4, 8), GREY_ALPHA: (8, 16), COLOUR_ALPHA: (8, 16)}
PASSES = ((0, 0, 8, 8), (4, 0, 8, 8), (0, 4, 4, 8), (2, 0, 4, 4), (0, 2, 2, 4), (1, 0, 2, 2), (0, 1, 1, 2))
MIXED = 5


def chunk(kind, data, checksum=None):
    if checksum is None:
        checksum = zlib.crc32(kind + data)
    return struct.pack(">I", len(data)) + kind + data + struct.pack(">I", checksum)


class Picture:
    """Samples of a small picture: rows of pixels, a pixel being a tuple of samples."""

    def __init__(self, kind, depth, width=9, height=7, interlace=0, filtering=0, seed=0, entries=None):
        self.kind, self.depth, self.width, self.height = kind, depth, width, height
        self.interlace, self.filtering = interlace, filtering
        dice = random.Random(f"{kind} {depth} {width} {height} {seed}")
        entries = min(2**depth, 256) if entries is None else entries
        top = entries if kind == PALETTE else 2**depth
        self.rows = [[tuple(dice.randrange(top) for _ in range(CHANNELS[kind])) for _ in range(width)]
                     for _ in range(height)]
        self.palette = None
        if kind == PALETTE:
            self.palette = [tuple(dice.randrange(256) for _ in range(3)) for _ in range(entries)]
        self.trns = None
        if kind in (GREY_ALPHA, COLOUR_ALPHA):  # the ends of the alpha range have special rules
            for row, value in ((0, 0), (1, 2**depth - 1)):
                self.rows[row % height][0] = self.rows[row % height][0][:-1] + (value,)

    def bits(self):
        return self.depth * CHANNELS[self.kind]

    def ihdr(self):
        return struct.pack(">IIBBBBB", self.width, self.height, self.depth, self.kind, 0, 0, self.interlace)

    def plte(self):
        return b"".join(bytes(entry) for entry in self.palette)

    def raw(self):
        """The data before compression: filter bytes and filtered rows of each pass."""
        if not self.interlace:
            return self.filtered(self.rows)
        parts = []
        for x0, y0, dx, dy in PASSES:
            rows = [row[x0::dx] for row in self.rows[y0::dy]]
            parts.append(self.filtered([row for row in rows if row]))
        return b"".join(parts)

    def filtered(self, rows):
        step = max(1, self.bits() // 8) if self.depth >= 8 else 1
        out, prior = [], None
        for number, row in enumerate(rows):
            line = pack(row, self.depth)
            prior = prior or bytes(len(line))
            kind = number % 5 if self.filtering == MIXED else self.filtering
            out.append(bytes([kind]) + apply_filter(kind, line, prior, step))
            prior = line
        return b"".join(out)

    def png(self, before=(), between=(), data=None, ihdr=None):
        """The whole file. `before` are chunks before IDAT, `between` those before IEND."""
        parts = [SIGNATURE, chunk(b"IHDR", self.ihdr() if ihdr is None else ihdr)]
        if self.palette is not None:
            parts.append(chunk(b"PLTE", self.plte()))
        if self.trns is not None:
            parts.append(chunk(b"tRNS", self.trns))
        parts += before
        parts.append(chunk(b"IDAT", zlib.compress(self.raw(), 9) if data is None else data))
        parts += between
        parts.append(chunk(b"IEND", b""))
        return b"".join(parts)


def pack(row, depth):
    samples = [sample for pixel in row for sample in pixel]
    if depth == 16:
        return b"".join(struct.pack(">H", sample) for sample in samples)
    bits = "".join(format(sample, f"0{depth}b") for sample in samples)
    bits += "0" * (-len(bits) % 8)
    return bytes(int(bits[i:i + 8], 2) for i in range(0, len(bits), 8))


def apply_filter(kind, line, prior, step):
    def left(values, i):
        return values[i - step] if i >= step else 0

    def paeth(a, b, c):
        return min((abs(b - c), 0, a), (abs(a - c), 1, b), (abs(a + b - 2 * c), 2, c))[2]

    guesses = {
        0: lambda i: 0,
        1: lambda i: left(line, i),
        2: lambda i: prior[i],
        3: lambda i: (left(line, i) + prior[i]) // 2,
        4: lambda i: paeth(left(line, i), prior[i], left(prior, i)),
    }
    return bytes((line[i] - guesses[kind](i)) & 255 for i in range(len(line)))


def colour_of(picture, pixel):
    """Red, green, blue and alpha of a pixel, 8 bits each."""
    kind, depth, trns = picture.kind, picture.depth, picture.trns
    high = [sample >> 8 for sample in pixel] if depth == 16 else list(pixel)
    if kind == COLOUR_ALPHA:
        return tuple(high)
    if kind == GREY_ALPHA:
        return (high[0],) * 3 + (high[1],)
    if kind == PALETTE:
        alpha = 255 if trns is None or pixel[0] >= len(trns) else trns[pixel[0]]
        return picture.palette[pixel[0]] + (alpha,)
    if kind == COLOUR:
        transparent = False
        if trns is not None and len(trns) >= 6:
            transparent = high == [trns[1], trns[3], trns[5]]
            if depth == 16:
                transparent = transparent or high == [trns[0], trns[2], trns[4]]
        return tuple(high) + (0 if transparent else 255,)
    level = high[0] if depth >= 8 else pixel[0] * (255 // (2**depth - 1))
    transparent = False
    if trns is not None and len(trns) >= 2:
        named = trns[0] << 8 | trns[1] if depth == 16 else trns[1] & (2**depth - 1)
        transparent = pixel[0] == named
    return (level,) * 3 + (0 if transparent else 255,)


def colours_of(picture):
    return [[colour_of(picture, pixel) for pixel in row] for row in picture.rows]


def buffer_of(colours):
    """The image object's bytes: bottom-up, premultiplied and rounded down."""
    out = bytearray()
    for row in reversed(colours):
        for red, green, blue, alpha in row:
            out += bytes((blue * alpha // 255, green * alpha // 255, red * alpha // 255, alpha))
    return bytes(out)


def has_alpha(picture):
    return picture.kind in (COLOUR, GREY_ALPHA, COLOUR_ALPHA) or picture.trns is not None


def check_with_pillow(name, data, colours):
    image = Image.open(io.BytesIO(data))
    if image.mode.startswith("I"):
        pixels = [(value >> 8,) * 3 + (255,) for value in image.getdata()]
    else:
        pixels = list(image.convert("RGBA").getdata())
    ours = [colour for row in colours for colour in row]
    for i, (expected, seen) in enumerate(zip(ours, pixels)):
        # Pillow keeps the colour of a transparent pixel; premultiplying removes it.
        assert expected == seen or expected[3] == seen[3] == 0, (name, i, expected, seen)
    assert len(ours) == len(pixels), name


class Ledger:
    def __init__(self):
        self.lines, self.names = [], set()
        os.makedirs(FOLDER, exist_ok=True)

    def write(self, name, data, line):
        assert name not in self.names, name
        self.names.add(name)
        with open(os.path.join(FOLDER, name + ".png"), "wb") as file:
            file.write(data)
        self.lines.append(f"{line} {name}.png")

    def good(self, name, picture, data=None, colours=None, pillow=False, with_zlib="OK", alpha=None):
        data = picture.png() if data is None else data
        colours = colours_of(picture) if colours is None else colours
        if pillow:
            check_with_pillow(name, data, colours)
        digest = hashlib.sha256(buffer_of(colours)).hexdigest()
        alpha = has_alpha(picture) if alpha is None else alpha
        self.write(name, data, f"{with_zlib} OK {digest} {int(alpha)}")

    def bad(self, name, data):
        self.write(name, data, "BAD BAD - -")

    def close(self):
        for name in os.listdir(FOLDER):
            if name.endswith(".png") and name[:-4] not in self.names:
                os.remove(os.path.join(FOLDER, name))
        with open(os.path.join(FOLDER, "ledger.txt"), "w", encoding="ascii") as file:
            file.write("\n".join(self.lines) + "\n")


def transparencies(kind, depth):
    """Contents of tRNS that match a pixel of the picture, each with whether Pillow follows the same rule."""
    picture = Picture(kind, depth)
    first = picture.rows[3][4]
    if kind == GREY:
        return [("hit", struct.pack(">H", first[0]), depth == 8)]
    if kind == COLOUR:
        whole = struct.pack(">HHH", *first)
        if depth == 8:
            return [("hit", whole, True)]
        low = b"".join(bytes((0, sample >> 8)) for sample in first)
        return [("high-bytes", whole, False), ("low-bytes", low, False)]
    table = bytes((0, 128, 255, 17, 1, 254))
    return [("three", table[:3], True), ("full", (table * 43)[:2**depth], True)]


def write_legal(ledger):
    for kind, depths in LEGAL.items():
        for depth in depths:
            for interlace in (0, 1):
                for filtering in range(MIXED + 1):
                    word = f"{'adam7' if interlace else 'plain'}-{'mixed' if filtering == MIXED else filtering}"
                    name = f"{NAMES[kind]}-{depth}-{word}"
                    ledger.good(name, Picture(kind, depth, interlace=interlace, filtering=filtering), pillow=True)
                    if kind in (GREY, COLOUR, PALETTE):
                        for rule, trns, pillow in transparencies(kind, depth):
                            picture = Picture(kind, depth, interlace=interlace, filtering=filtering)
                            picture.trns = trns
                            ledger.good(f"{name}-trns-{rule}", picture, pillow=pillow)


def write_sizes(ledger):
    for width, height in ((1, 1), (1, 7), (1, 8), (2, 5), (3, 1), (5, 2), (8, 8), (16, 3), (33, 17)):
        for kind, depth in ((GREY, 1), (PALETTE, 4), (COLOUR, 8), (COLOUR_ALPHA, 16)):
            for interlace in (0, 1):
                picture = Picture(kind, depth, width, height, interlace, MIXED)
                word = "adam7" if interlace else "plain"
                ledger.good(f"size-{width}x{height}-{NAMES[kind]}-{depth}-{word}", picture, pillow=True)


def write_chunks(ledger):
    colour = Picture(COLOUR, 8)
    palette = Picture(PALETTE, 4)
    grey = Picture(GREY, 8)
    data = zlib.compress(colour.raw(), 9)
    end = chunk(b"IEND", b"")
    text = chunk(b"tEXt", b"Title\0a picture")

    ledger.good("gamma-is-not-applied", colour, colour.png([chunk(b"gAMA", struct.pack(">I", 220000))]))
    ledger.good("background-is-not-used", colour, colour.png([chunk(b"bKGD", bytes(6))]))
    ledger.good("unknown-critical-chunk-is-read-past", colour, colour.png([chunk(b"ABCD", b"abc")]))
    ledger.good("text-between-data-and-end", colour, colour.png(between=[text]))
    ledger.good("bytes-behind-the-end", colour, colour.png() + b"anything")
    ledger.good("end-with-contents", colour, colour.png()[:-12] + chunk(b"IEND", b"late"))
    ledger.good("data-in-many-chunks", colour,
                colour.png()[:33] + b"".join(chunk(b"IDAT", data[i:i + 1]) for i in range(len(data))) + end)
    ledger.good("data-chunks-with-others-between", colour,
                colour.png()[:33] + chunk(b"IDAT", data[:9]) + text + chunk(b"IDAT", b"") + chunk(b"IDAT", data[9:]) + end)
    ledger.good("header-behind-the-data", colour, SIGNATURE + chunk(b"IDAT", data) + chunk(b"IHDR", colour.ihdr()) + end)
    ledger.good("header-longer-than-its-fields", colour, colour.png(ihdr=colour.ihdr() + b"\x07"))
    ledger.good("last-header-counts", colour, colour.png([chunk(b"IHDR", colour.ihdr())], ihdr=grey.ihdr()))
    ledger.good("palette-in-a-colour-picture", colour, colour.png([chunk(b"PLTE", bytes(30))]))
    ledger.good("palette-of-any-length-in-a-grey-picture", grey, grey.png([chunk(b"PLTE", bytes(100))]))
    ledger.good("empty-palette-chunk", palette, palette.png([chunk(b"PLTE", b"")]))
    ledger.good("palette-behind-the-data", palette, palette_last(palette))
    ledger.good("palette-of-300-entries", palette, Picture.png(with_palette(palette, palette.palette + [(1, 2, 3)] * 284)))

    ledger.bad("palette-of-100-bytes", colour.png([chunk(b"PLTE", bytes(100))]))
    ledger.bad("palette-of-one-byte", replaced(palette, b"PLTE", chunk(b"PLTE", b"\x01")))
    ledger.bad("sample-beyond-the-palette", Picture.png(with_palette(palette, palette.palette[:3])))
    ledger.bad("chunk-past-the-end", colour.png()[:-12] + struct.pack(">I", 100) + b"tEXt" + bytes(20))
    ledger.bad("chunk-of-4-gigabytes", colour.png()[:-12] + struct.pack(">I", 0xFFFFFFFF) + b"tEXt" + bytes(20))
    ledger.bad("chunk-that-passes-the-end-by-its-checksum", colour.png()[:-12] + chunk(b"tEXt", b"abcd")[:-1])
    ledger.bad("no-end", colour.png()[:-12])
    ledger.bad("end-without-checksum", colour.png()[:-4])
    ledger.bad("no-data", SIGNATURE + chunk(b"IHDR", colour.ihdr()) + text + text + end)
    ledger.bad("empty-data", SIGNATURE + chunk(b"IHDR", colour.ihdr()) + text + chunk(b"IDAT", b"") + end)
    ledger.bad("no-header", SIGNATURE + chunk(b"IDAT", data) + end)
    ledger.bad("signature-alone", SIGNATURE + b"\0" * 49)
    ledger.bad("signature-with-its-line-end-changed", colour.png().replace(b"\r\n", b"\n", 1))


def with_palette(picture, entries):
    changed = Picture(picture.kind, picture.depth)
    changed.palette = entries
    return changed


def palette_last(picture):
    parts = [SIGNATURE, chunk(b"IHDR", picture.ihdr()), chunk(b"IDAT", zlib.compress(picture.raw()))]
    return b"".join(parts + [chunk(b"PLTE", picture.plte()), chunk(b"IEND", b"")])


def replaced(picture, kind, new):
    """The file with its first chunk of that kind replaced."""
    data = picture.png()
    at = data.index(kind) - 4
    length = struct.unpack(">I", data[at:at + 4])[0]
    return data[:at] + new + data[at + 12 + length:]


def write_checksums(ledger):
    picture = Picture(PALETTE, 8)
    picture.trns = bytes((9, 0, 200))
    contents = {b"IHDR": picture.ihdr(), b"PLTE": picture.plte(), b"tRNS": picture.trns,
                b"IDAT": zlib.compress(picture.raw(), 9)}
    for kind, data in contents.items():
        wrong = chunk(kind, data, zlib.crc32(kind + data) ^ 0x40)
        ledger.good(f"bad-checksum-{kind.decode().lower()}", picture, replaced(picture, kind, wrong), with_zlib="BAD")
    ledger.good("bad-checksum-text", picture, picture.png([chunk(b"tEXt", b"a\0b", 1)]))
    ledger.good("bad-checksum-end", picture, picture.png()[:-4] + b"\0\0\0\0")
    ledger.good("bad-checksum-of-an-empty-chunk", picture, picture.png([chunk(b"tRNS", b"", 1)]))
    data = contents[b"IDAT"]
    pieces = chunk(b"IDAT", data[:20]) + chunk(b"IDAT", data[20:], 7)
    ledger.good("bad-checksum-of-the-second-piece", picture, replaced(picture, b"IDAT", pieces), with_zlib="BAD")
    grey = Picture(GREY, 8)
    ledger.good("bad-checksum-of-a-palette-not-used", grey, grey.png([chunk(b"PLTE", bytes(3), 1)]), with_zlib="BAD")


def write_headers(ledger):
    picture = Picture(COLOUR, 8)

    def header(**fields):
        values = {"width": 9, "height": 7, "depth": 8, "kind": 2, "compression": 0, "filter": 0, "interlace": 0}
        return struct.pack(">IIBBBBB", *(values | fields).values())

    cases = {"width-zero": {"width": 0}, "height-zero": {"height": 0}, "width-negative": {"width": 0x80000009},
             "height-negative": {"height": 0xFFFFFFFF}, "depth-0": {"depth": 0}, "depth-3": {"depth": 3},
             "depth-32": {"depth": 32}, "type-1": {"kind": 1}, "type-5": {"kind": 5}, "type-7": {"kind": 7},
             "compression-1": {"compression": 1}, "filter-method-1": {"filter": 1}, "interlace-2": {"interlace": 2},
             "size-of-data-over-32-bits": {"width": 0x7FFFFFFF, "height": 0x7FFFFFFF},
             "bits-of-a-row-over-32-bits": {"width": 0x4000000, "height": 1, "depth": 16, "kind": 6},
             "one-row-too-many-for-a-gigabyte": {"width": 16384, "height": 16385, "depth": 1, "kind": 0},
             "one-row-too-many-for-a-gigabyte-adam7": {"width": 16384, "height": 16385, "depth": 1, "kind": 0,
                                                       "interlace": 1}}
    # The files are too small for their pixels, and the last one has more pixels than any picture may have.
    cases |= {"few-bytes-for-many-pixels": {"width": 4096, "height": 4097},
              "few-bytes-for-many-pixels-adam7": {"width": 4096, "height": 4097, "interlace": 1}}
    for name, fields in cases.items():
        ledger.bad(f"header-{name}", picture.png(ihdr=header(**fields)))
    many = zlib.compress(bytes(8193 * 1025), 9)
    ledger.bad("too-many-pixels-all-there",
               picture.png(ihdr=header(width=8192, height=8193, depth=1, kind=0), data=many))
    ledger.bad("header-of-12-bytes", picture.png(ihdr=header()[:12]))
    for kind, depth in ((COLOUR, 1), (COLOUR, 2), (COLOUR, 4), (GREY_ALPHA, 1), (GREY_ALPHA, 2), (GREY_ALPHA, 4),
                        (COLOUR_ALPHA, 1), (COLOUR_ALPHA, 2), (COLOUR_ALPHA, 4)):
        for interlace in (0, 1):
            forbidden = Picture(kind, depth, interlace=interlace, filtering=MIXED)
            name = f"forbidden-{NAMES[kind]}-{depth}-{'adam7' if interlace else 'plain'}-draws-nothing"
            ledger.good(name, forbidden, colours=[[(0, 0, 0, 0)] * 9] * 7)
    sixteen = Picture(PALETTE, 16, entries=256)
    ledger.bad("forbidden-palette-16-has-no-look-up", sixteen.png())


def write_transparency(ledger):
    for kind, depth, trns in ((GREY, 8, b"\x01"), (GREY, 16, b"\x01"), (COLOUR, 8, bytes(5)), (COLOUR, 16, bytes(5))):
        picture = Picture(kind, depth)
        picture.trns = trns
        ledger.good(f"trns-too-short-{NAMES[kind]}-{depth}", picture)
    for kind in (GREY_ALPHA, COLOUR_ALPHA):
        picture = Picture(kind, 8)
        ledger.good(f"trns-ignored-{NAMES[kind]}", picture, picture.png([chunk(b"tRNS", bytes(6))]))
    for depth in (1, 2, 4, 8):
        picture = Picture(GREY, depth)
        picture.trns = bytes((0x5A, picture.rows[2][2][0] | (0xFF << depth & 0xFF)))
        ledger.good(f"trns-grey-{depth}-with-bits-above-the-depth", picture)
    grey = Picture(GREY, 16)
    grey.rows[0][:3] = [(0x1234,), (0x1235,), (0x3412,)]
    grey.trns = b"\x12\x34"
    ledger.good("trns-grey-16-compares-whole-samples", grey)
    colour = Picture(COLOUR, 16)
    colour.rows[0][:3] = [(0x1111, 0x2222, 0x3333), (0x11FF, 0x22FF, 0x33FF), (0x1211, 0x2222, 0x3333)]
    colour.trns = struct.pack(">HHH", 0x1111, 0x2222, 0x3333)
    ledger.good("trns-colour-16-takes-near-colours-along", colour)
    palette = Picture(PALETTE, 4)
    palette.trns = bytes(range(255, 0, -1)) + bytes(45)
    ledger.good("trns-palette-of-300-entries", palette)
    early = Picture(PALETTE, 2)
    parts = [chunk(b"tRNS", b"\0\x80"), chunk(b"IHDR", early.ihdr()), chunk(b"PLTE", early.plte()),
             chunk(b"IDAT", zlib.compress(early.raw())), chunk(b"IEND", b"")]
    # Before the header the picture counts as grey without depth: no colour is named, but the contents are kept.
    ledger.good("trns-before-the-header", early, SIGNATURE + b"".join(parts), alpha=True)


def write_palettes(ledger):
    for depth in (1, 2, 4, 8):
        picture = Picture(PALETTE, depth)
        picture.palette = None
        colours = [[(255,) * 4 if depth == 1 and pixel[0] == 1 else (0, 0, 0, 255) for pixel in row]
                   for row in picture.rows]
        ledger.good(f"palette-missing-{depth}", picture, colours=colours)
    early = Picture(PALETTE, 1)
    data = SIGNATURE + chunk(b"PLTE", early.plte()) + replaced(early, b"PLTE", b"")[8:]
    colours = [[(255,) * 4 if pixel[0] else (0, 0, 0, 255) for pixel in row] for row in early.rows]
    ledger.good("palette-before-the-header-is-ignored", early, data, colours)
    # A later header turns a picture that already has a palette into a grey one: its samples are looked up in the
    # palette.
    grey = Picture(GREY, 8)
    entries = [((i * 7) & 255, (i * 5) & 255, i) for i in range(256)]
    colours = [[entries[pixel[0]] + (255,) for pixel in row] for row in grey.rows]
    palette = b"".join(bytes(entry) for entry in entries)
    start = chunk(b"IHDR", Picture(PALETTE, 8).ihdr()) + chunk(b"PLTE", palette)
    ledger.good("palette-kept-over-a-second-header", grey, SIGNATURE + start + grey.png()[8:], colours)


def compressed(raw, level=9, strategy=zlib.Z_DEFAULT_STRATEGY):
    packer = zlib.compressobj(level, zlib.DEFLATED, 15, 9, strategy)
    return packer.compress(raw) + packer.flush()


def write_data(ledger):
    picture = Picture(COLOUR_ALPHA, 8, filtering=MIXED)
    raw = picture.raw()
    data = compressed(raw)
    for name, level, strategy in (("stored", 0, zlib.Z_DEFAULT_STRATEGY), ("fixed", 9, zlib.Z_FIXED),
                                  ("huffman-only", 9, zlib.Z_HUFFMAN_ONLY), ("runs", 9, zlib.Z_RLE)):
        ledger.good(f"data-{name}", picture, picture.png(data=compressed(raw, level, strategy)), pillow=True)
    flushed = zlib.compressobj(9)
    parts = [flushed.compress(raw[i:i + 50]) + flushed.flush(zlib.Z_FULL_FLUSH) for i in range(0, len(raw), 50)]
    ledger.good("data-in-many-blocks", picture, picture.png(data=b"".join(parts) + flushed.flush()), pillow=True)
    ledger.good("data-with-a-wrong-adler", picture, picture.png(data=data[:-4] + b"abcd"))
    ledger.good("data-without-adler", picture, picture.png(data=data[:-4]))
    ledger.good("data-with-a-wrong-first-byte", picture, picture.png(data=b"\x77" + data[1:]))
    ledger.good("data-cut-in-their-adler", picture, picture.png(data=data[:-2]))
    ledger.good("data-with-bytes-behind-them", picture, picture.png(data=data + b"anything"))
    ledger.good("data-of-a-window-too-small", picture, picture.png(data=b"\x08\x1d" + data[2:]))
    # The library refuses a stream that requires a dictionary. Our own Inflate skips the header's two bytes and reads
    # the dictionary's identifier as a block.
    ledger.good("data-that-ask-for-a-dictionary-without-naming-it", picture, picture.png(data=b"\x78\xbb" + data[2:]))
    ledger.bad("data-with-a-dictionary", picture.png(data=with_dictionary(raw)))
    endless = zlib.compressobj(9)
    ledger.good("data-without-a-last-block", picture,
                picture.png(data=endless.compress(raw) + endless.flush(zlib.Z_SYNC_FLUSH)))
    ledger.good("data-longer-than-the-picture", picture, picture.png(data=compressed(raw + bytes(range(200)))))
    ledger.good("data-broken-behind-the-picture", picture,
                picture.png(data=compressed(raw + bytes(50), 0)[:2 + 5 + len(raw) + 3]))
    nothing = [(0, 0, 0, 0)] * 9
    for rows in (0, 3):
        colours = [row if y < rows else nothing for y, row in enumerate(colours_of(picture))]
        ledger.good(f"data-of-{rows}-rows-only", picture, picture.png(data=compressed(raw[:rows * 37])), colours)
    plain = Picture(COLOUR_ALPHA, 8)
    colours = [row if y < 3 else row[:5] + nothing[5:] if y == 3 else nothing for y, row in enumerate(colours_of(plain))]
    ledger.good("data-that-end-within-a-row", plain, plain.png(data=compressed(plain.raw()[:3 * 37 + 1 + 20])), colours)
    adam7 = Picture(COLOUR_ALPHA, 8, interlace=1)
    first = adam7.raw()[:(2 * 4 + 1) + (1 * 4 + 1)]  # two pixels and one: the passes that begin with columns 0 and 4
    colours = [[colour if y == 0 and x % 4 == 0 else nothing[0] for x, colour in enumerate(row)]
               for y, row in enumerate(colours_of(adam7))]
    ledger.good("data-of-two-passes-only", adam7, adam7.png(data=compressed(first)), colours)
    opaque = Picture(COLOUR, 8)
    colours = [row if y < 2 else [(0, 0, 0, 255)] * 9 for y, row in enumerate(colours_of(opaque))]
    ledger.good("data-that-are-missing-count-as-zeros", opaque, opaque.png(data=compressed(opaque.raw()[:56])), colours)

    ledger.bad("data-cut-in-half", picture.png(data=data[:len(data) // 2]))
    ledger.bad("data-of-one-byte", picture.png(data=data[:1]))
    ledger.bad("data-of-a-header-alone", picture.png(data=data[:2]))
    ledger.bad("data-stored-with-a-wrong-complement", picture.png(data=flip(compressed(raw, 0), 5)))
    ledger.bad("data-block-type-3", picture.png(data=data[:2] + b"\x07" + data[3:]))
    ledger.bad("data-distance-before-the-start", picture.png(data=b"\x78\x9c\x03\x02\x00"))
    for filtering in (5, 6, 255):
        ledger.bad(f"filter-{filtering}", picture.png(data=compressed(bytes([filtering]) + raw[1:])))
    late = bytearray(raw)
    late[6 * 37] = 5
    ledger.bad("filter-5-in-the-last-row", picture.png(data=compressed(bytes(late))))
    adam7 = bytearray(Picture(COLOUR_ALPHA, 8, interlace=1).raw())
    adam7[9] = 5
    ledger.bad("filter-5-in-the-second-pass", Picture(COLOUR_ALPHA, 8, interlace=1).png(data=compressed(bytes(adam7))))


def with_dictionary(raw):
    """A stream with a dictionary whose identifier begins like a block of a type that does not exist."""
    dictionary = next(word for word in (bytes([i]) * 40 for i in range(1, 256)) if zlib.adler32(word) >> 24 & 6 == 6)
    packer = zlib.compressobj(9, zlib.DEFLATED, 15, 9, zlib.Z_DEFAULT_STRATEGY, dictionary)
    return packer.compress(raw) + packer.flush()


def flip(data, at):
    return data[:at] + bytes([data[at] ^ 0xFF]) + data[at + 1:]


def main():
    ledger = Ledger()
    for part in (write_legal, write_sizes, write_chunks, write_checksums, write_headers, write_transparency,
                 write_palettes, write_data):
        part(ledger)
    ledger.close()
    print(f"{len(ledger.lines)} files")


if __name__ == "__main__":
    main()
