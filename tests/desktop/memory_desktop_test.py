"""Resources of the real program: the memory used to decode pictures, and what a finished track leaves."""
import os
import struct
import unittest
import zlib

import desk

# Entries of one page of the delivered theme.
PAGE = 20
# The covers decode to 31 MB and less, each to slightly less than the previous one.
LARGEST_SIDE = 2800
SMALLER_BY = 60
# Megabytes. The covers take less than one in the reduced size in which they are kept.
MOST_GROWTH = 10

# Tracks that are started before the first measurement, and in all.
FIRST_TRACKS = 5
TRACKS = 45
# Threads or files of tracks that are being opened or closed during one measurement.
MOST_OPEN = 10


def write_cover(path, side):
    """A square PNG in one colour."""
    def chunk(kind, data):
        return struct.pack(">I", len(data)) + kind + data + struct.pack(">I", zlib.crc32(kind + data))
    rows = (b"\0" + bytes((200, 120, 40)) * side) * side
    path.write_bytes(b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", struct.pack(">IIBBBBB", side, side, 8, 2, 0, 0, 0)) +
                     chunk(b"IDAT", zlib.compress(rows, 1)) + chunk(b"IEND", b""))


class Held(desk.DeskTest):
    """Measures what the jukebox holds now."""

    def private_megabytes(self):
        sizes = desk.memory_of(self.jukebox.pid)
        return (sizes["heap"] + sizes["anon"]) / desk.MEGABYTE

    def threads(self):
        return len(os.listdir(f"/proc/{self.jukebox.pid}/task"))

    def open_files(self):
        return len(os.listdir(f"/proc/{self.jukebox.pid}/fd"))


class Pictures(Held):
    def setUp(self):
        super().setUp()
        # Two pages without a picture, then one with a cover in every slot.
        for number in range(2 * PAGE):
            (self.music / f"Album {number:02}").mkdir()
        for number in range(PAGE):
            album = self.music / f"Cover {number:02}"
            album.mkdir()
            write_cover(album / "folder.png", LARGEST_SIDE - SMALLER_BY * number)

    def see_page(self, last_title):
        """Turns pages until the one that ends with this entry is drawn and no longer changes."""
        def drawn():
            self.fail_if_ended(last_title)
            self.screen.press("Right")
            return any(line.startswith(f" : DrawText ({last_title},") for line in self.log())
        desk.wait_until(drawn, last_title)
        self.see_rest(last_title)

    def test_the_memory_of_large_covers_is_given_back(self):
        self.start_and_see()
        self.see_page("ALBUM 39")
        before = self.private_megabytes()
        self.see_page("COVER 19")
        after = self.private_megabytes()
        self.assertLess(after - before, MOST_GROWTH, f"{before:.1f} MB before the covers, {after:.1f} MB after them")


class Tracks(Held):
    def picked(self):
        return any(line.startswith(" : InfoPath(NumTrack)=") for line in self.log())

    def start_tracks(self, number):
        """Skips to the next track until this many tracks have started."""
        def reached():
            self.fail_if_ended("the next track")
            self.screen.press("F6")
            return self.log().count(" : ValiderMain") >= number
        desk.wait_until(reached, f"{number} tracks")

    def test_a_track_that_is_over_leaves_nothing_behind(self):
        self.start_and_see()
        self.press_until_log("Return", " : Some Artist - First Track.wav")
        self.press_until("Return", self.picked, "the pick")
        self.start_tracks(FIRST_TRACKS)
        memory, threads, files = self.private_megabytes(), self.threads(), self.open_files()
        self.start_tracks(TRACKS)
        self.assertLess(self.private_megabytes() - memory, MOST_GROWTH, f"{memory:.1f} MB before")
        self.assertLess(self.threads() - threads, MOST_OPEN, f"{threads} threads before")
        self.assertLess(self.open_files() - files, MOST_OPEN, f"{files} open files before")


if __name__ == "__main__":
    unittest.main()
