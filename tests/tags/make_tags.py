#!/usr/bin/python3
"""Writes the tag fixtures of this folder and their ledger. Run it from any folder, without arguments. The output is the
same on every run.

Each file is built here byte by byte. The expected result comes from tag_rules.py, an implementation of the rules that
is independent of the reader under test. If a case names the pictures that it contains, they must be found; and where
the rules are those of the formats ("standard"), mutagen must find the same pictures.

ledger.jsonl has one line for each file: its name and "images", the answer of `tags` at the console, or "error" or
"stop", the number of the error that ends the reading or the program.
"""

import io
import json
import os
import struct

import mutagen.asf
import mutagen.id3

import tag_rules

FOLDER = os.path.join(os.path.dirname(os.path.abspath(__file__)), "files")
PADDING = bytes(24)
AUDIO = b"\xFF\xFB\x90\x64" + bytes(60)


def data_of(seed, size=48):
    """Bytes in place of a picture: none is 0 or 255, and they differ for other seeds."""
    return bytes((seed * 37 + i * 11) % 253 + 1 for i in range(size))


def wide(text, order="<"):
    mark = {"<": b"\xFF\xFE", ">": b"\xFE\xFF", "": b""}[order]
    return mark + text.encode("utf-16-be" if order == ">" else "utf-16-le") + b"\0\0"


def sync_safe(value):
    return bytes(value >> shift & 127 for shift in (21, 14, 7, 0))


def unsync(data):
    result = bytearray()
    for i, byte in enumerate(data):
        result.append(byte)
        if byte == 255 and (i + 1 == len(data) or data[i + 1] == 0 or data[i + 1] >= 0xE0):
            result.append(0)
    return bytes(result)


# --- ID3v2 --------------------------------------------------------------------------------------------------------------


def id3(version, body, flags=0, size=None, revision=0, audio=AUDIO, footer=False):
    size = len(body) if size is None else size
    head = bytes([version, revision, flags]) + sync_safe(size)
    return b"ID3" + head + body + (b"3DI" + head if footer else b"") + audio


def frame(version, name, body, flags=(0, 0), size=None):
    size = len(body) if size is None else size
    if version == 2:
        return name + struct.pack(">I", size)[1:] + body
    return name + (struct.pack(">I", size) if version == 3 else sync_safe(size)) + bytes(flags) + body


def text_frame(version, text="A song"):
    return frame(version, b"TT2" if version == 2 else b"TIT2", b"\0" + text.encode("latin-1"))


def picture_body(version, data, category=3, encoding=0, description=b"\0", mime=None):
    if version == 2:
        return bytes([encoding]) + (mime or b"JPG") + bytes([category]) + description + data
    return bytes([encoding]) + (b"image/jpeg" if mime is None else mime) + b"\0" + bytes([category]) + description + data


def picture(version, data, flags=(0, 0), size=None, **body):
    name = b"PIC" if version == 2 else b"APIC"
    return frame(version, name, picture_body(version, data, **body), flags, size)


# --- ASF ----------------------------------------------------------------------------------------------------------------


def asf_object(guid, body, size=None, high=0):
    return guid + struct.pack("<II", (24 + len(body) if size is None else size) & 0xFFFFFFFF, high) + body


def asf(objects, count=None, size=None, high=0, reserved=2, audio=AUDIO):
    body = b"".join(objects)
    head = struct.pack("<II", 30 + len(body) if size is None else size, high)
    return (tag_rules.ASF_HEADER + head + struct.pack("<i", len(objects) if count is None else count) +
            bytes([1, reserved]) + body + audio)


def value(data, category=3, mime="image/jpeg", description="", length=None):
    head = bytes([category]) + struct.pack("<i", len(data) if length is None else length)
    return head + wide(mime, "") + wide(description, "") + data


def descriptor(name, kind, data, length=None):
    name = name if isinstance(name, bytes) else wide(name, "")
    return (struct.pack("<H", len(name)) + name +
            struct.pack("<HH", kind, len(data) if length is None else length) + data)


def content(*descriptors, count=None, size=None, high=0):
    count = len(descriptors) if count is None else count
    return asf_object(tag_rules.CONTENT, struct.pack("<H", count) + b"".join(descriptors), size, high)


