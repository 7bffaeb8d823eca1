"""The program vantorix-leds, on pseudo-terminals: its options, its checks, and the state of its terminal at the end."""
import contextlib
import os
import pathlib
import pty
import re
import select
import shutil
import signal
import subprocess
import tempfile
import termios
import time
import tty
import unittest

PROGRAM = os.environ["VANTORIX_LEDS"]
PATIENCE = 30


def run(*arguments):
    return subprocess.run([PROGRAM, *arguments], stdin=subprocess.DEVNULL, capture_output=True, text=True,
                          timeout=PATIENCE, check=False)


def wait_until(condition, what):
    end = time.monotonic() + PATIENCE
    while True:
        answer = condition()
        if answer:
            return answer
        if time.monotonic() > end:
            raise AssertionError(what)
        time.sleep(0.005)


class Leds:
    """A simulator whose standard output is a file, and a line to it as the jukebox has one."""

    def __init__(self, folder, *arguments):
        self.link = folder / "COM1"
        self.output = folder / "output"
        self.file = open(self.output, "wb")
        self.process = subprocess.Popen([PROGRAM, "--link", str(self.link), *arguments], stdin=subprocess.DEVNULL,
                                        stdout=self.file, stderr=self.file)
        wait_until(lambda: "Commport=1" in self.printed(), "the introduction")
        self.line = -1
        self.open()

    def open(self):
        self.line = os.open(self.link, os.O_RDWR | os.O_NOCTTY | os.O_NONBLOCK)
        tty.setraw(self.line)

    def close(self):
        if self.line >= 0:
            os.close(self.line)
        self.line = -1

    def send(self, data):
        os.write(self.line, data)

    def receive(self, count, patience=PATIENCE):
        data, end = b"", time.monotonic() + patience
        while len(data) < count and time.monotonic() < end:
            if select.select([self.line], [], [], 0.02)[0]:
                data += os.read(self.line, 4096)
        return data

    def printed(self):
        return self.output.read_text(encoding="utf-8", errors="replace")

    def end(self):
        """Ends it and returns its exit code."""
        self.close()
        self.process.send_signal(signal.SIGTERM)
        code = self.process.wait(PATIENCE)
        self.file.close()
        return code


