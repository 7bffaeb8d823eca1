#!/usr/bin/env python3
"""Draws frames with the console and compares them with golden pictures, pixel by pixel.

    run_frames.py --console PROGRAM --work FOLDER [--accept] FRAME...

A frame is a folder with these files:

  home.txt      how the application and the music folder are made, as for a console session (../sessions/run_sessions.py)
  session.txt   the commands. One of them is "frame @PICTURE@" or "surface NAME @PICTURE@", which writes the picture; every
                command must succeed.
  golden.png    the expected picture

A picture that differs is left in the work folder as actual.png, together with difference.png: the golden picture in
dark grey, the pixels that differ in red. --accept makes the picture the golden one; check it first. Golden pictures
contain only text in the test font of the repository.
"""

import argparse
import filecmp
import json
import os
import shutil
import struct
import subprocess
import sys
import zlib

HERE = os.path.dirname(os.path.abspath(__file__))
sys.dont_write_bytecode = True
sys.path.insert(0, os.path.join(os.path.dirname(HERE), "sessions"))

from run_sessions import Failure, Session  # noqa: E402  pylint: disable=wrong-import-position

SIGNATURE = b"\x89PNG\r\n\x1a\n"
CHANNELS = {0: 1, 2: 3, 3: 1, 4: 2, 6: 4}  # samples per pixel, by colour type
RED = b"\xff\x00\x00"


# --- PNG ----------------------------------------------------------------------------------------------------------------


def chunks_of(data):
    place = len(SIGNATURE)
    while place + 8 <= len(data):
        length, kind = struct.unpack_from(">I4s", data, place)
        yield kind, data[place + 8:place + 8 + length]
        place += length + 12


def paeth(left, above, corner):
    estimate = left + above - corner
    distances = abs(estimate - left), abs(estimate - above), abs(estimate - corner)
    return (left, above, corner)[distances.index(min(distances))]


