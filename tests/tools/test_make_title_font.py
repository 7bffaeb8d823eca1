"""Tests of make_title_font.py, with the font that our own script draws for the tests."""

import pathlib
import struct
import subprocess
import sys
import tempfile
import unittest

TOOLS = pathlib.Path(__file__).resolve().parents[2] / "tools"
sys.path.insert(0, str(TOOLS))
import make_title_font  # noqa: E402

FONT = TOOLS.parent / "tests/homes/plain/themes/default"


class MakeTitleFont(unittest.TestCase):
    def setUp(self):
        self.folder = pathlib.Path(self.enterContext(tempfile.TemporaryDirectory()))
        self.source = next(FONT.glob("*.ttf"))
        self.made = self.folder / "made.ttf"

    def make(self, source=None):
        return subprocess.run([sys.executable, TOOLS / "make_title_font.py", source or self.source, self.made],
                              capture_output=True, text=True, check=False)

    def tables(self, path):
        return make_title_font.read_tables(path.read_bytes())[1]

    def units(self, path):
        return struct.unpack_from(">H", self.tables(path)[b"head"], 18)[0]

    def test_only_the_em_and_the_names_change(self):
        self.assertEqual(self.make().stderr, "")
        before, after = self.tables(self.source), self.tables(self.made)
        self.assertEqual(self.units(self.made), round(self.units(self.source) * 1.15))
        self.assertEqual({tag for tag in after if after[tag] != before.get(tag)}, {b"head", b"name"})
        self.assertEqual(set(before), set(after))
        self.assertIn("Vantorix Titles".encode("utf-16-be"), after[b"name"])

    def test_the_checksums_are_those_of_the_new_file(self):
        self.make()
        font = self.made.read_bytes()
        self.assertEqual(make_title_font.checksum(font), make_title_font.CHECKSUM_OF_FILE)
        for i in range(struct.unpack_from(">H", font, 4)[0]):
            tag, sum_of_table, offset, length = struct.unpack_from(">4sIII", font, 12 + 16 * i)
            if tag != b"head":
                self.assertEqual(make_title_font.checksum(font[offset:offset + length]), sum_of_table, tag)

    def test_it_is_the_same_every_time(self):
        self.make()
        first = self.made.read_bytes()
        self.make()
        self.assertEqual(self.made.read_bytes(), first)

    def test_what_is_no_font_is_named(self):
        damaged = self.folder / "damaged.ttf"
        for content in (b"", b"abc", self.source.read_bytes()[:300]):
            with self.subTest(content[:10]):
                damaged.write_bytes(content)
                answer = self.make(damaged)
                self.assertEqual(answer.returncode, 1)
                self.assertIn(str(damaged), answer.stderr)
                self.assertNotIn("Traceback", answer.stderr)
                self.assertFalse(self.made.exists())


if __name__ == "__main__":
    unittest.main()