def record(name, kind, data, length=None):
    name = name if isinstance(name, bytes) else wide(name, "")
    return struct.pack("<HHHHI", 0, 0, len(name), kind, (len(data) if length is None else length) & 0xFFFFFFFF) + name + data


def library(*records, count=None, size=None, tail=b""):
    count = len(records) if count is None else count
    return asf_object(tag_rules.LIBRARY, struct.pack("<H", count) + b"".join(records) + tail, size)


def extension(*objects, mark=tag_rules.EXTENSION_MARK, length=None, size=None):
    body = b"".join(objects)
    length = len(body) if length is None else length
    return asf_object(tag_rules.EXTENSION, mark + struct.pack("<HI", 6, length) + body, size)


PROPERTIES = asf_object(bytes.fromhex("A1DCAB8C47A9CF118EE400C00C205365"), bytes(80))
OTHER = asf_object(bytes(range(16)), b"something else")
END = asf_object(bytes(range(1, 17)), bytes(16))  # puts the last object of interest before the limit


# --- The cases ----------------------------------------------------------------------------------------------------------


class Ledger:
    def __init__(self):
        self.lines = []

    def add(self, name, file, planted=None, standard=False):
        """`planted`: (format, category, bytes) of each picture that must be found."""
        found = tag_rules.expected(file)
        if planted is not None:
            expected = [tag_rules.described(tag_rules.Tag(data), (mime, category, 0, len(data)))
                        for mime, category, data in planted]
            assert found == {"images": expected}, (name, found, expected)
        if standard:
            assert pictures_by_mutagen(name, file) == [(category, data) for _, category, data in planted], name
        with open(os.path.join(FOLDER, name), "wb") as out:
            out.write(file)
        self.lines.append(json.dumps({"file": name, **found}, sort_keys=True))


def pictures_by_mutagen(name, file):
    if name.endswith(".wma"):
        values = mutagen.asf.ASF(io.BytesIO(file)).tags.get("WM/Picture", [])
        return [(v.value[0], picture_in_value(v.value)) for v in values]
    tags = EveryFrame()
    tags.load(io.BytesIO(file), translate=False)
    return [(int(f.type), f.data) for f in tags.every if isinstance(f, (mutagen.id3.APIC, mutagen.id3.PIC))]


class EveryFrame(mutagen.id3.ID3):
    """Keeps all frames in a list; the dictionary would keep only one picture for each description."""

    def __init__(self):
        self.every = []
        super().__init__()

    def _add(self, frame_read, _):
        self.every.append(frame_read)


def picture_in_value(data):
    place = 5
    for _ in range(2):
        while data[place:place + 2] != b"\0\0":
            place += 2
        place += 2
    return data[place:]


JPEG = "image/jpeg"