def unfilter(kind, line, above, step):
    """Undoes the filter of one row in place; `step` is the width of a pixel in bytes."""
    for i, value in enumerate(line):
        left = line[i - step] if i >= step else 0
        corner = above[i - step] if i >= step else 0
        guess = (0, left, above[i], (left + above[i]) // 2, paeth(left, above[i], corner))[kind]
        line[i] = (value + guess) & 255


def samples_of(line, depth, count):
    if depth == 8:
        return line[:count]
    each = 8 // depth
    return [line[i // each] >> (8 - depth * (i % each + 1)) & (1 << depth) - 1 for i in range(count)]


def rgb_of(samples, colour, depth, palette):
    if colour == 2:
        return bytes(samples)
    if colour == 3:
        return b"".join(palette[3 * s:3 * s + 3] for s in samples)
    if colour == 0:
        return b"".join(bytes([s * 255 // ((1 << depth) - 1)] * 3) for s in samples)
    step = CHANNELS[colour]
    grey = colour == 4
    return b"".join(bytes([samples[i]] * 3 if grey else samples[i:i + 3]) for i in range(0, len(samples), step))


def read_png(path):
    """Width, height and the rows as RGB bytes. Alpha is left out: frames are opaque."""
    with open(path, "rb") as file:
        data = file.read()
    parts = list(chunks_of(data)) if data.startswith(SIGNATURE) else []
    if not parts or parts[0][0] != b"IHDR":
        raise Failure("%s: no PNG" % path)
    width, height, depth, colour, _, _, interlace = struct.unpack(">IIBBBBB", parts[0][1])
    if depth > 8 or interlace or colour not in CHANNELS:
        raise Failure("%s: unsupported kind of PNG" % path)
    palette = b"".join(body for kind, body in parts if kind == b"PLTE")
    raw = zlib.decompress(b"".join(body for kind, body in parts if kind == b"IDAT"))
    count = width * CHANNELS[colour]
    size = (count * depth + 7) // 8
    above = bytearray(size)
    rows = []
    for y in range(height):
        start = y * (size + 1)
        line = bytearray(raw[start + 1:start + 1 + size])
        unfilter(raw[start], line, above, max(1, CHANNELS[colour] * depth // 8))
        rows.append(rgb_of(samples_of(line, depth, count), colour, depth, palette))
        above = line
    return width, height, rows


def write_png(path, width, rows):
    def chunk(kind, body):
        return struct.pack(">I", len(body)) + kind + body + struct.pack(">I", zlib.crc32(kind + body))

    header = struct.pack(">IIBBBBB", width, len(rows), 8, 2, 0, 0, 0)
    data = zlib.compress(b"".join(b"\0" + row for row in rows))
    with open(path, "wb") as file:
        file.write(SIGNATURE + chunk(b"IHDR", header) + chunk(b"IDAT", data) + chunk(b"IEND", b""))


# --- Comparing ----------------------------------------------------------------------------------------------------------


def pixels_that_differ(golden, actual):
    """(x, y) of each differing pixel, in rows from the top."""
    for y, (expected, found) in enumerate(zip(golden, actual)):
        if expected != found:
            for x in range(len(expected) // 3):
                if expected[3 * x:3 * x + 3] != found[3 * x:3 * x + 3]:
                    yield x, y


def difference(golden, places):
    """The golden picture in dark grey, the given pixels in red."""
    rows = []
    for row in golden:
        greys = bytes((row[i] + row[i + 1] + row[i + 2]) // 9 for i in range(0, len(row), 3))
        rows.append(bytearray(b"".join(bytes([grey] * 3) for grey in greys)))
    for x, y in places:
        rows[y][3 * x:3 * x + 3] = RED
    return [bytes(row) for row in rows]


def compare(golden_path, actual_path, difference_path):
    """Describes the difference; empty if there is none."""
    if filecmp.cmp(golden_path, actual_path, shallow=False):
        return ""
    width, height, golden = read_png(golden_path)
    found_width, found_height, actual = read_png(actual_path)
    if (width, height) != (found_width, found_height):
        return "the picture is %d x %d instead of %d x %d" % (found_width, found_height, width, height)
    places = list(pixels_that_differ(golden, actual))
    if not places:
        return ""
    write_png(difference_path, width, difference(golden, places))
    x, y = places[0]
    colours = tuple(",".join(map(str, rows[y][3 * x:3 * x + 3])) for rows in (golden, actual))
    return "%d pixels differ; the first is (%d, %d): %s instead of %s\n  see %s" % (
        len(places), x, y, colours[1], colours[0], difference_path)


# --- A frame ------------------------------------------------------------------------------------------------------------


class Frame(Session):
    def picture(self, name):
        return os.path.join(self.root, name)

    def fill_in(self, text):
        return super().fill_in(text).replace("@PICTURE@", self.picture("actual.png"))

    def draw(self, console):
        self.make_home()
        lines, code = self.run(console)
        for line in lines:
            answer = json.loads(line)
            if not (answer.get("ready") or answer.get("ok")) or "error" in answer:
                raise Failure("a command failed: " + line)
        if code != 0 or not os.path.isfile(self.picture("actual.png")):
            raise Failure("no picture was written (exit code %d)\n%s" % (code, self.errors))

    def compare(self):
        golden = os.path.join(self.folder, "golden.png")
        fault = compare(golden, self.picture("actual.png"), self.picture("difference.png"))
        if fault:
            raise Failure(fault)


def main():
    parser = argparse.ArgumentParser(description=__doc__.split("\n", maxsplit=1)[0])
    parser.add_argument("--console", required=True)
    parser.add_argument("--work", required=True)
    parser.add_argument("--accept", action="store_true")
    parser.add_argument("frames", nargs="+")
    arguments = parser.parse_args()
    failures = 0
    for folder in arguments.frames:
        frame = Frame(folder, arguments.work)
        try:
            frame.draw(os.path.abspath(arguments.console))
            if arguments.accept:
                shutil.copy(frame.picture("actual.png"), os.path.join(frame.folder, "golden.png"))
            else:
                frame.compare()
        except (Failure, ValueError, subprocess.TimeoutExpired, OSError, zlib.error, struct.error, IndexError) as error:
            failures += 1
            print("FAILED %s: %s" % (frame.name, error), file=sys.stderr)
    return 1 if failures else 0


if __name__ == "__main__":
    sys.exit(main())
