"""Display modes and several monitors: what the jukebox sets and restores, and what its windows cover.

Display modes need Xorg with its dummy driver; without it these tests are skipped. A second monitor alone needs only Xvfb.
"""
import contextlib
import os
import pathlib
import re
import shutil
import subprocess
import unittest

import desk

DRIVER = pathlib.Path("/usr/lib/xorg/modules/drivers/dummy_drv.so")

# No input devices, no other cards, no switching of consoles.
CONFIGURATION = """
Section "ServerFlags"
  Option "AutoAddDevices" "false"
  Option "AutoAddGPU" "false"
  Option "DontVTSwitch" "true"
EndSection
Section "Device"
  Identifier "card"
  Driver "dummy"
  VideoRam 256000
EndSection
Section "Monitor"
  Identifier "monitor"
  HorizSync 5.0-1000.0
  VertRefresh 5.0-1000.0
  Modeline "1920x1080" 148.50 1920 2008 2052 2200 1080 1084 1089 1125
EndSection
Section "Screen"
  Identifier "screen"
  Device "card"
  Monitor "monitor"
  DefaultDepth 24
  SubSection "Display"
    Depth 24
    Modes "1920x1080"
    Virtual 3840 2160
  EndSubSection
EndSection
"""

FIRST, SECOND, THIRD = "DUMMY0", "DUMMY1", "DUMMY2"
WINDOW = "Vantorix Jukebox"
VIDEO = "Vantorix Jukebox - video"
DIALOG = "Vantorix Jukebox - configuration"


class Monitors(desk.Screen):
    """An X server whose desktop has several monitors."""

    def monitors(self):
        """Place and refresh rate of every monitor that is on, by its output; None for a rate that is unknown."""
        found, output = {}, None
        for line in self.run("xrandr", "--current").decode().splitlines():
            head = re.match(r"(\S+) (?:dis)?connected(?: primary)? (\d+)x(\d+)\+(\d+)\+(\d+)", line)
            rate = re.search(r"([\d.]+) ?\*", line)
            if head:
                output = head[1]
                width, height, left, top = map(int, head.groups()[1:])
                found[output] = (left, top, width, height, None)
            elif rate and output:
                found[output] = (*found[output][:4], float(rate[1]))
            elif not line.startswith(" "):
                output = None
        return found

    def place(self, output):
        return self.monitors()[output][:4]

    def desktop(self):
        """The size of the desktop."""
        width, height = re.search(rb"current (\d+) x (\d+)", self.run("xrandr", "--current")).groups()
        return int(width), int(height)

    def window_place(self, name):
        """The place of the window that is visible under this name; None if there is none."""
        with contextlib.suppress(subprocess.CalledProcessError):
            numbers = self.run("xdotool", "search", "--onlyvisible", "--name", f"^{name}$").split()
            lines = self.run("xdotool", "getwindowgeometry", "--shell", numbers[0].decode()).decode().split()
            values = dict(line.split("=") for line in lines)
            return tuple(int(values[key]) for key in ("X", "Y", "WIDTH", "HEIGHT"))
        return None

    def part(self, left, top, width, height):
        """The pixels of a part of the desktop, row by row, three bytes each."""
        across, _, pixels = self.whole()
        rows = (pixels[3 * (across * y + left):3 * (across * y + left + width)] for y in range(top, top + height))
        return b"".join(rows)

    def paint_root(self, colour):
        self.run("xsetroot", "-solid", colour)


class DummyMonitors(Monitors):
    """Outputs with modes that are connected to nothing."""

    def command(self, folder):
        (folder / "xorg.conf").write_text(CONFIGURATION, encoding="ascii")
        return ["Xorg", "-config", str(folder / "xorg.conf"), "-logfile", str(folder / "xorg.log"), "-novtswitch", "-sharevts"]

    def set_mode(self, output, size, *options):
        if size not in self.run("xrandr").decode().split(f"{output} ", 1)[1].split("DUMMY", 1)[0]:
            self.run("xrandr", "--addmode", output, size)
        self.run("xrandr", "--output", output, "--mode", size, *options)


