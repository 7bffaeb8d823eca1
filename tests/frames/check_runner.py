#!/usr/bin/env python3
"""Checks the runner of the golden frames: how it reads PNG files, and what it reports for pictures that differ.

    check_runner.py --console PROGRAM --work FOLDER
"""

import argparse
import os
import shutil
import struct
import subprocess
import sys
import unittest
import zlib

sys.dont_write_bytecode = True

import run_frames  # noqa: E402  pylint: disable=wrong-import-position

HERE = os.path.dirname(os.path.abspath(__file__))
OPTIONS = argparse.Namespace()
WIDTH, HEIGHT = 7, 6
ROWS = [bytes((11 * x + 17 * y * (c + 1) + x * y * c) % 256 for x in range(WIDTH) for c in range(3)) for y in range(HEIGHT)]


def filtered(kind, row, above, step):
    line = []
    for i, value in enumerate(row):
        left = row[i - step] if i >= step else 0
        corner = above[i - step] if i >= step else 0
        estimate = left + above[i] - corner
        nearest = min((left, above[i], corner), key=lambda sample, goal=estimate: abs(goal - sample))
        line.append((value - (0, left, above[i], (left + above[i]) // 2, nearest)[kind]) % 256)
    return bytes([kind]) + bytes(line)


def write_filtered(path, rows, depth, colour, extra=b""):
    """A PNG of packed rows that use all filters in turn."""
    def chunk(kind, body):
        return struct.pack(">I", len(body)) + kind + body + struct.pack(">I", zlib.crc32(kind + body))

    step = max(1, run_frames.CHANNELS[colour] * depth // 8)
    above = bytes(len(rows[0]))
    data = b""
    for y, row in enumerate(rows):
        data += filtered(y % 5, row, above, step)
        above = row
    with open(path, "wb") as file:
        file.write(run_frames.SIGNATURE + chunk(b"IHDR", struct.pack(">IIBBBBB", WIDTH, HEIGHT, depth, colour, 0, 0, 0)) +
                   extra + chunk(b"IDAT", zlib.compress(data)) + chunk(b"IEND", b""))


class Reading(unittest.TestCase):
    def setUp(self):
        self.path = os.path.join(OPTIONS.work, "picture.png")

    def test_what_is_written_is_read(self):
        run_frames.write_png(self.path, WIDTH, ROWS)
        self.assertEqual(run_frames.read_png(self.path), (WIDTH, HEIGHT, ROWS))

    def test_all_filters_are_undone(self):
        write_filtered(self.path, ROWS, 8, 2)
        self.assertEqual(run_frames.read_png(self.path), (WIDTH, HEIGHT, ROWS))

    def test_alpha_is_left_out(self):
        rows = [b"".join(row[i:i + 3] + b"\xff" for i in range(0, len(row), 3)) for row in ROWS]
        write_filtered(self.path, rows, 8, 6)
        self.assertEqual(run_frames.read_png(self.path)[2], ROWS)

    def test_packed_palette_samples_are_looked_up(self):
        palette = b"\x01\x02\x03\x04\x05\x06\x07\x08\x09\x0a\x0b\x0c"
        chunk = struct.pack(">I", 12) + b"PLTE" + palette + struct.pack(">I", zlib.crc32(b"PLTE" + palette))
        write_filtered(self.path, [b"\x1b\xe4"] * HEIGHT, 2, 3, chunk)  # 0 1 2 3 3 2 1 (0)
        places = (0, 1, 2, 3, 3, 2, 1)
        self.assertEqual(run_frames.read_png(self.path)[2][5], b"".join(palette[3 * i:3 * i + 3] for i in places))

    def test_another_file_is_refused(self):
        with open(self.path, "wb") as file:
            file.write(b"no picture")
        with self.assertRaises(run_frames.Failure):
            run_frames.read_png(self.path)


class Comparing(unittest.TestCase):
    def path(self, name):
        return os.path.join(OPTIONS.work, name + ".png")

    def fault(self, rows, width=WIDTH):
        run_frames.write_png(self.path("golden"), WIDTH, ROWS)
        run_frames.write_png(self.path("actual"), width, rows)
        return run_frames.compare(self.path("golden"), self.path("actual"), self.path("difference"))

    def test_the_same_picture_written_otherwise_is_the_same(self):
        write_filtered(self.path("otherwise"), ROWS, 8, 2)
        run_frames.write_png(self.path("golden"), WIDTH, ROWS)
        self.assertEqual(run_frames.compare(self.path("golden"), self.path("otherwise"), self.path("difference")), "")

    def test_differing_pixels_are_counted_and_the_first_is_named(self):
        rows = [bytearray(row) for row in ROWS]
        rows[4][3 * 5 + 2] ^= 1
        rows[5][0] ^= 128
        fault = self.fault([bytes(row) for row in rows])
        self.assertTrue(fault.startswith("2 pixels differ; the first is (5, 4): "), fault)
        red = [(x, y) for y, row in enumerate(run_frames.read_png(self.path("difference"))[2]) for x in range(WIDTH)
               if row[3 * x:3 * x + 3] == run_frames.RED]
        self.assertEqual(red, [(5, 4), (0, 5)])

    def test_another_size_is_told(self):
        self.assertEqual(self.fault(ROWS[:-1]), "the picture is 7 x 5 instead of 7 x 6")


class Running(unittest.TestCase):
    """Runs the runner on a copy of a frame."""

    def setUp(self):
        self.frame = os.path.join(OPTIONS.work, "a-copied-frame")
        shutil.rmtree(self.frame, ignore_errors=True)
        shutil.copytree(os.path.join(HERE, "no-track-numbers"), self.frame)

    def run_it(self):
        return subprocess.run([sys.executable, os.path.join(HERE, "run_frames.py"), "--console", OPTIONS.console, "--work",
                               os.path.join(OPTIONS.work, "copies"), self.frame], stderr=subprocess.PIPE, text=True,
                              check=False)

    def test_the_frame_passes_and_one_pixel_makes_it_fail(self):
        self.assertEqual(self.run_it().returncode, 0)
        golden = os.path.join(self.frame, "golden.png")
        width, _, rows = run_frames.read_png(golden)
        rows[300] = rows[300][:600] + bytes([rows[300][600] ^ 1]) + rows[300][601:]
        run_frames.write_png(golden, width, rows)
        result = self.run_it()
        self.assertEqual(result.returncode, 1)
        self.assertIn("1 pixels differ; the first is (200, 300)", result.stderr)

    def test_a_command_that_fails_makes_the_frame_fail(self):
        with open(os.path.join(self.frame, "session.txt"), "a", encoding="utf-8") as file:
            file.write("no such command\n")
        result = self.run_it()
        self.assertEqual(result.returncode, 1)
        self.assertIn("a command failed", result.stderr)

    def test_a_session_that_writes_no_picture_makes_the_frame_fail(self):
        with open(os.path.join(self.frame, "session.txt"), "w", encoding="utf-8") as file:
            file.write("state SelX\n")
        self.assertIn("no picture was written", self.run_it().stderr)


def main():
    parser = argparse.ArgumentParser(description=__doc__.split("\n", maxsplit=1)[0])
    parser.add_argument("--console", required=True)
    parser.add_argument("--work", required=True)
    parser.parse_args(namespace=OPTIONS)
    OPTIONS.work = os.path.join(os.path.abspath(OPTIONS.work), "check_runner")
    os.makedirs(OPTIONS.work, exist_ok=True)
    unittest.main(argv=sys.argv[:1])


if __name__ == "__main__":
    main()
