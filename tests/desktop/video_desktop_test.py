"""Videos in the real windows: where their pictures are, what follows them, and what bad files do."""
import array
import contextlib
import os
import pathlib
import shutil
import subprocess
import tempfile
import time
import unittest

import desk
import displays_desktop_test
import observe

# Pixels as they are read from the screen.
RED, LIME, BLUE, YELLOW = 0xFF0000, 0x00FF00, 0x0000FF, 0xFFFF00

# From theme pixels to screen pixels, for the delivered theme on 1280x720.
SCALE = 2 / 3
# The command block, and the place of the small video inside it: 7 theme pixels from its corner, as large as the seven
# rows of 346x47 without 7 pixels at each side.
BLOCK = (987, 480, 240, 240)
SMALL = (991, 485, 221, 210)

DIALOG = "Vantorix Jukebox - configuration"

CLIPS = None


def setUpModule():
    """Makes the clips once. The colours of a clip are exact."""
    global CLIPS
    CLIPS = pathlib.Path(tempfile.mkdtemp(prefix="vantorix-clips-"))
    unittest.addModuleCleanup(shutil.rmtree, CLIPS, ignore_errors=True)
    observe.coloured_clip(CLIPS / "red.avi", "red", seconds=6)
    observe.coloured_clip(CLIPS / "lime.avi", "lime", seconds=45)
    observe.coloured_clip(CLIPS / "wide.avi", "lime", seconds=8, size="320x80")
    observe.coloured_clip(CLIPS / "silent.avi", "blue", seconds=2, sound=False)
    # The last ten seconds are red.
    observe.coloured_clip(CLIPS / "end.avi", "blue", "red", seconds=10)
    observe.make_clip(CLIPS / "moving.avi", "-f", "lavfi", "-i", "testsrc2=s=160x120:r=10:d=60", "-c:v", "mjpeg")
    observe.make_clip(CLIPS / "black.avi", "-f", "lavfi", "-i", "sine=d=2", "-c:a", "pcm_s16le")


