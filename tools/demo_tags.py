"""Writes tags with a cover into sound files: ID3v2 in its three versions, and the header of an ASF file."""

import struct
import uuid

# Frames of ID3v2.2; the other versions have four-letter names for them (id3.org: id3v2-00, id3v2.3.0,
# id3v2.4.0-structure).
SHORT_NAMES = {"TIT2": "TT2", "TPE1": "TP1", "TALB": "TAL", "TRCK": "TRK", "APIC": "PIC"}
ENCODING_LATIN, FRONT_COVER = 0, 3
# Zeros after the frames. The jukebox does not read the last ten bytes of a tag, and treats a tag of version 2.2 or 2.4
# whose frames extend into them as broken.
PADDING = bytes(256)
ASF_CONTENT = uuid.UUID("d2d0a440-e307-11d2-97f0-00a0c95ea850").bytes_le
ASF_FILE = uuid.UUID("8cabdca1-a947-11cf-8ee4-00c00c205365").bytes_le


def syncsafe(number):
    return bytes((number >> shift) & 0x7F for shift in (21, 14, 7, 0))


def id3(version, texts, cover):
    """A tag of version 2, 3 or 4 with text frames by their four-letter names and a JPEG cover."""
    frames = b""
    bodies = [(name, bytes([ENCODING_LATIN]) + text.encode("latin-1", "replace")) for name, text in texts if text]
    if cover:
        kind = b"JPG" if version == 2 else b"image/jpeg\0"
        bodies.append(("APIC", bytes([ENCODING_LATIN]) + kind + bytes([FRONT_COVER]) + b"\0" + cover))
    for name, body in bodies:
        if version == 2:
            frames += SHORT_NAMES[name].encode() + len(body).to_bytes(3, "big") + body
        else:
            size = syncsafe(len(body)) if version == 4 else struct.pack(">I", len(body))
            frames += name.encode() + size + b"\0\0" + body
    frames += PADDING
    return b"ID3" + bytes([version, 0, 0]) + syncsafe(len(frames)) + frames


def add_id3(path, version, texts, cover):
    path.write_bytes(id3(version, texts, cover) + path.read_bytes())


def wide(text):
    return text.encode("utf-16-le") + b"\0\0"


def add_asf(path, cover):
    """Adds an Extended Content Description with a WM/Picture to the header of an ASF file that has none."""
    data = path.read_bytes()
    size, count = struct.unpack_from("<QI", data, 16)
    picture = struct.pack("<BI", FRONT_COVER, len(cover)) + wide("image/jpeg") + wide("") + cover
    assert len(picture) < 65536 and ASF_CONTENT not in data[:size]
    name = wide("WM/Picture")
    entry = struct.pack("<H", len(name)) + name + struct.pack("<HH", 1, len(picture)) + picture
    added = ASF_CONTENT + struct.pack("<QH", 26 + len(entry), 1) + entry
    data = bytearray(data[:16] + struct.pack("<QI", size + len(added), count + 1) + data[28:size] + added + data[size:])
    place = data.find(ASF_FILE)
    struct.pack_into("<Q", data, place + 40, len(data))
    path.write_bytes(bytes(data))
