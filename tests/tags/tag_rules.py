"""Computes from the rules what the tag reader must find in a file.

This is a second implementation of the rules, written for clarity instead of speed. make_tags.py compares it with the
pictures that it puts into the files and with an independent reader.
"""

import hashlib
import struct

FEWEST_BYTES = 30
ASF_HEADER = bytes.fromhex("3026B2758E66CF11A6D900AA0062CE6C")
CONTENT = bytes.fromhex("40A4D0D207E3D21197F000A0C95EA850")
EXTENSION = bytes.fromhex("B503BF5F2EA9CF118EE300C00C205365")
EXTENSION_MARK = bytes.fromhex("11D2D3ABBAA9CF118EE600C00C205365")
LIBRARY = bytes.fromhex("941C23449894D149A1411D134E457054")
PICTURE_NAME = "WM/Picture\0".encode("utf-16-le")
CAPITALS = frozenset(b"ABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789")


class Fault(Exception):
    """A run-time error with its number."""


class Tag:
    """The tag buffer: every read outside it raises a fault."""

    def __init__(self, data):
        self.data = bytearray(data)

    def byte(self, at):
        if not 0 <= at < len(self.data):
            raise Fault(9)
        return self.data[at]

    def take(self, at, count):
        return bytes(self.byte(i) for i in range(at, at + count))

    def big(self, at):
        return struct.unpack(">i", self.take(at, 4))[0]

    def big24(self, at):
        try:
            return int.from_bytes(self.take(at, 3), "big")
        except Fault:
            return 0

    def sync_safe(self, at):
        value = 0
        for byte in self.take(at, 4):
            value = value * 128 + byte % 128
        return value

    def little16(self, at):
        return struct.unpack("<H", self.take(at, 2))[0]

    def little(self, at):
        return struct.unpack("<i", self.take(at, 4))[0]

    def string_length(self, at):
        length = 0
        while self.byte(at + length) != 0:
            length += 1
        return length

    def wide_length(self, at):
        length = 0
        while self.little16(at + 2 * length) != 0:
            length += 1
        return length

    def text(self, at, most):
        result = ""
        while len(result) < most and self.byte(at + len(result)) >= 32:
            result += chr(self.byte(at + len(result)))
        return result

    def remove_unsync(self, start, length):
        kept = bytearray()
        for i in range(start, start + length) if length > 1 else ():
            if not (i > start and self.byte(i) == 0 and self.byte(i - 1) == 255):
                kept.append(self.byte(i))
        removed = length - len(kept) if length > 1 else 0
        if removed > 0:
            kept[-1] = 0
            self.data[start:start + len(kept)] = kept
        return removed


def checked(value):
    """A result of 32-bit arithmetic."""
    if not -2**31 <= value < 2**31:
        raise Fault(6)
    return value


