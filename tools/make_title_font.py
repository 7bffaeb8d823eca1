#!/usr/bin/env python3
"""Makes the font of the themes' titles: the letters of a given font in a larger em.

    make_title_font.py SOURCE TARGET

The jukebox sets the lines of a title as many pixels apart as the font has points, which is less than the font's own line
height. In a larger em the same letters are smaller at the same size; a theme that asks for a larger size gets letters as
large as before, with more room between the lines.

The tables are those of OpenType (ISO/IEC 14496-22): "head" holds the units per em, "name" the names.
"""

import struct
import sys

# The size of the new em in that of the source.
LARGER = 1.15
FAMILY = "Vantorix Titles"
# Names by their number: family, style, identifier, full name, PostScript name. The others stay, among them copyright and
# licence.
NAMES = {1: FAMILY, 2: "Regular", 3: FAMILY, 4: FAMILY, 6: FAMILY.replace(" ", "")}
# The family and the style of a program that knows more than four styles; the trademark.
DROPPED = {7, 16, 17}
HEADER, ENTRY = ">4sHHHH", ">4sIII"
CHECKSUM_OF_FILE = 0xB1B0AFBA


def read_tables(font):
    """The kind of outlines, and the tables by their tag."""
    kind, count = struct.unpack_from(">4sH", font)
    tables = {}
    for i in range(count):
        tag, _, offset, length = struct.unpack_from(ENTRY, font, struct.calcsize(HEADER) + i * struct.calcsize(ENTRY))
        if offset + length > len(font):
            raise ValueError(f"the table {tag.decode('latin-1')} extends past the end of the file")
        tables[tag] = font[offset : offset + length]
    return kind, tables


def with_larger_em(head):
    """The table "head" with the new em, and without the checksum of the file."""
    (units,) = struct.unpack_from(">H", head, 18)
    new = bytearray(head)
    struct.pack_into(">H", new, 18, round(units * LARGER))
    struct.pack_into(">I", new, 8, 0)
    return bytes(new)


def with_own_names(name):
    """The table "name" with the names of the new font."""
    _, count, strings = struct.unpack_from(">HHH", name)
    records, heap = [], b""
    for i in range(count):
        *place, number, length, offset = struct.unpack_from(">6H", name, 6 + 12 * i)
        if number in DROPPED:
            continue
        text = name[strings + offset : strings + offset + length]
        if number in NAMES:
            # Only the Macintosh platform, 1, has single bytes.
            text = NAMES[number].encode("mac_roman" if place[0] == 1 else "utf-16-be")
        records.append(struct.pack(">6H", *place, number, len(text), len(heap)))
        heap += text
    return struct.pack(">HHH", 0, len(records), 6 + 12 * len(records)) + b"".join(records) + heap


def padded(data):
    return data + bytes(-len(data) % 4)


def checksum(data):
    words = padded(data)
    return sum(struct.unpack(f">{len(words) // 4}I", words)) & 0xFFFFFFFF


def write_tables(kind, tables):
    power = len(tables).bit_length() - 1
    header = struct.pack(HEADER, kind, len(tables), 16 << power, power, 16 * (len(tables) - (1 << power)))
    directory, body = b"", b""
    start = len(header) + len(tables) * struct.calcsize(ENTRY)
    places = {}
    for tag in sorted(tables):
        places[tag] = start + len(body)
        directory += struct.pack(ENTRY, tag, checksum(tables[tag]), places[tag], len(tables[tag]))
        body += padded(tables[tag])
    font = bytearray(header + directory + body)
    struct.pack_into(">I", font, places[b"head"] + 8, (CHECKSUM_OF_FILE - checksum(bytes(font))) & 0xFFFFFFFF)
    return bytes(font)


def title_font(source):
    """The bytes of the new font; ValueError, KeyError or struct.error if the source is not a font."""
    kind, tables = read_tables(source)
    tables[b"head"] = with_larger_em(tables[b"head"])
    tables[b"name"] = with_own_names(tables[b"name"])
    # A signature of the source does not fit the new font.
    tables.pop(b"DSIG", None)
    return write_tables(kind, tables)


def main():
    if len(sys.argv) != 3:
        sys.exit("usage: make_title_font.py SOURCE TARGET")
    source, target = sys.argv[1:]
    try:
        with open(source, "rb") as file:
            made = title_font(file.read())
        with open(target, "wb") as file:
            file.write(made)
    except (OSError, ValueError, KeyError, struct.error) as error:
        sys.exit(f"make_title_font.py: {source}: {error}")


if __name__ == "__main__":
    main()