class VideoTest(displays_desktop_test.DisplaysTest):
    """A jukebox with videos instead of its music."""

    SCREEN = displays_desktop_test.Monitors

    def setUp(self):
        super().setUp()
        for album in self.music.iterdir():
            shutil.rmtree(album)
        self.eye = observe.Eye(self.screen.display)
        self.addCleanup(self.eye.close)
        self.configure(PlayTransitionSound="false")

    def add(self, *clips):
        """Adds clips, which are listed in this order."""
        for number, clip in enumerate(clips):
            os.link(CLIPS / clip, self.music / f"The Band - Song {number:02}{pathlib.Path(clip).suffix}")

    def pixels(self, left=0, top=0, width=None, height=None):
        """Pixels of the screen as numbers, row by row."""
        width, height = width or self.screen.SIZE[0], height or self.screen.SIZE[1]
        data = bytearray(self.eye.part(left, top, width, height))
        data[3::4] = bytes(len(data) // 4)
        return array.array("I", bytes(data))

    def box(self, colour):
        """The smallest box around all pixels of a colour, and whether it is full of them."""
        width, height = self.screen.SIZE
        pixels = self.pixels()
        rows = [pixels[width * y:width * (y + 1)] for y in range(height)]
        tops = [y for y in range(height) if colour in rows[y]]
        if not tops:
            return None
        left = min(rows[y].index(colour) for y in tops)
        right = max(width - rows[y][::-1].index(colour) for y in tops)
        box = (left, tops[0], right - left, tops[-1] - tops[0] + 1)
        return box if pixels.count(colour) == box[2] * box[3] else (*box, "not full")

    def see_box(self, colour, box, what):
        seen = [None]

        def same():
            seen[0] = self.box(colour)
            return seen[0] == box
        try:
            self.see(same, what)
        except AssertionError as error:
            raise AssertionError(f"{error}; seen at {seen[0]}, expected at {box}") from None

    def see_block(self, block, what):
        self.see(lambda: self.pixels(*BLOCK) == block, what)

    def take(self, key):
        """Presses a key until the jukebox has accepted it: keys during a running handler are dropped."""
        before = self.taken()
        self.press_until(key, lambda: self.taken() > before, f"{key} is taken")

    def taken(self):
        return sum(line.startswith(" NumTrack : ") for line in self.log())

    def pick_next(self, number=1):
        """Picks the entries below the selected one."""
        for _ in range(number):
            self.take("Down")
            self.take("Return")

    def seek_to_end(self):
        """Moves to ten seconds before the end of the video."""
        def near():
            with contextlib.suppress(StopIteration):
                left = next(line for line in reversed(self.log()) if line.startswith(" : DrawText (00:"))
                return left < " : DrawText (00:11"
        self.press_until("f", near, "the end of the video")

    def start_and_pick(self):
        self.start_and_see()
        block = self.pixels(*BLOCK)
        self.take("Return")
        return block

    def is_open(self, name):
        """Whether the jukebox has opened a file whose name ends with this."""
        files = pathlib.Path(f"/proc/{self.jukebox.pid}/fd")
        return any(os.path.realpath(file).endswith(name) for file in files.iterdir())

    def assert_no_errors(self):
        self.assertEqual(self.told(), "")
        self.assertEqual([line for line in self.log() if "Erreur" in line], [])


class Resources(VideoTest):
    """What videos leave behind in the process."""

    KINDS = {"A.avi": ["-c:v", "mpeg4", "-c:a", "mp2"], "B.mpg": ["-c:v", "mpeg1video", "-c:a", "mp2"],
             "C.mpg": ["-c:v", "mpeg2video", "-c:a", "ac3", "-f", "vob"], "D.avi": ["-c:v", "mjpeg", "-c:a", "pcm_s16le"],
             "E.avi": ["-c:v", "mpeg4", "-an"]}
    # Videos that have started before the two measurements. The heaps have grown to their size by the twentieth.
    FIRST = int(os.environ.get("VANTORIX_FIRST_VIDEOS", "20"))
    ALL = int(os.environ.get("VANTORIX_VIDEOS", "40"))
    # Threads or files of videos that are being opened or closed during one measurement.
    MOST_OPEN = 12

    def test_a_video_that_is_over_leaves_nothing_behind(self):
        for name, codecs in self.KINDS.items():
            observe.make_clip(self.music / f"The Band - {name}", "-f", "lavfi", "-i", "testsrc2=size=320x240:rate=25:d=2",
                              "-f", "lavfi", "-i", "sine=d=2", *codecs)
        shutil.copy(CLIPS / "moving.avi", self.music / "A Band - Long.avi")
        self.start_and_pick()
        self.pick_next(len(self.KINDS))
        first = self.after_videos(self.FIRST)
        last = self.after_videos(self.ALL)
        report = f"{first} and {last}: bytes, threads, open files after {self.FIRST} and {self.ALL} videos"
        self.assertLess(last[0], first[0] * 1.02, report)
        self.assertLess(last[1] - first[1], self.MOST_OPEN, report)
        self.assertLess(last[2] - first[2], self.MOST_OPEN, report)
        self.assert_no_errors()

    def after_videos(self, number):
        """The least that the process has held during one turn of the queue, once this many videos have started."""
        held = []

        def reached():
            self.fail_if_ended("the next video")
            before = self.started()
            self.take("F6")
            if before >= number:
                held.append(observe.resources(self.jukebox.pid))
            return len(held) > len(self.KINDS)
        desk.wait_until(reached, f"{number} videos")
        return tuple(map(min, zip(*held)))

    def started(self):
        return sum(line.startswith(" : ValiderMain") for line in self.log())


def within(place, shape, full=False):
    """The picture of this shape in its place: as large as fits, in the middle to whole pixels."""
    left, top, width, height = place
    across, down = min((width, width * shape[1] / shape[0]), (height * shape[0] / shape[1], height))
    across, down = int(across), int(down)
    free = height - down
    return left + (width - across) // 2, top + (free // 2 if full else round(free / 2)), across, down


class Views(VideoTest):
    def test_small_and_full_view(self):
        """Grows after the idle time, shrinks at a key, and the frame around it stays whole."""
        self.add("lime.avi", *["red.avi"] * 24)
        block = self.start_and_pick()
        small = within(SMALL, (160, 120))
        self.see_box(LIME, small, "the small video")
        self.see_only_video_in(block, small)
        full = within((0, 0, *self.screen.SIZE), (160, 120), full=True)
        self.see_box(LIME, full, "the full video")
        pixels = self.pixels()
        self.assertEqual(pixels.count(LIME) + pixels.count(0), len(pixels), "the full video has something besides black")
        # The first picture after the change has the whole frame and the small video.
        watch = observe.Watch(self.screen.display, 200, 300, 1, 1)
        self.addCleanup(watch.end)
        self.take("Down")
        self.see(lambda: len(watch.changes) > 1, "the frame")
        time.sleep(0.3)
        self.assertEqual(len(watch.end()), 2, "between the full video and the frame there was something else")
        self.assertEqual(self.box(LIME), small)
        self.see_only_video_in(block, small)
        # Page turns, below the video.
        for key in ("Right", "Right"):
            turns = self.log().count(" : PageAnim")
            self.press_until(key, lambda before=turns: self.log().count(" : PageAnim") > before, "the page turn")
            self.assertEqual(self.box(LIME), small)
        # A dialog covers a part of it.
        self.press_until("F9", lambda: self.screen.window_place(DIALOG), "the dialog")
        left, _, width, _ = self.screen.window_place(DIALOG)
        edge = left + width
        self.assertLess(edge, small[0] + small[2])
        self.see_box(LIME, (edge, small[1], small[0] + small[2] - edge, small[3]), "the video beside the dialog")
        self.screen.press("Escape")
        self.see_box(LIME, small, "the small video after the dialog")
        self.seek_to_end()
        self.see(lambda: self.box(LIME) is None, "the end, four seconds before that of the file")
        self.see_block(block, "the block without the video")
        self.assert_no_errors()

    def see_only_video_in(self, block, small):
        """Checks that the video has black beside it, and that the command block is unchanged around both."""
        pixels = self.pixels(*BLOCK)
        strip = (SMALL[0], small[1], SMALL[2], small[3])
        outside = [pixels[i] == block[i] or self.inside(i, strip) for i in range(len(pixels))]
        self.assertTrue(all(outside), f"{outside.count(False)} pixels of the command block have changed")
        beside = [pixels[i] for i in range(len(pixels)) if self.inside(i, strip) and not self.inside(i, small)]
        self.assertEqual(beside.count(0), len(beside), "something besides black is beside the video")

    @staticmethod
    def inside(i, place):
        x, y = BLOCK[0] + i % BLOCK[2], BLOCK[1] + i // BLOCK[2]
        return place[0] <= x < place[0] + place[2] and place[1] <= y < place[1] + place[3]

    def test_a_wide_picture_is_in_the_middle(self):
        self.add("wide.avi")
        self.start_and_pick()
        self.see_box(LIME, within(SMALL, (320, 80)), "the wide picture")
        self.assert_no_errors()

    def test_pause_stop_and_seek(self):
        self.add("moving.avi", "end.avi")
        self.start_and_pick()
        self.pick_next()
        self.see(lambda: not self.rests(), "the video")
        self.press_until("F5", self.rests, "the pause")
        self.press_until("F4", lambda: not self.rests(), "the picture that follows")
        self.take("F6")
        self.see(lambda: self.box(BLUE), "the next video")
        self.take("f")
        self.see(lambda: self.box(RED), "ten seconds before its end")
        # Stop shows the beginning, and play starts there.
        self.press_until("F3", lambda: self.box(BLUE), "the beginning")
        self.assertTrue(self.rests())
        self.press_until("F4", lambda: self.box(RED), "the second half")
        self.assert_no_errors()

    def rests(self):
        """Whether the small video stays as it is for half a second."""
        before = self.pixels(*SMALL)
        with contextlib.suppress(AssertionError):
            return not desk.wait_until(lambda: self.pixels(*SMALL) != before, "a change", 0.5)
        return True

    def test_the_end_of_a_video_starts_the_next_entry(self):
        """Also videos without sound, and without a picture. Nothing of a video stays."""
        self.add("red.avi", "silent.avi", "black.avi", "wide.avi")
        block = self.start_and_pick()
        self.see(lambda: self.box(RED), "the first video")
        self.pick_next(3)
        self.see_box(BLUE, within(SMALL, (160, 120)), "the video without sound")
        self.see(lambda: desk.is_black(self.pixels(*SMALL)), "the video without a picture")
        self.see(lambda: self.box(LIME), "the last video")
        self.see_block(block, "the block without a video")
        self.assert_no_errors()

    def test_the_big_cover_has_the_place_of_the_small_video(self):
        self.configure(ShowBigCover="true")
        self.add("lime.avi", "red.avi")
        cover = self.music / "The Band - Song 01.jpg"
        subprocess.run(["convert", "-size", "300x300", "xc:yellow", str(cover)], check=True)
        self.start_and_pick()
        small = within(SMALL, (160, 120))
        self.see_box(LIME, small, "the small video")
        self.press_until("Down", lambda: self.box(LIME) is None, "the cover")
        self.assertIn(YELLOW, self.pixels(*SMALL))
        self.press_until("Up", lambda: self.box(LIME), "the video again")
        self.see_box(LIME, small, "the small video again")
        self.assert_no_errors()


class BadFiles(VideoTest):
    def add_bad(self, name, *arguments):
        path = self.music / f"The Band - {name}"
        observe.make_clip(path, *arguments)
        return path

    def test_refused_files_are_named_in_the_log(self):
        path = self.music / "The Band - Bad.avi"
        huge = self.folder / "huge.avi"
        observe.make_clip(huge, "-f", "lavfi", "-i", "color=size=8192x8192:rate=1:d=1,format=yuvj420p", "-c:v", "mjpeg")
        for content, reason in ((b"", "the file is empty"), (b"text\n" * 1000, "text"), (huge.read_bytes(), "more than")):
            path.write_bytes(content)
            self.start_and_see()
            self.screen.press("Return")
            error = f" : Erreur 5 (Invalid procedure call or argument): {path}: "
            line = self.see(lambda: [line for line in self.log() if line.startswith(error)], f"error 5: {reason}")[-1]
            self.assertIn(reason, line)
            self.signal()
            self.assert_ends(0)
            (self.home / "vantorix.log").unlink()

    def test_damaged_files_end_and_the_queue_goes_on(self):
        film = ["-f", "lavfi", "-i", "testsrc2=size=160x120:rate=25:d=3", "-f", "lavfi", "-i", "sine=d=3"]
        whole = self.folder / "whole.avi"
        observe.make_clip(whole, *film, "-c:v", "mpeg4", "-c:a", "mp2")
        (self.music / "The Band - A.avi").write_bytes(whole.read_bytes()[:whole.stat().st_size // 2])
        self.add_bad("B.avi", "-f", "lavfi", "-i", "sine=d=2", "-f", "wav")
        pixel = "color=red:s=16x16:d=1,format=rgb24,crop=1:1"
        self.add_bad("C.avi", "-f", "lavfi", "-i", pixel, "-c:v", "rawvideo", "-pix_fmt", "bgr24")
        mpeg = ["-c:v", "mpeg1video", "-c:a", "mp2"]
        changing = self.add_bad("D.mpg", *film, *mpeg)
        other = self.folder / "other.mpg"
        observe.make_clip(other, "-f", "lavfi", "-i", "testsrc2=size=160x320:rate=25:d=2", *film[4:], *mpeg)
        with open(changing, "ab") as file:
            file.write(other.read_bytes())
        shutil.copy(whole, self.music / "The Band - E.avi")
        shutil.copy(CLIPS / "moving.avi", self.music / "A Band - Long.avi")
        self.add("wide.avi")
        self.start_and_pick()
        self.pick_next(6)
        self.take("F6")
        self.see(lambda: self.is_open("E.avi"), "the file that will be deleted")
        (self.music / "The Band - E.avi").unlink()
        self.see(lambda: self.box(LIME), "the last video")
        self.assert_no_errors()


class Portrait(VideoTest):
    """On a screen that is higher than wide."""

    class SCREEN(displays_desktop_test.Monitors):
        SIZE = (720, 1280)

    def test_small_and_full_view(self):
        self.configure(Orientation="vertical")
        self.add("lime.avi")
        self.start()
        self.see_window(displays_desktop_test.WINDOW, (0, 0, 720, 1280))
        self.see_picture((0, 0, 720, 300))
        self.take("Return")
        self.see_box(LIME, within((271, 796, 171, 162), (160, 120)), "the small video")
        self.see_box(LIME, within((0, 0, 720, 1280), (160, 120), full=True), "the full video")
        self.assert_no_errors()


class SecondWindow(VideoTest):
    """On the second one of two monitors."""

    SCREEN = displays_desktop_test.TwoMonitors.SCREEN

    def test_the_video_fills_the_second_window(self):
        self.screen.paint_root("red")
        self.configure(VideoPositionLeft="1281")
        self.add("lime.avi", "red.avi")
        self.start_at((0, 0, 1280, 720))
        self.see_window(displays_desktop_test.VIDEO, (1281, 50, 799, 600))
        self.take("Return")
        self.see_box(LIME, within((1281, 50, 799, 600), (160, 120), full=True), "the video in its window")
        # Nothing is left in the window once the last video has ended, four seconds before its end.
        self.seek_to_end()
        self.see(lambda: self.box(LIME) is None, "the end")
        self.assertTrue(desk.is_black(self.screen.part(1281, 50, 799, 600)))
        self.assert_no_errors()


if __name__ == "__main__":
    unittest.main()