class Reader:
    def __init__(self, data):
        self.tag = Tag(data)
        self.items = []  # format, category, offset, length

    def keep(self, mime, category, offset, length):
        self.items.append((mime, category, offset, length))

    def is_name(self, pos, count, others):
        return all(self.tag.byte(pos + i) in CAPITALS or self.tag.byte(pos + i) in others for i in range(count))

    # --- ID3v2 ------------------------------------------------------------------------------------------------------

    def version2(self):
        tag, flags = self.tag, self.tag.byte(5)
        if flags & 0x40:
            return
        pos, size = 10, tag.sync_safe(6)
        if flags & 0x80:
            size -= tag.remove_unsync(10, size - 10)
        if size < 10:
            return
        while pos < size:
            if tag.byte(pos) == 0 or not self.is_name(pos, 3, b""):
                return
            length = tag.big24(pos + 3)
            if tag.take(pos, 3) == b"PIC" and length >= 1 and pos + length <= size:
                self.picture2(pos, length)
            pos += length + 6

    def picture2(self, pos, length):
        tag = self.tag
        first, second = tag.byte(pos + 7), tag.byte(pos + 8)
        if first == second == ord("-"):
            return
        mime = tag.text(pos + 7, 3)
        encoding = tag.byte(pos + 6)
        if encoding not in (0, 1):
            return
        description = tag.wide_length(pos + 11) * 2 + 2 if encoding else tag.string_length(pos + 11) + 1
        offset = pos + 11 + description + encoding
        self.keep(mime, tag.byte(pos + 10), offset, length + 6 - (offset - pos))

    def version3(self):
        try:
            self.version3_or_fault()
        except Fault:
            pass

    def version3_or_fault(self):
        tag, flags, pos = self.tag, self.tag.byte(5), 10
        if flags & 0x40:
            pos = checked(pos + tag.big(10))
            if pos < 10:
                return
        size = tag.sync_safe(6)
        if flags & 0x80:
            size -= tag.remove_unsync(pos, size - 10)
        if size < pos:
            return
        while pos < size:
            if tag.byte(pos) == 0 or not self.is_name(pos, 4, b"\0"):
                return
            length = tag.big(pos + 4)
            if length < 0:
                return
            if checked(pos + length) <= size and tag.take(pos, 4) == b"APIC" and length >= 1 and tag.byte(pos + 9) <= 63:
                self.picture34(pos, length, {0: 1, 1: 2}, 0)
            pos = checked(pos + length + 10)

    def version4(self):
        tag, flags, pos = self.tag, self.tag.byte(5), 10
        size = tag.sync_safe(6)
        if flags & 0x10:
            size -= 10
        if flags & 0x40:
            pos += tag.sync_safe(10)
        if flags & 0x80:
            size -= tag.remove_unsync(pos, size - 10)
        if size < pos:
            return
        while pos < size:
            if tag.byte(pos) == 0 or not self.is_name(pos, 4, b"\0"):
                return
            length = tag.sync_safe(pos + 4)
            if pos + length <= size and tag.take(pos, 4) == b"APIC" and length >= 1 and not tag.byte(pos + 9) & 0x0C:
                self.picture34(pos, length, {0: 1, 1: 2, 2: 2, 3: 1}, self.adjustment(pos, length))
            pos += length + 10

    def adjustment(self, pos, length):
        flags = self.tag.byte(pos + 9)
        result = self.tag.remove_unsync(pos + 10, length) if flags & 0x02 else 0
        return result - (1 if flags & 0x40 else 0) - (4 if flags & 0x01 else 0)

    def picture34(self, pos, length, unit_of, adjustment):
        tag = self.tag
        mime_length = tag.string_length(pos + 11)
        if mime_length in (1, 2) or mime_length == 3 and tag.byte(pos + 12) == ord("-"):
            return
        mime = tag.text(pos + 11, mime_length)
        d = pos + mime_length + 13
        category = tag.byte(d - 1)
        unit = unit_of.get(tag.byte(pos + 10))
        if unit is None:
            return
        offset = d + (tag.string_length(d) + 1 if unit == 1 else tag.wide_length(d) * 2 + 2)
        self.keep(mime, category, offset, length - (offset - pos - 10) - adjustment)

    # --- ASF --------------------------------------------------------------------------------------------------------

    def asf(self):
        tag, pos = self.tag, 30
        limit = len(tag.data) - 24
        count = tag.little(24)
        while count > 0:
            count -= 1
            guid = tag.take(pos, 16)
            if tag.little(pos + 20) != 0:
                return
            end = checked(pos + tag.little(pos + 16))
            if guid == CONTENT and not self.descriptors(pos + 24, end):
                return
            if guid == EXTENSION:
                self.extension(pos + 24, end)
                return
            if end > limit or end <= pos:
                return
            pos = end

    def descriptors(self, pos, end):
        tag = self.tag
        count = tag.little16(pos)
        pos += 2
        for _ in range(count):
            before = pos
            length = tag.little16(pos)
            name = tag.take(pos + 2, length)
            pos += 2 + length
            if name == PICTURE_NAME and tag.little16(pos) == 1:
                pos = self.value(pos + 4, end)
            else:
                pos += tag.little16(pos + 2) + 4
            if pos > end or pos <= before:
                return False
        return True

    def value(self, pos, end):
        tag = self.tag
        category, length = tag.byte(pos), tag.little(pos + 1)
        units = tag.wide_length(pos + 5)
        mime = tag.take(pos + 5, 2 * units).decode("utf-16-le", "surrogatepass")
        description = pos + 5 + 2 * units + 2
        offset = description + 2 * tag.wide_length(description) + 2
        after = checked(offset + length)
        if after <= end:
            self.keep(mime, category, offset, length)
        return after

    def extension(self, pos, end):
        tag = self.tag
        if tag.take(pos, 16) != EXTENSION_MARK:
            return False
        limit = checked(pos + 22 + tag.little(pos + 18))
        pos += 22
        while pos < limit:
            before, guid = pos, tag.take(pos, 16)
            if tag.little(pos + 20) != 0:
                return False
            after = checked(pos + tag.little(pos + 16))
            if guid == LIBRARY:
                pos = self.library(pos, after)
            else:
                pos = after
                if guid == CONTENT and not self.descriptors(before + 24, after):
                    return False
            if pos is None or pos > end or pos <= before:
                return False
        return True

    def library(self, pos, end):
        """The position after the last record, or None when the object is invalid."""
        tag = self.tag
        count = tag.little16(pos + 24)
        if count == 0:
            return None
        pos += 26
        for _ in range(count):
            before = pos
            length, kind, data = tag.little16(pos + 4), tag.little16(pos + 6), tag.little(pos + 8)
            name = tag.take(pos + 12, length)
            pos += 12 + length
            pos = self.value(pos, end) if kind == 1 and name == PICTURE_NAME else checked(pos + data)
            if pos > end or pos <= before:
                return None
        return pos


def tag_of(file):
    """The bytes of the tag in a file; empty without a tag."""
    if len(file) < FEWEST_BYTES:
        return b""
    start = Tag(file[:FEWEST_BYTES])
    if file.startswith(b"ID3"):
        size = start.sync_safe(6)
        if file[3] not in (2, 3, 4) or file[4] == 255 or size > len(file):
            return b""
        if size == 0:
            raise Fault(9)
        return file[:size]
    if file[:16] != ASF_HEADER or start.little(20) != 0:
        return b""
    size = start.little(16)
    return file[:size] if 61 <= size < len(file) and file[29] == 2 else b""


def described(tag, item):
    mime, category, offset, length = item
    data = bytes(tag.data[offset:offset + length]) if length > 0 else b""
    return {
        "ImageType": mime,
        "ImageCategory": category,
        "extracted": bool(data),
        "length": len(data),
        "sha256": hashlib.sha256(data).hexdigest(),
    }


def expected(file):
    """Returns {"images": [...]}, or {"stop": number} for a fault that stops the program."""
    try:
        data = tag_of(file)
        if not data:
            return {"images": []}
        reader = Reader(data)
        version = reader.tag.byte(3)
        {2: reader.version2, 3: reader.version3, 4: reader.version4}.get(version, reader.asf)()
    except Fault as fault:
        return {"stop": fault.args[0]}
    return {"images": [described(reader.tag, item) for item in reader.items]}