def all_versions(ledger):
    for version in (2, 3, 4):
        mime = "JPG" if version == 2 else JPEG
        name = "id3v2%d-" % version

        def add(case, body, planted, standard=True, of=version, prefix=name, **tag):
            ledger.add(prefix + case + ".mp3", id3(of, body, **tag), planted, standard)

        one, two = data_of(version), data_of(version + 10, 70)
        add("one", text_frame(version) + picture(version, one) + PADDING, [(mime, 3, one)])
        add("two", picture(version, one) + text_frame(version) + picture(version, two, category=0) + PADDING,
            [(mime, 3, one), (mime, 0, two)])
        types = [(mime, kind, data_of(kind)) for kind in range(21)]
        add("every-type", b"".join(picture(version, d, category=k) for _, k, d in types) + PADDING, types)
        beyond = [(mime, kind, data_of(kind)) for kind in (21, 100, 255)]
        add("types-beyond", b"".join(picture(version, d, category=k) for _, k, d in beyond) + PADDING, beyond, False)
        add("described", picture(version, one, description=b"Front\0") + PADDING, [(mime, 3, one)])
        add("no-pictures", text_frame(version) + PADDING, [])
        add("padding-alone", bytes(40), [])
        add("revision-254", picture(version, one) + PADDING, [(mime, 3, one)], revision=254, standard=False)
        add("revision-255", picture(version, one) + PADDING, [], revision=255, standard=False)
        # The ten missing bytes are the size of a frame header in 2.3 and 2.4, and more than one in 2.2.
        add("without-padding", picture(version, one), [] if version == 2 else [(mime, 3, one[:-10])], standard=False)
        add("without-padding-short", picture(version, one[:8]), None, standard=False)
        add("encoding-4", picture(version, one, encoding=4) + PADDING, [], standard=False)
        add("encoding-255", picture(version, one, encoding=255) + PADDING, [], standard=False)
        add("frame-of-0-bytes", frame(version, b"PIC" if version == 2 else b"APIC", b"") + picture(version, one) + PADDING,
            [(mime, 3, one)], standard=False)
        add("an-unknown-frame", frame(version, b"ZZ9" if version == 2 else b"ZZZ9", b"?" * 33) +
            picture(version, one) + PADDING, [(mime, 3, one)])
        add("a-small-letter-ends-it", picture(version, one) +
            frame(version, b"Tx2" if version == 2 else b"TIt2", b"??") + picture(version, two) + PADDING,
            [(mime, 3, one)], standard=False)
        add("longer-than-the-tag", picture(version, one) + picture(version, two, size=5000) + PADDING, [(mime, 3, one)],
            standard=False)
        add("description-without-end", picture(version, one) +
            picture(version, b"x" * 30, description=b"y") + b"z" * 30, None, standard=False)
        add("description-past-the-frame", picture(version, one) +
            picture(version, b"", description=b"y") + text_frame(version) + PADDING, None, standard=False)
        add("wide-description-without-end", picture(version, one) +
            picture(version, b"xx" * 15, encoding=1, description=b"y") + b"zz" * 30, None, standard=False)
        add("trailing-letter", picture(version, one) + b"A", None, standard=False)
        add("size-past-the-file", picture(version, one) + PADDING, [], size=2000, standard=False)
        add("size-of-the-file", picture(version, one) + PADDING, [(mime, 3, one)], audio=bytes(0),
            size=len(picture(version, one) + PADDING) + 10, standard=False)
        for size in (0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 13, 16, 19, 20, 25, 29, 30):
            add("size-%d" % size, picture(version, one) + PADDING, None, size=size, standard=False)
        full = id3(version, text_frame(version) + picture(version, one) + picture(version, two) + PADDING)
        for length in range(10, len(full) - len(AUDIO), 9):
            cut = full[:6] + sync_safe(length) + full[10:]
            ledger.add("%scut-at-%d.mp3" % (name, length), cut)
        odd = bytes([255, 0, 1, 255, 224, 2, 255, 0, 0, 255, 255, 0]) + one
        add("unsynchronised", unsync(text_frame(version) + picture(version, odd)) + PADDING if version == 2 else
            unsync_frames(version, odd) + PADDING, [(mime, 3, odd)], flags=0x80, standard=version != 4)
        add("unsynchronised-all-bytes", unsync(picture(version, bytes([255, 0] * 30))) + PADDING,
            None, flags=0x80, standard=False)
        add("unsynchronised-for-nothing", picture(version, one) + PADDING, [(mime, 3, one)], flags=0x80, standard=version != 4)
        add("unsynchronised-without-padding", unsync(picture(version, odd)), None, flags=0x80, standard=False)
        add("every-flag", picture(version, one) + PADDING, None, flags=0xFF, standard=False)


def unsync_frames(version, data):
    """Frames of a tag that is unsynchronised as a whole: their sizes count the bytes before unsynchronisation."""
    return unsync(text_frame(version) + picture(version, data))


def header_flags(ledger):
    """Every flag of the tag's header, alone and combined with the other defined flags, with a matching body."""
    for version in (2, 3, 4):
        mime, one = "JPG" if version == 2 else JPEG, data_of(20 + version)
        found = [(mime, 3, one)]
        for flags in [*range(0x10, 0x100, 0x10), 1, 2, 4, 8]:
            extended, unsynchronised = flags & 0x40, flags & 0x80
            body = text_frame(version) + picture(version, one) + PADDING
            if extended and version > 2:
                body = (struct.pack(">IHI", 10, 0, 0) if version == 3 else sync_safe(6) + b"\1\0") + body
            planted = found
            if version == 2 and extended or version == 3 and extended and unsynchronised:
                planted = []
            elif version == 4 and extended and unsynchronised:
                planted = None  # the area passes the end of the tag
            ledger.add("id3v2%d-flags-%02x.mp3" % (version, flags),
                       id3(version, body, flags=flags, footer=version == 4 and flags & 0x10), planted)


