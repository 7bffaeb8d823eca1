"""The jukebox under window managers: it keeps its keys, its place and its size.

Each window manager is optional; its tests are skipped without it.
"""
import contextlib
import ctypes
import os
import shutil
import signal
import subprocess
import time
import unittest

import desk

# Seconds within which a key has to be answered after a disturbance. It takes a few tenths of a second; on a busy machine,
# where other tests run at the same time, it takes longer.
LIMIT = 5

CONFIGURATION = "Vantorix Jukebox - configuration"


# Without a handler of its own, Xlib ends the process at the first error, such as focus for a window that is not shown.
IGNORE_ERROR = ctypes.CFUNCTYPE(ctypes.c_int, ctypes.c_void_p, ctypes.c_void_p)(lambda _display, _error: 0)


class Intruder:
    """Another program on the screen: windows, focus, keyboard."""

    def __init__(self, screen):
        self.x11 = ctypes.CDLL("libX11.so.6")
        self.x11.XSetErrorHandler(IGNORE_ERROR)
        self.x11.XOpenDisplay.restype = ctypes.c_void_p
        self.x11.XDefaultRootWindow.restype = ctypes.c_ulong
        self.x11.XCreateSimpleWindow.restype = ctypes.c_ulong
        self.x11.XInternAtom.restype = ctypes.c_ulong
        self.display = ctypes.c_void_p(self.x11.XOpenDisplay(screen.display.encode()))
        self.root = ctypes.c_ulong(self.x11.XDefaultRootWindow(self.display))

    def flush(self):
        self.x11.XSync(self.display, 0)

    def create_window(self, width=900, height=500):
        """A window that is not shown: the jukebox looks at its own again, and the window manager does nothing."""
        window = ctypes.c_ulong(self.x11.XCreateSimpleWindow(self.display, self.root, 100, 100, width, height, 0,
                                                             ctypes.c_ulong(0), ctypes.c_ulong(0x00ff00)))
        self.flush()
        return window

    def open_window(self):
        window = self.create_window()
        self.x11.XStoreName(self.display, window, b"Intruder")
        self.x11.XMapRaised(self.display, window)
        self.flush()
        return window

    def raise_window(self, window):
        self.x11.XRaiseWindow(self.display, window)
        self.flush()

    def take_focus(self, window):
        self.x11.XSetInputFocus(self.display, window, 1, ctypes.c_ulong(0))
        self.flush()

    def empty_states(self, window):
        state, atom, replace = ctypes.c_ulong(self.x11.XInternAtom(self.display, b"_NET_WM_STATE", 0)), ctypes.c_ulong(4), 0
        self.x11.XChangeProperty(self.display, ctypes.c_ulong(window), state, atom, 32, replace, None, 0)
        self.flush()

    def grab(self):
        """Takes the keyboard; returns whether it was free."""
        status = self.x11.XGrabKeyboard(self.display, self.root, 0, 1, 1, ctypes.c_ulong(0))
        self.flush()
        return status == 0

    def release(self):
        self.x11.XUngrabKeyboard(self.display, ctypes.c_ulong(0))
        self.flush()

    def end(self):
        self.x11.XCloseDisplay(self.display)


class Managed(desk.DeskTest):
    """A screen with the window manager of the class."""

    MANAGER = None

    @classmethod
    def setUpClass(cls):
        if cls.MANAGER is None:
            raise unittest.SkipTest("no window manager")
        for program in (cls.MANAGER[0], cls.MANAGER[-1], "wmctrl", "xprop", "xwininfo"):
            if shutil.which(program) is None:
                raise unittest.SkipTest(f"{program} is not installed")

    def setUp(self):
        super().setUp()
        self.screen.environment["HOME"] = str(self.folder)
        self.start_manager()
        self.other = Intruder(self.screen)
        self.addCleanup(self.other.end)

    def start_manager(self):
        log = open(self.folder / "manager.log", "wb")
        self.addCleanup(log.close)
        self.manager = subprocess.Popen(self.MANAGER, env=self.screen.environment, stdout=log, stderr=log, start_new_session=True)
        self.addCleanup(self.end_manager)
        def manages():
            return b"window id #" in self.screen.run("xprop", "-root", "_NET_SUPPORTING_WM_CHECK")
        desk.wait_until(manages, "the window manager")

    def end_manager(self):
        with contextlib.suppress(ProcessLookupError):
            os.killpg(self.manager.pid, signal.SIGTERM)
        self.manager.wait()

    def is_held(self):
        if self.other.grab():
            self.other.release()
            return False
        return True

    def start_held(self):
        picture = self.start_and_see()
        desk.wait_until(self.is_held, "the keyboard is held")
        self.see_rest("the first frame")
        self.picture = self.screen.picture()
        return picture

    def assert_answers(self, what):
        """Keys are answered within the limit: one that is pressed again and again, as a patron would do."""
        before = self.count_taken()
        begin = time.monotonic()
        while self.count_taken() == before:
            self.assertLess(time.monotonic() - begin, LIMIT, f"keys after {what}")
            self.fail_if_ended(what)
            self.screen.press("Down")
            with contextlib.suppress(AssertionError):
                desk.wait_until(lambda: self.count_taken() > before, "a key", 0.2)
        self.seconds = time.monotonic() - begin

    def geometry(self):
        info = self.screen.run("xwininfo", "-id", str(self.screen.window())).decode()
        def number(name):
            return int(info.split(name + ":")[1].split()[0])
        return (number("Absolute upper-left X"), number("Absolute upper-left Y"), number("Width"), number("Height"))

    def see_whole_screen(self, what):
        desk.wait_until(lambda: self.geometry() == (0, 0, *desk.SCREEN_SIZE), f"the whole screen after {what}", 5)
        green = bytes((0, 255, 0)) * 50
        desk.wait_until(lambda: green not in self.screen.picture(), f"nothing over the jukebox after {what}", 5)


