"""A virtual screen with the real jukebox on it, for tests that press keys and check the picture."""
import contextlib
import ctypes
import os
import pathlib
import select
import shutil
import signal
import subprocess
import tempfile
import time
import unittest
import wave

from pixels import Pixels, ScreenError

ROOT = pathlib.Path(__file__).resolve().parent.parent.parent
PROGRAM = os.environ.get("VANTORIX", str(ROOT / "build" / "vantorix"))
# The time limit in seconds for every wait; only a fault reaches it.
PATIENCE = int(os.environ.get("VANTORIX_PATIENCE", "60"))

SCREEN_SIZE = (1280, 720)

MEGABYTE = 1 << 20


def wait_until(condition, what, patience=PATIENCE):
    """Waits until the condition is true and returns its result; fails with a message after `patience` seconds."""
    end = time.monotonic() + patience
    while True:
        answer = condition()
        if answer:
            return answer
        if time.monotonic() > end:
            raise AssertionError(f"{what}: not within {patience} s")
        time.sleep(0.02)


class Screen:
    """A private X server, which ends with the test."""

    SIZE = SCREEN_SIZE

    def __init__(self, folder):
        self.pixels = None
        reading, writing = os.pipe()
        self.log = open(folder / "server.log", "wb")
        self.server = subprocess.Popen([*self.command(folder), "-displayfd", str(writing), "-nolisten", "tcp", "-noreset"],
                                       pass_fds=[writing], stdout=self.log, stderr=self.log)
        os.close(writing)
        with os.fdopen(reading) as number:
            ready, _, _ = select.select([number], [], [], PATIENCE)
            answer = number.readline().strip() if ready else ""
            if not answer:
                self.end()
                raise AssertionError("the X server did not start:\n" + (folder / "server.log").read_text(errors="replace"))
            self.display = ":" + answer
        self.environment = {**os.environ, "DISPLAY": self.display, "XDG_RUNTIME_DIR": str(folder)}
        for unwanted in ("QT_QPA_PLATFORM", "WAYLAND_DISPLAY"):
            self.environment.pop(unwanted, None)

    def command(self, _folder):
        """The server's command line, without what every server gets."""
        width, height = self.SIZE
        return ["Xvfb", "-screen", "0", f"{width}x{height}x24"]

    def end(self):
        if self.pixels:
            self.pixels.close()
        self.server.terminate()
        self.server.wait()
        self.log.close()

    def run(self, *command):
        return subprocess.run(command, env=self.environment, capture_output=True, check=True, timeout=PATIENCE).stdout

    def press(self, *keys):
        self.run("xdotool", "key", *keys)

    def click(self, x, y):
        self.run("xdotool", "mousemove", str(x), str(y), "click", "1")

    def pointer(self):
        """The pixels of the pointer, four bytes each; none of them is set while it is hidden."""
        return pointer_of(self.display)

    def whole(self):
        """Width and height of the screen, and its pixels row by row, three bytes each."""
        if not self.pixels:
            self.pixels = Pixels(self.display)
        # A screen that becomes smaller during this has no picture of its old size.
        for _ in range(10):
            with contextlib.suppress(ScreenError):
                width, height = self.pixels.size()
                return width, height, self.pixels.picture(width, height)
        raise AssertionError("no screenshot could be taken")

    def picture(self):
        """The pixels of the whole screen, row by row, three bytes each."""
        return self.whole()[2][-3 * SCREEN_SIZE[0] * SCREEN_SIZE[1]:]

    def window(self, name="Vantorix Jukebox"):
        return int(self.run("xdotool", "search", "--name", f"^{name}$").split()[0])

    def focus(self):
        """The name of the window with the keyboard focus; empty while there is none."""
        with contextlib.suppress(subprocess.CalledProcessError):
            return self.run("xdotool", "getwindowfocus", "getwindowname").decode().strip()
        return ""


class CursorImage(ctypes.Structure):
    """XFixesCursorImage of Xfixes.h."""
    _fields_ = [("x", ctypes.c_short), ("y", ctypes.c_short), ("width", ctypes.c_ushort), ("height", ctypes.c_ushort),
                ("xhot", ctypes.c_ushort), ("yhot", ctypes.c_ushort), ("serial", ctypes.c_ulong),
                ("pixels", ctypes.POINTER(ctypes.c_ulong))]


def pointer_of(name):
    """The pixels of the pointer that a server shows."""
    x11 = ctypes.CDLL("libX11.so.6")
    fixes = ctypes.CDLL("libXfixes.so.3")
    x11.XOpenDisplay.restype = ctypes.c_void_p
    fixes.XFixesGetCursorImage.restype = ctypes.POINTER(CursorImage)
    display = ctypes.c_void_p(x11.XOpenDisplay(name.encode()))
    version = [ctypes.byref(ctypes.c_int()), ctypes.byref(ctypes.c_int())]
    assert fixes.XFixesQueryVersion(display, *version)
    image = fixes.XFixesGetCursorImage(display).contents
    pixels = b"".join((image.pixels[i] & 0xFFFFFFFF).to_bytes(4, "little") for i in range(image.width * image.height))
    x11.XCloseDisplay(display)
    return pixels