def version2(ledger):
    one, two = data_of(1), data_of(2)

    def add(case, body, planted, standard=False, **tag):
        ledger.add("id3v22-" + case + ".mp3", id3(2, body, **tag), planted, standard)

    add("compressed", picture(2, one) + PADDING, [], flags=0x40)
    add("wide-is-a-byte-late", picture(2, one, encoding=1, description=wide("Cover")) + PADDING, [("JPG", 3, one[1:])])
    add("wide-and-empty", picture(2, one, encoding=1, description=b"\0\0") + PADDING, [("JPG", 3, one[1:])])
    add("encoding-2", picture(2, one, encoding=2, description=wide("x", "")) + PADDING, [])
    add("encoding-3", picture(2, one, encoding=3) + PADDING, [])
    add("png", picture(2, one, mime=b"PNG") + PADDING, [("PNG", 3, one)], True)
    add("link", picture(2, b"http://x/y.jpg", mime=b"-->") + picture(2, two) + PADDING, [("JPG", 3, two)])
    add("nearly-a-link", picture(2, one, mime=b"-J-") + PADDING, [("-J-", 3, one)])
    add("format-of-one-letter", picture(2, one, mime=b"J\x01G") + PADDING, [("J", 3, one)])
    add("a-zero-in-the-name", picture(2, one) + b"P\0C" + bytes([0, 0, 2]) + b"??" + picture(2, two) + PADDING,
        [("JPG", 3, one)])
    add("length-behind-the-tag", picture(2, one) + b"ABC", None, size=10 + len(picture(2, one)) + 3)
    add("picture-header-behind-the-tag", b"PIC" + bytes([0, 0, 1]) + b"\0", None, size=17)
    add("one-byte-late-from-nothing", picture(2, b"", encoding=1, description=b"\0\0") + PADDING, None)