class Program(unittest.TestCase):
    def setUp(self):
        self.folder = pathlib.Path(tempfile.mkdtemp(prefix="vantorix-leds-"))
        self.addCleanup(shutil.rmtree, self.folder, ignore_errors=True)

    def start(self, *arguments):
        leds = Leds(self.folder, *arguments)
        self.addCleanup(lambda: leds.process.poll() is None and leds.end())
        return leds

    def test_help_version_and_mistakes(self):
        self.assertIn("--unplug SECONDS", run("--help").stdout)
        self.assertRegex(run("--version").stdout, r"^vantorix-leds \d+\.\d+\.\d+\n$")
        for arguments, code, words in (
                (["--pace", "x"], 2, "--pace needs"), (["--nonsense"], 2, "unknown argument"),
                (["/dev/there is none"], 1, "/dev/there is none"), (["/dev/null"], 1, "not a serial device"),
                (["--replay", "/there/is/none"], 2, "/there/is/none"),
                (["--record", "/there/is/none"], 2, "/there/is/none"),
                (["--link", "/there/is/none"], 1, "/there/is/none")):
            result = run(*arguments)
            self.assertEqual(result.returncode, code, arguments)
            self.assertIn(words, result.stderr)

    def test_a_window_without_a_display_is_refused(self):
        displays = ("DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM")
        environment = {name: value for name, value in os.environ.items() if name not in displays}
        result = subprocess.run([PROGRAM, "--window"], env=environment, capture_output=True, text=True,
                                timeout=PATIENCE, check=False)
        self.assertEqual((result.returncode, result.stderr), (1, "vantorix-leds: --window needs a display\n"))

    def test_the_window_ends_by_a_signal(self):
        process = subprocess.Popen([PROGRAM, "--window=ring"], env={**os.environ, "QT_QPA_PLATFORM": "offscreen"},
                                   stdout=subprocess.PIPE, stderr=subprocess.DEVNULL)
        self.assertIn(b"Wire: /dev/pts/", process.stdout.readline())
        process.terminate()
        self.assertIn(b"frames 0", process.communicate(timeout=PATIENCE)[0])
        self.assertEqual(process.returncode, 0)

    def test_a_file_in_the_place_of_the_link_is_kept(self):
        (self.folder / "COM1").write_text("precious")
        result = run("--link", str(self.folder / "COM1"))
        self.assertEqual(result.returncode, 1)
        self.assertIn("not a link", result.stderr)
        self.assertEqual((self.folder / "COM1").read_text(), "precious")

    def test_a_good_controller_answers_and_checks(self):
        leds = self.start("--check", "--record", str(self.folder / "record"))
        leds.send(b"AT+R-0\r\n")
        self.assertEqual(leds.receive(15), b"Mode Normal\nOK\n")
        leds.send(b"AT+B-00000000FF\r\nAT+B-0100")
        leds.send(b"FE0000\r\nAT+R-1\r\n")
        wait_until(lambda: "mode free running" in leds.printed(), "the end")
        leds.close()
        wait_until(lambda: "the wire was closed" in leds.printed(), "the closing")
        self.assertEqual(leds.end(), 0)
        self.assertIn("frames 1, messages 4, bytes 50, refused 0, faults 0", leds.printed())
        self.assertFalse(leds.link.is_symlink())
        replayed = run("--check", "--replay", str(self.folder / "record"))
        self.assertEqual(replayed.returncode, 0)
        self.assertIn("frames 1, messages 4, bytes 50, refused 0, faults 0", replayed.stdout)

    def test_check_ends_at_the_first_fault(self):
        for bad, words in ((b"AT+B-00000000FF\r\n", "a frame begins outside normal mode"),
                           (b"AT+R-0\r\nAT+B-00000000FF\r\nAT+B-01000000FF\r\nAT+B-0300000000\r\n",
                            "LED 3 is out of order"),
                           (b"AT+R-0\n", "does not end with carriage return"), (b"\0\xff\r\n", "unknown message"),
                           (b"AT+R-0\r\nAT+B-00000000FF\r\nAT+B-01", None)):
            with self.subTest(bad):
                leds = self.start("--check")
                leds.send(bad)
                if words is None:
                    wait_until(lambda: "mode normal" in leds.printed(), "the command")
                    leds.close()
                    words = "does not end with"
                self.assertEqual(leds.process.wait(PATIENCE), 1)
                self.assertIn(words, leds.printed())
                self.assertIn("fault at byte", leds.printed())
                leds.end()

    def test_without_check_faults_are_counted(self):
        leds = self.start()
        leds.send(b"rubbish\r\nAT+R-0\r\n")
        wait_until(lambda: "mode normal" in leds.printed(), "the command")
        self.assertEqual(leds.end(), 0)
        self.assertIn("refused 9, faults 1", leds.printed())

    def test_bad_controllers(self):
        silent = self.start("--silent")
        silent.send(b"AT+R-0\r\n")
        self.assertEqual(silent.receive(1, 0.2), b"")
        silent.end()
        returns = self.start("--crlf")
        returns.send(b"AT+R-0\r\n")
        self.assertEqual(returns.receive(17), b"Mode Normal\r\nOK\r\n")
        returns.end()
        slow = self.start("--slow", "300")
        begin = time.monotonic()
        slow.send(b"AT+R-0\r\n")
        self.assertEqual(slow.receive(15), b"Mode Normal\nOK\n")
        self.assertGreaterEqual(time.monotonic() - begin, 0.29)
        slow.end()

    def test_the_pace_is_that_of_a_line(self):
        leds = self.start("--pace", "9600", "--record", str(self.folder / "record"))
        begin = time.monotonic()
        leds.send(b"AT+I\r\n" * 160)
        leds.send(b"AT+R-0\r\n")
        leds.receive(15)
        # A busy machine makes it longer, nothing makes it shorter.
        taken = time.monotonic() - begin
        self.assertGreater(taken, 0.95 * 968 / 960)
        self.assertLess(taken, 10 * 968 / 960)
        leds.end()

    def test_unplugging_ends_the_line_and_the_link_follows(self):
        leds = self.start("--unplug", "0.2")
        first = os.readlink(leds.link)

        def gone():
            try:
                return os.write(leds.line, b"AT+I\r\n") == 0
            except OSError:
                return True
        wait_until(gone, "the unplugging")
        wait_until(lambda: os.readlink(leds.link) != first, "the new device")
        leds.close()
        leds.open()
        leds.send(b"AT+R-0\r\n")
        self.assertEqual(leds.receive(15), b"Mode Normal\nOK\n")
        self.assertEqual(leds.end(), 0)
        self.assertIn("unplugged\nplugged in again: /dev/pts/", leds.printed())

    def test_a_second_jukebox_can_open_the_line(self):
        leds = self.start("--check")
        for _ in range(2):
            leds.send(b"AT+R-0\r\n")
            self.assertEqual(leds.receive(15), b"Mode Normal\nOK\n")
            leds.send(b"AT+B-0000000000\r\nAT+R-1\r\n")
            leds.close()
            wait_until(lambda: leds.printed().endswith("the wire was closed\n"), "the closing")
            leds.open()
        self.assertEqual(leds.end(), 0, leds.printed())

    def test_a_serial_device_is_taken_as_it_is(self):
        controller, line = pty.openpty()
        self.addCleanup(os.close, line)
        with open(self.folder / "output", "wb") as output:
            process = subprocess.Popen([PROGRAM, os.ttyname(line), "--check"], stdin=subprocess.DEVNULL, stdout=output)
        wait_until(lambda: "Commport" in (self.folder / "output").read_text(), "the introduction")
        os.write(controller, b"AT+B-0000000000\r\nAT+R-0\r\n")
        self.assertEqual(os.read(controller, 100), b"Mode Normal\nOK\n")
        os.close(controller)
        self.assertEqual(process.wait(PATIENCE), 1)
        self.assertIn("the device has gone", (self.folder / "output").read_text())