class DisplaysTest(desk.DeskTest):
    """Tests on several monitors."""

    def configure(self, **values):
        for key, value in values.items():
            config = self.home / "config.ini"
            old = next(line for line in config.read_text(encoding="utf-8").splitlines() if line.startswith(f"{key}="))
            desk.edit(config, f"\n{old}\n", f"\n{key}={value}\n")

    def see(self, condition, what):
        def fulfilled():
            self.fail_if_ended(what)
            return condition()
        return desk.wait_until(fulfilled, what)

    def see_window(self, name, place):
        self.see(lambda: self.screen.window_place(name) == place, f"{name} at {place}")

    def see_picture(self, place):
        """Waits until a place is not black and at rest, and returns its picture."""
        def rest():
            picture = self.screen.part(*place)
            return picture if not desk.is_black(picture) and picture == self.screen.part(*place) else None
        return self.see(rest, f"a picture at {place}")

    def tracks(self, place):
        """The part of a screen that shows tracks; the rest has lines that blink."""
        left, top, width, height = place
        return left, top, width * 6 // 10, height // 2

    def start_at(self, place):
        """Starts the jukebox and returns the picture of its tracks."""
        self.start()
        self.see_window(WINDOW, place)
        return self.see_picture(self.tracks(place))

    def see_tracks(self, place, picture, what):
        self.see(lambda: self.screen.part(*self.tracks(place)) == picture, what)

    def quit_by_key(self):
        self.screen.press("Escape")
        self.assert_ends(0)