def version3(ledger):
    one, two = data_of(3), data_of(4)

    def add(case, body, planted, standard=False, **tag):
        ledger.add("id3v23-" + case + ".mp3", id3(3, body, **tag), planted, standard)

    for order, word in (("<", "little"), (">", "big"), ("", "bare")):
        add("wide-%s" % word, picture(3, one, encoding=1, description=wide("Cover", order)) + PADDING, [(JPEG, 3, one)],
            order != "")
    add("encoding-2", picture(3, one, encoding=2, description=wide("x", "")) + PADDING, [])
    add("encoding-3", picture(3, one, encoding=3) + PADDING, [])
    for flags in (0x80, 0x40, 0xC0, 0xFF):
        add("frame-flags-%02x" % flags, picture(3, one, flags=(0, flags)) + picture(3, two) + PADDING, [(JPEG, 3, two)])
    for flags in (0x3F, 0x1F, 0x20, 0x10, 0x08, 0x04, 0x02, 0x01):
        add("frame-flags-%02x" % flags, picture(3, one, flags=(0, flags)) + picture(3, two) + PADDING,
            [(JPEG, 3, one), (JPEG, 3, two)])
    add("status-flags", picture(3, one, flags=(0xE0, 0)) + PADDING, [(JPEG, 3, one)], True)
    for group in (0, 1, 2, 65):
        body = bytes([group]) + picture_body(3, one)
        add("group-%d" % group, frame(3, b"APIC", body, (0, 0x20)) + picture(3, two) + PADDING, None)
    for mime, planted in ((b"", [("", 3, one)]), (b"a", []), (b"ab", []), (b"abc", [("abc", 3, one)]), (b"-->", []),
                          (b"a-c", []), (b"--", []), (b"-ab", [("-ab", 3, one)]), (b"image/png", [("image/png", 3, one)]),
                          (b"image/\x01x", [("image/", 3, one)]), (b"IMAGE/JPEG", [("IMAGE/JPEG", 3, one)]),
                          (b"caf\xE9", [("caf\xE9", 3, one)])):
        label = "".join(chr(c) if 48 <= c < 123 and c != 92 and c != 96 and chr(c).isalnum() else "%02x" % c for c in mime)
        add("format-" + (label or "none"), picture(3, one, mime=mime) + PADDING, planted)
    add("zeros-in-names", picture(3, one) + frame(3, b"TP\0\0", b"x") + frame(3, b"A\0\0\0", b"x") + picture(3, two) +
        PADDING, [(JPEG, 3, one), (JPEG, 3, two)])
    crc = struct.pack(">IHI", 10, 0x8000, 0) + b"\1\2\3\4"
    add("extended-header", struct.pack(">IHI", 6, 0, 24) + picture(3, one) + PADDING, [], flags=0x40)
    add("extended-header-with-crc", crc + picture(3, one) + PADDING, [], flags=0x40)
    add("extended-header-of-10-counted", struct.pack(">IHI", 10, 0, 0) + picture(3, one) + PADDING, [(JPEG, 3, one)],
        flags=0x40)
    add("extended-header-negative", struct.pack(">iHI", -1, 0, 0) + picture(3, one) + PADDING, [], flags=0x40)
    add("extended-header-of-0", struct.pack(">IHI", 0, 0, 0) + picture(3, one) + PADDING, [], flags=0x40)
    add("extended-header-past-32-bits", struct.pack(">IHI", 0x7FFFFFFF, 0, 0) + picture(3, one) + PADDING, [], flags=0x40)
    add("extended-header-unsynchronised", struct.pack(">IHI", 10, 0, 0) + picture(3, one) + PADDING, [], flags=0xC0)
    for size in (0xFFFFFFFF, 0x80000000):
        add("length-%x" % size, picture(3, one) + b"TIT2" + struct.pack(">I", size) + b"\0\0" + picture(3, two) + PADDING,
            [(JPEG, 3, one)])
    add("length-7fffffff", picture(3, one) + picture(3, two, size=0x7FFFFFFF) + PADDING, [(JPEG, 3, one)])
    add("format-without-end", picture(3, one) + frame(3, b"APIC", b"\0" + b"i" * 60), None)
    add("frames-in-front-of-the-fault", picture(3, one) + picture(3, two) + b"TIT2" + PADDING,
        [(JPEG, 3, one), (JPEG, 3, two)], size=12 + len(picture(3, one) + picture(3, two)))