class Terminal(unittest.TestCase):
    """The program in a terminal of its own."""
    ENTER, LEAVE = b"\x1b[?1049h\x1b[?25l", b"\x1b[0m\x1b[?25h\x1b[?1049l"

    def begin(self):
        pid, terminal = pty.fork()
        if pid == 0:
            os.environ["TERM"] = "xterm"
            os.execv(PROGRAM, [PROGRAM, "--silent"])
        self.pid, self.terminal, self.seen = pid, terminal, b""
        self.addCleanup(os.close, terminal)
        self.before = termios.tcgetattr(terminal)
        self.see(lambda: b"frames/s" in self.seen)
        self.assertTrue(self.seen.startswith(self.ENTER))

    def see(self, condition):
        def seen():
            with contextlib.suppress(OSError):
                if select.select([self.terminal], [], [], 0.02)[0]:
                    self.seen += os.read(self.terminal, 65536)
            return condition()
        wait_until(seen, "the terminal")

    def end(self):
        status = []

        def over():
            pid, code = os.waitpid(self.pid, os.WNOHANG)
            status.append(code)
            return pid
        self.see(over)
        self.see(lambda: not select.select([self.terminal], [], [], 0.1)[0] or not self.more())
        return status[-1]

    def more(self):
        try:
            part = os.read(self.terminal, 65536)
        except OSError:
            return False
        self.seen += part
        return bool(part)

    def is_stopped(self):
        stat = pathlib.Path(f"/proc/{self.pid}/stat").read_text(encoding="utf-8")
        return stat.rpartition(")")[2].split()[0] == "T"

    def test_every_signal_gives_the_screen_back(self):
        for number, code in ((signal.SIGINT, 0), (signal.SIGTERM, 0), (signal.SIGHUP, 0),
                             (signal.SIGSEGV, signal.SIGSEGV), (signal.SIGABRT, signal.SIGABRT)):
            with self.subTest(number.name):
                self.begin()
                os.kill(self.pid, number)
                self.assertEqual(self.end() & 0x7F, code)
                self.assertEqual(self.seen.count(self.LEAVE), 1)
                after = self.seen.rpartition(self.LEAVE)[2]
                self.assertNotIn(b"\x1b", after)
                self.assertEqual(termios.tcgetattr(self.terminal), self.before)
                if code == 0:
                    self.assertIn(b"frames 0", after)

    def test_a_stop_gives_the_screen_back_and_takes_it_again(self):
        self.begin()
        os.kill(self.pid, signal.SIGTSTP)
        self.see(lambda: self.is_stopped() and self.seen.endswith(self.LEAVE))
        stopped = len(self.seen)
        os.kill(self.pid, signal.SIGCONT)
        self.see(lambda: re.search(rb"frames/s", self.seen[stopped:]))
        self.assertTrue(self.seen[stopped:].startswith(self.ENTER))
        os.kill(self.pid, signal.SIGINT)
        self.assertEqual(self.end(), 0)


if __name__ == "__main__":
    unittest.main()