class ClientMessage(ctypes.Structure):
    """XClientMessageEvent of Xlib.h."""
    _fields_ = [("type", ctypes.c_int), ("serial", ctypes.c_ulong), ("send_event", ctypes.c_int),
                ("display", ctypes.c_void_p), ("window", ctypes.c_ulong), ("message_type", ctypes.c_ulong),
                ("format", ctypes.c_int), ("data", ctypes.c_long * 5), ("padding", ctypes.c_long * 24)]


def request_close(screen, window):
    """Sends what a window manager sends when its close button is clicked."""
    x11 = ctypes.CDLL("libX11.so.6")
    x11.XOpenDisplay.restype = ctypes.c_void_p
    x11.XInternAtom.restype = ctypes.c_ulong
    display = ctypes.c_void_p(x11.XOpenDisplay(screen.display.encode()))
    message = ClientMessage(type=33, window=window, format=32)
    message.message_type = x11.XInternAtom(display, b"WM_PROTOCOLS", 0)
    message.data[0] = x11.XInternAtom(display, b"WM_DELETE_WINDOW", 0)
    x11.XSendEvent(display, ctypes.c_ulong(window), 0, ctypes.c_long(0), ctypes.byref(message))
    x11.XCloseDisplay(display)


def is_black(picture):
    return not any(picture)


def write_tone(path, seconds):
    """Writes a WAV file of silence."""
    with wave.open(str(path), "wb") as file:
        file.setnchannels(2)
        file.setsampwidth(2)
        file.setframerate(44100)
        file.writeframes(bytes(4 * 44100 * seconds))


def edit(path, old, new):
    """Replaces a text that must be present."""
    text = path.read_bytes().decode()
    if old not in text:
        raise AssertionError(f"{path.name} has no {old!r}")
    path.write_bytes(text.replace(old, new, 1).encode())


def memory_of(pid):
    """The resident memory of a process in bytes: total, proportional share ("pss"), the main heap, other private
    memory, and mapped files including shared memory."""
    sizes = dict.fromkeys(("rss", "pss", "heap", "anon", "mapped"), 0)
    private = "anon"
    for line in pathlib.Path(f"/proc/{pid}/smaps").read_text(encoding="utf-8", errors="replace").splitlines():
        first, *rest = line.split()
        if not first.endswith(":"):
            private = "heap" if line.endswith("[heap]") else "anon"
        elif first in ("Rss:", "Pss:"):
            sizes[first[:-1].lower()] += int(rest[0]) * 1024
        elif first == "Anonymous:":
            sizes[private] += int(rest[0]) * 1024
    sizes["mapped"] = sizes["rss"] - sizes["heap"] - sizes["anon"]
    return sizes


# The title of the on-screen keyboard's window.
KEYBOARD = "Vantorix Jukebox - keyboard"
# Codes of keys of the on-screen keyboard that are not characters.
ACCEPT = 13
DELETE = 8


def sections_of(path):
    """The keys of an INI file by section."""
    sections, section = {}, {}
    for line in path.read_text(encoding="utf-8").splitlines():
        if line.startswith("["):
            section = sections.setdefault(line.strip("[]"), {})
        elif "=" in line and not line.startswith(";"):
            key, value = line.split("=", 1)
            section[key] = value
    return sections


class Board:
    """The keys of the delivered theme's keyboard, whose picture is unscaled in the middle of the screen."""

    SIZE = (1000, 600)

    def __init__(self, theme):
        self.values = sections_of(theme)["keyboard"]
        self.left = (SCREEN_SIZE[0] - self.SIZE[0]) // 2
        self.top = (SCREEN_SIZE[1] - self.SIZE[1]) // 2

    def place(self, code):
        """Line and column of a code's key."""
        key = next(key for key, value in self.values.items() if key.startswith("KeyKey") and int(value) == code)
        line, column = key[len("KeyKey"):].split("-")
        return int(line), int(column)

    def middle(self, code):
        """Where to press for a code, in pixels of the screen."""
        line, column = self.place(code)
        x, y, width, height = (int(self.values[f"Key{letter}{line}-{column}"]) for letter in "XYWH")
        return self.left + x + width // 2, self.top + y + height // 2


