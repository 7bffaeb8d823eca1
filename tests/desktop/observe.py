"""Fast observation of the real jukebox: pixels of the screen and the recorded sound, with their times; and films for it."""
import array
import bisect
import ctypes
import os
import pathlib
import subprocess
import sys
import threading
import time

import desk

# A thread that samples the screen must not wait for long until another one gives it the interpreter.
sys.setswitchinterval(0.0005)

RATE = 44100
# Of Xlib.h.
ALL_PLANES = ctypes.c_ulong(~0)
Z_PIXMAP = 2


class XImage(ctypes.Structure):
    """The beginning of XImage of Xlib.h."""
    _fields_ = [("width", ctypes.c_int), ("height", ctypes.c_int), ("xoffset", ctypes.c_int), ("format", ctypes.c_int),
                ("data", ctypes.c_void_p), ("byte_order", ctypes.c_int), ("bitmap_unit", ctypes.c_int),
                ("bitmap_bit_order", ctypes.c_int), ("bitmap_pad", ctypes.c_int), ("depth", ctypes.c_int),
                ("bytes_per_line", ctypes.c_int), ("bits_per_pixel", ctypes.c_int)]


class Eye:
    """A connection to the X server that reads pixels in less than a millisecond. For one thread."""

    def __init__(self, display):
        self.x11 = ctypes.CDLL("libX11.so.6")
        self.x11.XOpenDisplay.restype = ctypes.c_void_p
        self.x11.XDefaultRootWindow.restype = ctypes.c_ulong
        self.x11.XGetImage.restype = ctypes.POINTER(XImage)
        self.display = ctypes.c_void_p(self.x11.XOpenDisplay(display.encode()))
        if not self.display:
            raise AssertionError(f"no connection to {display}")
        self.root = ctypes.c_ulong(self.x11.XDefaultRootWindow(self.display))

    def part(self, left, top, width, height):
        """The pixels of a part of the screen, row by row, four bytes each: blue, green, red, and one without meaning."""
        image = self.x11.XGetImage(self.display, self.root, left, top, width, height, ALL_PLANES, Z_PIXMAP)
        if not image:
            raise AssertionError("the screen could not be read")
        pixels = ctypes.string_at(image.contents.data, image.contents.bytes_per_line * height)
        self.x11.XDestroyImage(image)
        return pixels

    def close(self):
        self.x11.XCloseDisplay(self.display)


class Watch:
    """Records on a thread when a part of the screen changes, until `end`."""

    def __init__(self, display, *part):
        self.changes = []  # pairs of a time and the new pixels
        self.part = part
        self.eye = Eye(display)
        self.running = True
        self.thread = threading.Thread(target=self.run, daemon=True)
        self.thread.start()

    def run(self):
        last = None
        while self.running:
            pixels = self.eye.part(*self.part)
            if pixels != last:
                self.changes.append((time.monotonic(), pixels))
                last = pixels
            time.sleep(0.001)
        self.eye.close()

    def end(self):
        self.running = False
        self.thread.join()
        return self.changes


class Ear:
    """Records the monitor of the sound sink of pulse.sh, with the time at which each sample is played.

    A null sink mixes a block when the previous one has been played, so a block arrives here when its first sample is due.
    """

    def __init__(self):
        self.blocks = []  # pairs of an arrival and the number of samples before it
        self.samples = array.array("h")
        self.process = subprocess.Popen(
            ["parec", f"--device={os.environ['PULSE_MONITOR']}", "--format=s16le", f"--rate={RATE}", "--channels=1",
             "--latency-msec=10", "--raw"], stdout=subprocess.PIPE)
        self.thread = threading.Thread(target=self.run, daemon=True)
        self.thread.start()
        desk.wait_until(lambda: self.blocks, "the recording")

    def run(self):
        half = b""
        while data := os.read(self.process.stdout.fileno(), 1 << 16):
            now = time.monotonic()
            data = half + data
            half = data[len(data) // 2 * 2:]
            self.blocks.append((now, len(self.samples)))
            self.samples.frombytes(data[:len(data) // 2 * 2])

    def end(self):
        self.process.terminate()
        self.process.wait()
        self.thread.join()
        self.process.stdout.close()

    def clicks(self):
        """The times at which sound begins after silence."""
        loudness, gap = 6000, 0.4
        # Blocks that came late, or in pieces, are left out: only the first one after a rest counts.
        firsts = [block for last, block in zip(self.blocks, self.blocks[1:]) if block[0] - last[0] > 0.003]
        befores = [before for _, before in firsts]
        origins = [now - before / RATE for now, before in firsts]
        found, loud_before = [], -RATE
        for number, sample in enumerate(self.samples):
            if abs(sample) > loudness:
                if number - loud_before > gap * RATE:
                    # The sink's clock differs from that of the computer, so only blocks nearby are used.
                    here = bisect.bisect(befores, number)
                    nearby = sorted(origins[max(0, here - 300):here + 300])
                    found.append(nearby[len(nearby) // 10] + number / RATE)
                loud_before = number
        return found


def make_clip(path, *arguments):
    """Makes a film with ffmpeg."""
    subprocess.run(["ffmpeg", "-nostdin", "-v", "error", "-y", *arguments, str(path)], check=True, timeout=desk.PATIENCE)


def coloured_clip(path, *colours, seconds=1, size="160x120", sound=True):
    """A film of exact colours, each shown for some seconds, with a soft tone."""
    inputs, names = [], ""
    for number, colour in enumerate(colours):
        inputs += ["-f", "lavfi", "-i", f"color={colour}:s={size}:r=25:d={seconds},format=rgb24"]
        names += f"[{number}]"
    joined = f"{names}concat=n={len(colours)}[v]"
    picture = ["-filter_complex", joined, "-map", "[v]", "-c:v", "rawvideo", "-pix_fmt", "bgr24"]
    tone = ["-f", "lavfi", "-i", f"sine=frequency=440:sample_rate={RATE}:d={seconds * len(colours)}"]
    if sound:
        make_clip(path, *inputs, *tone, *picture, "-map", str(len(colours)), "-c:a", "pcm_s16le", "-ac", "2")
    else:
        make_clip(path, *inputs, *picture)


def flashing_clip(path, rate, seconds):
    """A film whose left third is white for a tenth of a second at each full second, when there is a click."""
    box = "drawbox=w=iw/3:h=ih:t=fill:color="
    codecs = ["-c:v", "mjpeg", "-q:v", "3", "-c:a", "pcm_s16le", "-ac", "2"]
    make_clip(path, "-f", "lavfi", "-i", f"testsrc2=size=320x240:rate={rate}:d={seconds}", "-f", "lavfi", "-i",
              f"aevalsrc='0.7*sin(2*PI*1000*t)*lt(mod(t,1),0.05)':s={RATE}:d={seconds}", "-vf",
              f"{box}black,{box}white:enable='lt(mod(t,1),0.1)'", *codecs)


def resources(pid):
    """Private memory in bytes, threads, and open files of a process."""
    process = pathlib.Path("/proc") / str(pid)
    sizes = dict(line.split()[:2] for line in (process / "smaps_rollup").read_text(encoding="ascii").splitlines()[1:])
    return int(sizes["Private_Dirty:"]) * 1024, len(os.listdir(process / "task")), len(os.listdir(process / "fd"))
