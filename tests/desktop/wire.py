"""The controller's end of an LED wire, for tests with the real jukebox."""
import contextlib
import fcntl
import os
import pty
import select
import termios
import threading
import time
import tty

import desk

REPLY = b"Mode Normal\nOK\n"


class Wire:
    """A pseudo-terminal. A thread reads it, keeps each message with its time, and answers "AT+R-0"."""

    def __init__(self, link=None, answers=True, reads=True):
        self.link, self.answers, self.reads = link, answers, reads
        self.messages = []
        self.rest = b""
        self.master = self.slave = -1
        self.thread = None
        self.plug()

    def plug(self):
        self.master, self.slave = pty.openpty()
        tty.setraw(self.slave)
        self.device = os.ttyname(self.slave)
        # Only the jukebox holds its end, so that this end sees it closing.
        os.close(self.slave)
        os.set_blocking(self.master, False)
        if self.link is not None:
            with contextlib.suppress(FileNotFoundError):
                self.link.unlink()
            self.link.symlink_to(self.device)
        self.ended = False
        self.thread = threading.Thread(target=self.run, daemon=True)
        self.thread.start()

    def pull(self):
        """Unplugs it: the jukebox's end hangs up."""
        self.ended = True
        self.thread.join()
        os.close(self.master)
        self.master = -1

    def end(self):
        if self.master >= 0:
            self.pull()

    def run(self):
        while not self.ended:
            if not self.reads:
                time.sleep(0.005)
                continue
            try:
                ready = select.select([self.master], [], [], 0.005)[0]
                self.take(os.read(self.master, 65536) if ready else b"")
            except BlockingIOError:
                continue
            except OSError:
                time.sleep(0.005)  # the jukebox has closed its end

    def take(self, data):
        now = time.monotonic()
        lines = (self.rest + data).split(b"\n")
        self.rest = lines.pop()
        for line in lines:
            self.messages.append((now, line + b"\n"))
            if line == b"AT+R-0\r" and self.answers:
                self.send(REPLY)

    def send(self, data):
        with contextlib.suppress(OSError):
            os.write(self.master, data)

    def waiting(self):
        """The number of bytes that have not been read."""
        count = fcntl.ioctl(self.master, termios.FIONREAD, b"\0\0\0\0")
        return int.from_bytes(count, "little")

    def count(self, start):
        return sum(message.startswith(start) for _, message in list(self.messages))

    def see(self, start, number=1):
        desk.wait_until(lambda: self.count(start) >= number, f"{number} messages {start!r}")


def cpu_seconds(pid):
    """The processor time that a process has used."""
    with open(f"/proc/{pid}/stat", encoding="utf-8", errors="replace") as file:
        fields = file.read().rpartition(")")[2].split()
    return (int(fields[11]) + int(fields[12])) / os.sysconf("SC_CLK_TCK")