def version4(ledger):
    one, two = data_of(5), data_of(6)

    def add(case, body, planted, standard=False, **tag):
        ledger.add("id3v24-" + case + ".mp3", id3(4, body, **tag), planted, standard)

    for order, word in (("<", "little"), (">", "big"), ("", "bare")):
        add("wide-%s" % word, picture(4, one, encoding=1, description=wide("Cover", order)) + PADDING, [(JPEG, 3, one)],
            order != "")
    add("wide-without-mark", picture(4, one, encoding=2, description="Cover\0".encode("utf-16-be")) + PADDING,
        [(JPEG, 3, one)], True)
    add("utf-8", picture(4, one, encoding=3, description="Hülle\0".encode()) + PADDING, [(JPEG, 3, one)], True)
    for flags in (0x08, 0x04, 0x0C, 0xFF):
        add("frame-flags-%02x" % flags, picture(4, one, flags=(0, flags)) + picture(4, two) + PADDING, None)
    for flags in (0x80, 0x20, 0x10):
        add("frame-flags-%02x" % flags, picture(4, one, flags=(0, flags)) + PADDING, [(JPEG, 3, one)])
    add("status-flags", picture(4, one, flags=(0x70, 0)) + PADDING, [(JPEG, 3, one)], True)
    odd = bytes([255, 0, 1, 255, 224, 2, 255, 0, 0, 255, 255, 0]) + one
    body = unsync(picture_body(4, odd))
    # Removing the unsynchronisation of such a frame leaves a zero as the last byte of its area.
    add("frame-unsynchronised", frame(4, b"APIC", body, (0, 0x02)) + picture(4, two) + PADDING,
        [(JPEG, 3, odd[:-1] + b"\0"), (JPEG, 3, two)])
    add("frame-unsynchronised-for-nothing", picture(4, one, flags=(0, 0x02)) + picture(4, two) + PADDING,
        [(JPEG, 3, one), (JPEG, 3, two)])
    for group in (0, 1, 2, 3, 4, 65):
        add("group-%d" % group, frame(4, b"APIC", bytes([group]) + picture_body(4, one), (0, 0x40)) + picture(4, two) +
            PADDING, None)
    plain = picture_body(4, one)
    add("data-length", frame(4, b"APIC", sync_safe(len(plain)) + plain, (0, 0x01)) + picture(4, two) + PADDING, None)
    for flags in (0x01, 0x40, 0x41, 0x03, 0x42, 0x43):
        add("frame-flags-%02x-alone" % flags, picture(4, one, flags=(0, flags)) + picture(4, two) + PADDING,
            [(JPEG, 3, one + following(flags, picture(4, two))), (JPEG, 3, two)])
    add("data-length-unsynchronised", frame(4, b"APIC", sync_safe(len(odd)) + body, (0, 0x03)) + PADDING, None)
    extended = sync_safe(6) + b"\1\0"
    add("extended-header", extended + picture(4, one) + PADDING, [(JPEG, 3, one)], True, flags=0x40)
    with_crc = sync_safe(12) + b"\1\x20\5" + bytes([0, 1, 2, 3, 4])
    add("extended-header-with-crc", with_crc + picture(4, one) + PADDING, [(JPEG, 3, one)], True, flags=0x40)
    add("extended-header-past-the-tag", sync_safe(4000) + b"\1\0" + picture(4, one) + PADDING, [], flags=0x40)
    add("extended-header-unsynchronised", extended + picture(4, one) + PADDING, None, flags=0xC0)
    add("footer", picture(4, one) + text_frame(4) + b"", [(JPEG, 3, one)], True, flags=0x10, footer=True)
    add("footer-behind-a-picture", text_frame(4) + picture(4, one), None, flags=0x10, footer=True)
    add("extended-header-and-footer", extended + picture(4, one) + text_frame(4), [(JPEG, 3, one)], True, flags=0x50,
        footer=True)
    add("extended-header-footer-and-unsynchronised", extended + unsync(picture(4, odd)) + text_frame(4) * 2, None,
        flags=0xD0, footer=True)
    add("unsynchronised-and-too-short-for-its-extended-header", sync_safe(127) + picture(4, one), [], flags=0xD0, size=20)
    add("footer-of-a-tag-of-9", picture(4, one), None, flags=0x10, size=9)
    add("high-bits-in-a-length", b"APIC" + bytes(b | 128 for b in sync_safe(len(plain))) + b"\0\0" + plain + PADDING,
        [(JPEG, 3, one)])
    add("format-without-end", picture(4, one) + frame(4, b"APIC", b"\0" + b"i" * 60), None)
    add("link", picture(4, b"http://x/y.jpg", mime=b"-->") + picture(4, two) + PADDING, [(JPEG, 3, two)])


def following(flags, bytes_behind):
    """The following bytes that become part of a picture because of the flags for a group and a data length."""
    return bytes_behind[:(1 if flags & 0x40 else 0) + (4 if flags & 1 else 0)]