class DeskTest(unittest.TestCase):
    """Gives every test a screen, the delivered application folder, and a small music library."""

    SCREEN = Screen

    def setUp(self):
        self.folder = pathlib.Path(tempfile.mkdtemp(prefix="vantorix-desk-"))
        self.addCleanup(shutil.rmtree, self.folder, ignore_errors=True)
        self.home = self.folder / "home"
        shutil.copytree(ROOT / "home", self.home)
        self.music = self.folder / "music"
        for name in ("First", "Second"):
            (self.music / f"{name} Album").mkdir(parents=True)
            write_tone(self.music / f"{name} Album" / f"Some Artist - {name} Track.wav", 30)
        edit(self.home / "config.ini", "\nStartPath=\n", f"\nStartPath={self.music}\n")
        # These tests look at a single run. The tests of the restarts switch them on.
        for key in ("RestartWhenStuck", "RestartAfterStop", "KeepCreditsAndQueue"):
            edit(self.home / "config.ini", f"\n{key}=true\n", f"\n{key}=false\n")
        self.screen = self.SCREEN(self.folder)
        self.addCleanup(self.screen.end)
        self.jukebox = None

    def start(self, *arguments):
        """Starts the jukebox; the end of the test kills it if it still runs."""
        self.errors = self.folder / "stderr"
        with open(self.errors, "wb") as errors:
            self.jukebox = subprocess.Popen([PROGRAM, "--home", str(self.home), *arguments],
                                            env=self.screen.environment, stderr=errors, stdout=errors,
                                            preexec_fn=lambda: signal.signal(signal.SIGHUP, signal.SIG_DFL))
        self.addCleanup(self.end_by_force)

    def end_by_force(self):
        if self.jukebox.poll() is None:
            self.jukebox.kill()
        self.jukebox.wait()

    def start_and_see_any(self, *arguments):
        """Starts the jukebox and returns the first picture that is not black, which may be a stop page."""
        self.start(*arguments)
        return self.see_change(bytes(3 * SCREEN_SIZE[0] * SCREEN_SIZE[1]), "the first picture")

    def start_and_see(self, *arguments):
        """Starts the jukebox and returns its first frame."""
        picture = self.start_and_see_any(*arguments)
        self.assertNotIn("run-time error", self.told())
        return picture

    def see_change(self, before, what):
        def changed():
            self.fail_if_ended(what)
            picture = self.screen.picture()
            return picture if picture != before else None
        return wait_until(changed, what)

    def see_rest(self, what):
        """Returns the first picture that does not change for a second."""
        def rest():
            self.fail_if_ended(what)
            picture = self.screen.picture()
            time.sleep(1)
            return picture if picture == self.screen.picture() else None
        return wait_until(rest, f"{what} at rest")

    def see_again(self, picture, what):
        wait_until(lambda: self.screen.picture() == picture, what)

    def fail_if_ended(self, what):
        if self.jukebox.poll() is not None:
            self.fail(f"{what}: the jukebox ended with {self.jukebox.returncode}\n{self.told()}")

    def told(self):
        return self.errors.read_text(encoding="utf-8", errors="replace")

    def log(self):
        """The lines of the log without their time stamps."""
        with contextlib.suppress(FileNotFoundError):
            lines = (self.home / "vantorix.log").read_bytes().decode().split("\r\n")
            return [line[19:] for line in lines if line]
        return []

    def see_keyboard(self):
        """Waits until the on-screen keyboard has the focus: a key pressed before that goes to the main window."""
        def focused():
            self.fail_if_ended("the keyboard's focus")
            return self.screen.focus() == KEYBOARD
        wait_until(focused, "the keyboard's focus")

    def see_log(self, line):
        def has_line():
            self.fail_if_ended(f"the log line {line!r}")
            return line in self.log()
        wait_until(has_line, f"the log line {line!r}")

    def press_until(self, key, condition, what):
        """Presses a key, and presses it again when it has no effect: the jukebox drops keys during an animation."""
        def pressed():
            self.fail_if_ended(what)
            self.screen.press(key)
            with contextlib.suppress(AssertionError):
                return wait_until(condition, what, 2)
            return None
        return wait_until(pressed, what)

    def press_until_log(self, key, line):
        self.press_until(key, lambda: line in self.log(), f"the log line {line!r} after {key}")

    def take(self, key):
        """Presses a key until the jukebox has accepted it: keys during a running handler are dropped."""
        before = self.count_taken()
        self.press_until(key, lambda: self.count_taken() > before, f"{key} is taken")

    def count_taken(self):
        return sum(line.startswith(" NumTrack : ") for line in self.log())

    def assert_ends(self, code):
        with contextlib.suppress(subprocess.TimeoutExpired):
            self.jukebox.wait(PATIENCE)
        self.assertEqual(self.jukebox.poll(), code, self.told())

    def signal(self, number=signal.SIGTERM):
        self.jukebox.send_signal(number)
