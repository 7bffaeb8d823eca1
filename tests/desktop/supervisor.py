"""A service manager for tests: speaks sd_notify(3) with the jukebox, ends a hung one and starts an ended one."""
import os
import pathlib
import signal
import socket
import subprocess
import threading
import time

import desk


class Supervisor:
    """Starts a program again whenever it ends, and aborts it when its watchdog message is late."""

    def __init__(self, folder, command, environment, seconds, errors, starts_again=True):
        self.path = pathlib.Path(folder) / "notify"
        self.socket = socket.socket(socket.AF_UNIX, socket.SOCK_DGRAM)
        self.socket.bind(str(self.path))
        self.socket.settimeout(0.05)
        self.command, self.errors = command, errors
        self.environment = {**environment, "NOTIFY_SOCKET": str(self.path), "WATCHDOG_USEC": str(int(seconds * 1e6))}
        self.limit = None
        self.last = time.monotonic()
        # Exit codes of the runs that have ended; negative ones are signals.
        self.ends = []
        # The times of the messages READY=1 and WATCHDOG=1.
        self.ready, self.alive = [], []
        self.status = ""
        self.closing = False
        self.starts_again = starts_again
        self.process = self.launch()
        self.thread = threading.Thread(target=self.watch)
        self.thread.start()

    def launch(self):
        self.limit = None
        with open(self.errors, "ab") as errors:
            return subprocess.Popen(self.command, env=self.environment, stdout=errors, stderr=errors)

    def watch(self):
        while not self.closing:
            self.receive()
            if self.process.poll() is not None:
                if not self.starts_again:
                    continue
                self.ends.append(self.process.returncode)
                self.process = self.launch()
            elif self.limit is not None and time.monotonic() - self.last > self.limit:
                self.process.send_signal(signal.SIGABRT)
                self.limit = None

    def receive(self):
        try:
            message = self.socket.recv(4096).decode()
        except TimeoutError:
            return
        for line in message.splitlines():
            name, value = line.split("=", 1)
            self.take(name, value)

    def take(self, name, value):
        if name == "READY":
            self.ready.append(time.monotonic())
        elif name == "STATUS":
            self.status = value
        elif name == "WATCHDOG":
            self.last = time.monotonic()
            self.alive.append(self.last)
        elif name == "WATCHDOG_USEC":
            self.last = time.monotonic()
            self.limit = int(value) / 1e6 or None

    def see_ready(self, times=1):
        desk.wait_until(lambda: len(self.ready) >= times, f"READY=1 for the {times}. time")

    def end(self):
        if self.closing:
            return
        self.closing = True
        self.thread.join()
        if self.process.poll() is None:
            self.process.kill()
        self.process.wait()
        self.socket.close()
        os.unlink(self.path)