class Displays(DisplaysTest):
    """On a server with display modes."""

    SCREEN = DummyMonitors

    @classmethod
    def setUpClass(cls):
        if not shutil.which("Xorg") or not DRIVER.exists():
            print("skipped: Xorg with its dummy driver is not installed", flush=True)
            raise unittest.SkipTest("Xorg with its dummy driver is not installed")

    def test_the_quit_key_restores_mode_rate_and_neighbours(self):
        self.screen.set_mode(FIRST, "1024x768")
        fitted = self.start_at((0, 0, 1024, 768))
        self.quit_by_key()
        # The list of the monitor begins with another rate of this size.
        self.screen.set_mode(FIRST, "1280x1024", "--rate", "75.02")
        self.screen.set_mode(SECOND, "800x600", "--right-of", FIRST)
        before = self.screen.monitors()
        self.assertEqual(before[FIRST], (0, 0, 1280, 1024, 75.02))
        self.configure(Fullscreen="true", FullscreenSize="1024x768 32bits")
        self.assertEqual(self.start_at((0, 0, 1024, 768)), fitted)
        self.assertEqual(self.screen.place(FIRST), (0, 0, 1024, 768))
        self.assertEqual(self.screen.place(SECOND), (1024, 0, 800, 600))
        self.assertEqual(self.screen.desktop(), (1824, 768))
        self.quit_by_key()
        self.assertEqual(self.screen.monitors(), before)
        self.assertEqual(self.screen.desktop(), (2080, 1024))

    def test_everything_else_leaves_the_mode(self):
        self.screen.set_mode(FIRST, "1280x1024", "--rate", "75.02")
        self.configure(Fullscreen="true", FullscreenSize="1024x768 32bits")
        for end in (self.quit_by_menu, self.signal, lambda: desk.request_close(self.screen, self.screen.window())):
            self.start_at((0, 0, 1024, 768))
            end()
            self.assert_ends(0)
            self.assertEqual(self.screen.place(FIRST), (0, 0, 1024, 768))
            self.screen.set_mode(FIRST, "1280x1024", "--rate", "75.02")
        self.configure(Theme="missing")
        self.start()
        self.see(lambda: "stopped by run-time error" in self.told(), "the error")
        # The page takes no keys at first.
        desk.wait_until(lambda: self.jukebox.poll() is not None or self.screen.press("Return"), "the end")
        self.assert_ends(1)
        self.assertEqual(self.screen.place(FIRST), (0, 0, 1024, 768))

    def quit_by_menu(self):
        # The row above the first one is the last one.
        for key in ("Tab", "Tab", "Tab", "Up", "Return"):
            self.take(key)

    def test_a_larger_mode_moves_the_monitors_and_the_video_window_is_beside_it(self):
        self.screen.set_mode(FIRST, "1024x768")
        self.screen.set_mode(SECOND, "800x600", "--right-of", FIRST)
        self.screen.set_mode(THIRD, "640x480", "--below", FIRST)
        before = self.screen.monitors()
        self.configure(Fullscreen="true", FullscreenSize="1600x1200 24bits", VideoPositionLeft="1601")
        self.screen.paint_root("red")
        self.start_at((0, 0, 1600, 1200))
        # The first one of the five rates that the monitor lists for this size.
        self.assertEqual(self.screen.monitors()[FIRST], (0, 0, 1600, 1200, 85.0))
        self.assertEqual(self.screen.place(SECOND), (1600, 0, 800, 600))
        self.assertEqual(self.screen.place(THIRD), (0, 1200, 640, 480))
        self.assertEqual(self.screen.desktop(), (2400, 1680))
        self.see_window(VIDEO, (1601, 0, 799, 600))
        self.assertTrue(desk.is_black(self.screen.part(1601, 0, 799, 600)))
        self.quit_by_key()
        self.assertEqual(self.screen.monitors(), before)

    def test_a_mode_that_is_set_already_keeps_its_rate(self):
        self.screen.set_mode(FIRST, "1280x1024", "--rate", "60.02")
        self.configure(Fullscreen="true", FullscreenSize="1280x1024 32bits")
        self.start_at((0, 0, 1280, 1024))
        self.assertEqual(self.screen.monitors()[FIRST], (0, 0, 1280, 1024, 60.02))
        self.quit_by_key()
        self.assertEqual(self.screen.monitors()[FIRST], (0, 0, 1280, 1024, 60.02))

    def test_a_mode_that_the_monitor_lacks_changes_nothing(self):
        self.screen.set_mode(SECOND, "800x600", "--right-of", FIRST)
        before = self.screen.monitors()
        for size in ("1111x777 32bits", "1024x768 16bits"):
            self.configure(Fullscreen="true", FullscreenSize=size)
            self.start()
            self.see_picture((0, 0, 1920, 1080))
            self.assertNotIn(" : Fin chargement config ", self.log(), "start-up waits for the message to be closed")
            self.press_until_log("Return", " : Fin chargement config ")
            self.see_window(WINDOW, (0, 0, 1920, 1080))
            self.assertEqual(self.screen.monitors(), before)
            self.end_by_force()

    def test_a_mode_that_the_server_refuses_changes_nothing(self):
        # More pixels than the card has memory for.
        self.screen.run("xrandr", "--newmode", "huge", "4000", "9000", "9100", "9200", "9300", "9000", "9100", "9200", "9300")
        self.screen.run("xrandr", "--addmode", FIRST, "huge")
        self.screen.set_mode(SECOND, "800x600", "--right-of", FIRST)
        before, desktop = self.screen.monitors(), self.screen.desktop()
        self.configure(Fullscreen="true", FullscreenSize="9000x9000 32bits")
        self.start_at((0, 0, 1920, 1080))
        self.assertIn(" : Mode 9000 x 9000 refusé par le serveur X", self.log())
        self.assertEqual(self.screen.monitors(), before)
        self.assertEqual(self.screen.desktop(), desktop)

    def test_the_windows_follow_monitors_that_go_and_come_back(self):
        self.screen.set_mode(FIRST, "1024x768")
        self.screen.set_mode(SECOND, "800x600", "--right-of", FIRST)
        self.configure(VideoPositionLeft="1025")
        self.screen.paint_root("red")
        picture = self.start_at((0, 0, 1024, 768))
        self.see_window(VIDEO, (1025, 0, 799, 600))
        self.screen.run("xrandr", "--output", SECOND, "--off")
        self.see_window(WINDOW, (0, 0, 1024, 768))
        self.screen.set_mode(SECOND, "800x600", "--right-of", FIRST)
        self.see_window(VIDEO, (1025, 0, 799, 600))
        self.see(lambda: desk.is_black(self.screen.part(1025, 0, 799, 600)), "the video window on its monitor")
        self.see_tracks((0, 0, 1024, 768), picture, "the tracks on the monitor that stayed")
        # Without the first monitor the second one is the first, and moves to the corner.
        self.screen.run("xrandr", "--output", FIRST, "--off")
        self.see_window(WINDOW, (0, 0, 800, 600))
        self.screen.set_mode(FIRST, "1024x768", "--pos", "0x0", "--primary", "--output", SECOND, "--pos", "1024x0")
        self.see_window(WINDOW, (0, 0, 1024, 768))
        self.see_window(VIDEO, (1025, 0, 799, 600))
        self.see_tracks((0, 0, 1024, 768), picture, "the tracks on the monitor that came back")

    def test_a_dialog_fits_the_theme_to_a_mode_that_was_changed_by_hand(self):
        self.screen.set_mode(FIRST, "1280x720")
        fitted = self.start_at((0, 0, 1280, 720))
        self.quit_by_key()
        self.screen.set_mode(FIRST, "1024x768")
        self.start_at((0, 0, 1024, 768))
        self.screen.set_mode(FIRST, "1280x720")
        self.see_window(WINDOW, (0, 0, 1280, 720))
        self.press_until("F9", lambda: self.screen.focus() == DIALOG, "the focus of the configuration")
        self.screen.press("Escape")
        self.see_tracks((0, 0, 1280, 720), fitted, "the theme in the new mode")

    def test_the_first_monitor_may_be_anywhere(self):
        self.screen.set_mode(FIRST, "1024x768")
        self.screen.set_mode(SECOND, "800x600", "--left-of", FIRST)
        self.screen.paint_root("red")
        self.assertEqual(self.screen.place(FIRST), (800, 0, 1024, 768))
        self.configure(Fullscreen="true", FullscreenSize="1280x720 32bits")
        self.start_at((800, 0, 1280, 720))
        self.assertEqual(self.screen.place(SECOND), (0, 0, 800, 600))


    def test_the_routines_for_two_monitors(self):
        self.screen.set_mode(FIRST, "1024x768")
        self.screen.set_mode(SECOND, "800x600", "--right-of", FIRST)
        ended = subprocess.run([os.environ["X11_SCREEN_TEST"], "--gtest_filter=X11Layout.*"], env=self.screen.environment,
                               capture_output=True, text=True, timeout=desk.PATIENCE)
        self.assertIn("[  PASSED  ] 3 tests", ended.stdout)
        self.assertEqual(ended.returncode, 0, ended.stdout)