def asf_cases(ledger):
    one, two, three = data_of(7), data_of(8), data_of(9)
    title = descriptor("WM/AlbumTitle", 0, wide("Album", ""))

    def add(case, objects, planted, standard=False, **header):
        ledger.add("asf-" + case + ".wma", asf(objects, **header), planted, standard)

    def described(data, **more):
        return descriptor("WM/Picture", 1, value(data, **more))

    def recorded(data, **more):
        return record("WM/Picture", 1, value(data, **more))

    found, both = [(JPEG, 3, one)], [(JPEG, 3, one), (JPEG, 0, two)]
    add("one", [PROPERTIES, content(title, described(one), title), END], found, True)
    add("two", [PROPERTIES, content(described(one), described(two, category=0)), END], both, True)
    types = [(JPEG, kind, data_of(kind)) for kind in range(21)]
    add("every-type", [PROPERTIES, content(*(described(d, category=k) for _, k, d in types)), END], types, True)
    add("described", [PROPERTIES, content(described(one, description="Hülle")), END], found, True)
    add("format-empty", [PROPERTIES, content(described(one, mime="")), END], [("", 3, one)], True)
    add("format-wide", [PROPERTIES, content(described(one, mime="image/é€")), END], [("image/é€", 3, one)], True)
    add("no-pictures", [PROPERTIES, content(title), END], [], True)
    add("no-objects", [], [], size=None, count=0)
    add("metadata-library", [PROPERTIES, extension(library(recorded(one))), END], found, True)
    add("metadata-library-among-others", [PROPERTIES, extension(OTHER, library(
        record("WM/AlbumTitle", 0, wide("Album", "")), recorded(one), recorded(two, category=0)), OTHER), END], both, True)
    add("both-places", [PROPERTIES, content(described(one)), extension(library(recorded(two, category=0))), END], both, True)
    add("behind-the-header-extension", [PROPERTIES, extension(OTHER), content(described(one)), END], [])
    add("content-description-in-the-extension", [PROPERTIES, extension(content(described(one)), library(recorded(two))), END],
        [(JPEG, 3, one), (JPEG, 3, two)])
    add("the-last-object-is-read", [PROPERTIES, content(described(one))], found, True)
    add("name-without-zero", [content(descriptor("WM/Picture".encode("utf-16-le"), 1, value(one))), END], [])
    add("name-in-small-letters", [content(descriptor("wm/picture", 1, value(one))), END], [])
    add("name-of-another-length", [content(descriptor("WM/Pictures", 1, value(one))), END], [])
    for kind in (0, 2, 3, 257):
        add("type-%d" % kind, [content(descriptor("WM/Picture", kind, value(one))), END], [])
    add("record-of-another-type", [extension(library(record("WM/Picture", 0, value(one)), recorded(two))), END],
        [(JPEG, 3, two)])
    add("descriptor-length-plays-no-part", [content(descriptor("WM/Picture", 1, value(one), length=3), described(two)), END],
        [(JPEG, 3, one), (JPEG, 3, two)])
    add("record-length-plays-no-part", [extension(library(record("WM/Picture", 1, value(one), length=3), recorded(two))),
                                        END], [(JPEG, 3, one), (JPEG, 3, two)])
    add("count-above", [content(described(one), count=9), END], None)
    add("count-below", [content(described(one), described(two), count=1), END], found)
    add("count-0", [content(described(one), count=0), END], [])
    add("count-65535", [content(described(one), count=65535), END], None)
    add("objects-fewer", [PROPERTIES, content(described(one)), END], [], count=1)
    add("objects-none", [content(described(one)), END], [], count=0)
    add("objects-negative", [content(described(one)), END], [], count=-1)
    add("objects-more", [content(described(one)), END], None, count=0x7FFFFFFF)
    add("picture-past-the-object", [content(described(one, length=100)), END, END], [])
    add("picture-past-the-tag", [content(described(one, length=0x100000)), END], [])
    add("picture-past-32-bits", [content(described(one, length=0x7FFFFFFF)), END], None)
    add("picture-of-0", [content(described(b"")), END], None)
    add("picture-of-minus-1", [content(described(one, length=-1), described(two)), END], None)
    add("picture-of-minus-1000", [content(described(one, length=-1000), described(two)), END], None)
    add("format-without-end", [content(descriptor("WM/Picture", 1, bytes([3]) + bytes(4) + b"xy" * 40))], None)
    add("description-without-end", [content(descriptor("WM/Picture", 1, bytes([3]) + bytes(4) + bytes(2) + b"xy" * 40))], None)
    add("name-past-the-tag", [content(struct.pack("<H", 65535) + b"xy")], None)
    for size in (0, 1, 23, 24, -1, -30, 0x7FFFFFFF):
        add("object-of-%d" % size, [asf_object(bytes(range(16)), b"abc", size), content(described(one)), END], None)
    add("object-high", [asf_object(bytes(range(16)), b"abc", high=1), content(described(one)), END], [])
    for size in (0, 1, -1, 0x7FFFFFFF):
        add("extension-object-of-%d" % size, [extension(asf_object(bytes(range(16)), b"abc", size), library(recorded(one))),
                                              END], None)
    add("extension-object-high", [extension(asf_object(bytes(range(16)), b"abc", high=1), library(recorded(one))), END], [])
    add("extension-mark", [extension(library(recorded(one)), mark=bytes(16)), END], [])
    add("extension-data-of-0", [extension(library(recorded(one)), length=0), END], [])
    add("extension-data-too-long", [extension(library(recorded(one)), length=4000), END], found)
    add("extension-data-negative", [extension(library(recorded(one)), length=0xFFFFFFFF), END], [])
    add("extension-data-past-32-bits", [extension(library(recorded(one)), length=0x7FFFFFFF), END], None)
    add("library-of-0-records", [extension(library(count=0), library(recorded(one))), END], [])
    add("library-with-bytes-behind", [extension(library(recorded(one), tail=bytes(7)), library(recorded(two)), OTHER), END],
        None)
    add("library-record-past-its-end", [extension(library(recorded(one), size=60), library(recorded(two))), END], None)
    for length in (-1, -12, -34, -1000, 0x7FFFFFFF):
        add("record-of-%d" % length, [extension(library(record("Other", 0, b"abc", length), recorded(one))), END], None)
    add("header-high", [content(described(one)), END], [], high=1)
    for reserved in (0, 1, 3):
        add("reserved-%d" % reserved, [content(described(one)), END], [], reserved=reserved)
    whole = asf([content(title, described(one)), END])
    for size in (0, 30, 60, 61, 62, 0x7FFFFFFF, 0x80000000, len(whole), len(whole) - 1):
        ledger.add("asf-header-of-%d.wma" % size, whole[:16] + struct.pack("<I", size) + whole[20:])
    for length in range(61, len(whole) - len(AUDIO), 13):
        ledger.add("asf-cut-at-%d.wma" % length, whole[:16] + struct.pack("<I", length) + whole[20:])
    add("second-in-front", [content(described(one)), content(described(two)), content(described(three)), END],
        [(JPEG, 3, one), (JPEG, 3, two), (JPEG, 3, three)])