class Tests:
    """What holds under every window manager."""

    # Whether a window above the jukebox is seen as one: a manager of single windows hides the jukebox instead.
    REPORTS_COVER = True

    def test_its_shortcuts_do_not_leave_the_jukebox(self):
        window = self.other.open_window()
        self.start_held()
        self.other.take_focus(window)
        for keys in ("alt+Tab", "alt+F4", "super+d", "ctrl+alt+Right", "ctrl+alt+d", "alt+space"):
            self.screen.press(keys)
        self.assert_answers("the shortcuts")
        self.see_whole_screen("the shortcuts")
        self.assertNotIn(" Fin ", self.log())

    def test_a_window_over_it_is_covered_again(self):
        self.start_held()
        window = self.other.open_window()
        self.assert_answers("a new window")
        self.see_whole_screen("a new window")
        self.other.raise_window(window)
        self.assert_answers("a raised window")
        self.see_whole_screen("a raised window")

    def test_a_window_above_all_others_is_covered_again(self):
        self.start_held()
        self.other.open_window()
        desk.wait_until(lambda: b"Intruder" in self.screen.run("wmctrl", "-l"), "the window is managed")
        # Which of the two gets the focus last is a matter of milliseconds.
        for _ in range(3):
            self.screen.run("wmctrl", "-r", "Intruder", "-b", "add,above,fullscreen")
            self.screen.run("wmctrl", "-a", "Intruder")
            self.assert_answers("a full-screen window")
            self.see_whole_screen("a full-screen window")
            self.screen.run("wmctrl", "-r", "Intruder", "-b", "remove,above,fullscreen")
        if self.REPORTS_COVER:
            desk.wait_until(lambda: any(line.startswith(" : Fenêtre couverte par ") for line in self.log()),
                            "the line in the log")

    def test_the_focus_of_another_window_does_not_take_the_keys(self):
        self.start_held()
        window = self.other.open_window()
        for _ in range(5):
            self.other.take_focus(window)
            self.assert_answers("a stolen focus")

    def test_it_takes_its_place_and_size_back(self):
        self.start_held()
        window = str(self.screen.window())
        commands = (("wmctrl", "-i", "-r", window, "-b", "remove,fullscreen"),
                    ("wmctrl", "-i", "-r", window, "-b", "remove,above"),
                    ("xdotool", "windowsize", window, "640", "360"),
                    ("xdotool", "windowmove", window, "200", "100"),
                    ("wmctrl", "-i", "-r", window, "-b", "add,shaded"))
        for command in commands:
            self.screen.run(*command)
            self.assert_answers(" ".join(command))
            self.see_whole_screen(" ".join(command))

    def test_it_comes_back_when_it_is_hidden(self):
        self.start_held()
        window = str(self.screen.window())
        for command in (("xdotool", "windowminimize", window), ("wmctrl", "-k", "on"), ("xdotool", "windowunmap", window),
                        ("wmctrl", "-s", "1")):
            with contextlib.suppress(subprocess.CalledProcessError):
                self.screen.run(*command)
            time.sleep(0.1)
            self.assert_answers(" ".join(command))
            self.see_whole_screen(" ".join(command))

    def test_it_takes_an_empty_list_of_states(self):
        self.start_held()
        self.other.empty_states(self.screen.window())
        self.other.create_window()
        time.sleep(1)
        self.assert_answers("an empty list of states")
        self.see_whole_screen("an empty list of states")

    def test_dialogs_have_the_keys(self):
        self.start_held()
        self.press_until("F9", lambda: self.screen.focus() == CONFIGURATION, "the configuration")
        shown = self.see_rest("the configuration")
        window = self.other.open_window()
        self.other.take_focus(window)
        time.sleep(1)
        self.press_until("Tab", lambda: self.screen.picture() != shown, "the focus moves in the configuration")
        self.screen.press("Escape")
        self.assert_answers("the configuration")

    def test_the_keyboard_is_given_back(self):
        self.start_held()
        self.signal()
        self.assert_ends(0)
        self.assertFalse(self.is_held())

    def test_it_waits_for_a_keyboard_that_another_program_holds(self):
        self.assertTrue(self.other.grab())
        self.start_and_see()
        time.sleep(1)
        self.other.release()
        desk.wait_until(self.is_held, "the keyboard is held", LIMIT)
        self.assert_answers("the other program's grab")

    def test_switched_off_it_holds_nothing(self):
        desk.edit(self.home / "config.ini", "HoldScreen=true", "HoldScreen=false")
        self.start_and_see()
        time.sleep(1)
        self.assertFalse(self.is_held())

    def test_it_begins_and_ends_with_the_window_manager(self):
        self.end_manager()
        self.start_and_see()
        time.sleep(1)
        self.assertFalse(self.is_held(), "without a window manager")
        self.start_manager()
        desk.wait_until(self.is_held, "the keyboard is held")
        self.end_manager()
        desk.wait_until(lambda: not self.is_held(), "the keyboard is free")


class Openbox(Tests, Managed):
    MANAGER = ("openbox",)


class Xfwm4(Tests, Managed):
    MANAGER = ("dbus-run-session", "--", "xfwm4")


class Matchbox(Tests, Managed):
    MANAGER = ("matchbox-window-manager",)
    REPORTS_COVER = False

    def test_dialogs_have_the_keys(self):
        self.skipTest("this window manager and the toolkit pass the focus of a dialog back and forth for ever")


if __name__ == "__main__":
    unittest.main()