class TwoMonitors(DisplaysTest):
    """On a server with one large screen that is divided into two monitors."""

    class SCREEN(Monitors):
        SIZE = (2080, 720)

        def __init__(self, folder):
            super().__init__(folder)
            self.run("xrandr", "--setmonitor", "left", "1280/338x720/190+0+0", "screen")
            self.run("xrandr", "--setmonitor", "right", "800/211x600/158+1280+50", "none")

    def test_the_windows_are_on_their_monitors(self):
        self.screen.paint_root("red")
        self.configure(VideoPositionLeft="1281")
        self.start_at((0, 0, 1280, 720))
        self.see_window(VIDEO, (1281, 50, 799, 600))
        self.assertTrue(desk.is_black(self.screen.part(1281, 50, 799, 600)))
        red = bytes((255, 0, 0))
        self.assertEqual(self.screen.part(1280, 0, 1, 720), red * 720)
        self.assertEqual(self.screen.part(1281, 0, 799, 50), red * 799 * 50)

    def test_a_video_fills_the_window_on_the_second_monitor(self):
        subprocess.run(["ffmpeg", "-v", "error", "-f", "lavfi", "-i", "color=c=0x0000FF:s=320x240:r=25:d=20", "-c:v", "mpeg4",
                        str(self.music / "Blue.avi")], check=True, timeout=desk.PATIENCE)
        self.configure(VideoPositionLeft="1281")
        self.start_at((0, 0, 1280, 720))
        for key in ("Down", "Down", "Return"):
            self.take(key)
        def is_blue():
            red, green, blue = self.screen.part(1281 + 400, 50 + 300, 1, 1)
            return blue > 200 and red < 50 and green < 50
        self.see(is_blue, "the video in the middle of the second monitor")
        # 4:3, as the window: only the last column and row may be black.
        self.assertFalse(desk.is_black(self.screen.part(1283, 60, 1, 580)))
        self.assertFalse(desk.is_black(self.screen.part(2076, 60, 1, 580)))
        self.quit_by_key()

    def test_at_the_exact_edge_there_is_no_window(self):
        self.configure(VideoPositionLeft="1280")
        self.start_at((0, 0, 1280, 720))
        self.assertIsNone(self.screen.window_place(VIDEO))


if __name__ == "__main__":
    unittest.main()