def other_starts(ledger):
    tag = id3(3, picture(3, data_of(1)) + PADDING)
    for name, file in (
            ("start-empty.mp3", b""), ("start-29-bytes.mp3", tag[:29]), ("start-30-bytes.mp3", tag[:30]),
            ("start-version-0.mp3", tag[:3] + b"\0" + tag[4:]), ("start-version-1.mp3", tag[:3] + b"\1" + tag[4:]),
            ("start-version-5.mp3", tag[:3] + b"\5" + tag[4:]), ("start-small-letters.mp3", b"id3" + tag[3:]),
            ("start-one-byte-late.mp3", b"\0" + tag), ("start-flac.flac", b"fLaC" + tag),
            ("start-ape.mp3", b"APETAGEX" + tag), ("start-riff.wav", b"RIFF" + tag), ("start-mp4.mp4", bytes(4) + b"ftyp" + tag),
            ("start-trailer.mp3", AUDIO + b"TAG" + bytes(125)), ("start-tag-at-the-end.mp3", AUDIO + tag),
            ("start-zeros.mp3", bytes(400)), ("start-ones.mp3", b"\xFF" * 400)):
        ledger.add(name, file, [])


def main():
    os.makedirs(FOLDER, exist_ok=True)
    for name in os.listdir(FOLDER):
        os.remove(os.path.join(FOLDER, name))
    ledger = Ledger()
    all_versions(ledger)
    header_flags(ledger)
    version2(ledger)
    version3(ledger)
    version4(ledger)
    asf_cases(ledger)
    other_starts(ledger)
    with open(os.path.join(FOLDER, "..", "ledger.jsonl"), "w", encoding="utf-8") as file:
        file.write("\n".join(ledger.lines) + "\n")
    print("%d files" % len(ledger.lines))


if __name__ == "__main__":
    main()
