"""--check on a desktop: the monitors are those of the X server, which may also refuse, hang or be missing."""
import json
import os
import pathlib
import re
import shutil
import signal
import socket
import subprocess
import tempfile
import time
import unittest

import desk


class Check(unittest.TestCase):
    def setUp(self):
        self.folder = pathlib.Path(tempfile.mkdtemp(prefix="vantorix-check-"))
        self.addCleanup(shutil.rmtree, self.folder, ignore_errors=True)
        self.home = self.folder / "home"
        self.music = self.folder / "music"
        self.music.mkdir()
        subprocess.run([desk.ROOT / "tools/make_home.sh", desk.ROOT / "home", self.home, self.music], check=True)

    def configure(self, **values):
        config = self.home / "config.ini"
        for key, value in values.items():
            text = config.read_bytes().decode()
            config.write_bytes(re.sub(rf"(?m)^{key}=[^\r\n]*", f"{key}={value}", text).encode())

    def machine(self, environment):
        """What is found about the monitors, by its path, without a word on standard error."""
        done = subprocess.run([desk.PROGRAM, "--check", "--json", "--home", self.home], env=environment, capture_output=True,
                              text=True, timeout=desk.PATIENCE, check=False)
        self.assertIn(done.returncode, (0, 1, 2), done.stderr)
        self.errors = done.stderr
        found = [json.loads(line) for line in done.stdout.splitlines()]
        return [each for each in found if each["subject"] == "machine" and
                (each["path"].endswith("sys/class/drm") or ":" in each["path"])]

    @staticmethod
    def environment(**more):
        kept = {name: value for name, value in os.environ.items()
                if name not in ("DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM", "XAUTHORITY")}
        return {**kept, **more}

    def start_server(self):
        screen = desk.Screen(self.folder)
        self.addCleanup(screen.end)
        return screen

    def test_the_x_server_says_which_modes_there_are(self):
        screen = self.start_server()
        environment = self.environment(DISPLAY=screen.display)
        self.configure(Fullscreen="true", FullscreenSize="1280x720 32bits")
        note, = self.machine(environment)
        self.assertEqual((note["level"], note["path"], self.errors), ("note", screen.display, ""))
        self.assertIn("Monitors of the X server: 1280x720 at 0,0.", note["text"])
        self.configure(FullscreenSize="4000x3000 32bits", VideoPositionLeft="1281")
        note, mode, video = self.machine(environment)
        self.assertEqual((mode["level"], mode["path"]), ("warning", screen.display))
        self.assertIn('does not list the size "4000x3000" of FullscreenSize', mode["text"])
        self.assertIn("there is no monitor at VideoPositionLeft=1281", video["text"])
        self.assertTrue(mode["advice"] and video["advice"])

    def test_without_a_server_the_kernel_names_the_monitors(self):
        for more in ({}, {"DISPLAY": ""}, {"DISPLAY": ":7", "WAYLAND_DISPLAY": "wayland-0"},
                     {"DISPLAY": ":7", "QT_QPA_PLATFORM": "offscreen"}):
            with self.subTest(**more):
                found = self.machine(self.environment(**more))
                self.assertEqual({each["path"] for each in found}, {"/sys/class/drm"})

    def test_a_server_that_does_not_answer_is_a_note(self):
        def check(display, least, most):
            begin = time.monotonic()
            found = self.machine(self.environment(DISPLAY=display))
            self.assertEqual([each["path"] for each in found[:2]], [display, "/sys/class/drm"])
            self.assertIn("does not answer this user", found[0]["text"])
            self.assertGreaterEqual(time.monotonic() - begin, least)
            self.assertLess(time.monotonic() - begin, most)
        # It is not there.
        check(f"{self.folder}/missing:0", 0, desk.PATIENCE)
        screen = self.start_server()
        self.addCleanup(screen.server.send_signal, signal.SIGCONT)
        screen.server.send_signal(signal.SIGSTOP)
        # It accepts the connection and says nothing.
        check(screen.display, 3, desk.PATIENCE)

    def check_with(self, serve):
        """Checks with a server of which `serve` handles the only connection."""
        with socket.create_server(("127.0.0.1", 0)) as server:
            display = server.getsockname()[1] - 6000
            process = subprocess.Popen([desk.PROGRAM, "--check", "--json", "--home", self.home], stdout=subprocess.PIPE,
                                       env=self.environment(DISPLAY=f"127.0.0.1:{display}"), stderr=subprocess.PIPE)
            self.addCleanup(process.communicate)
            self.addCleanup(process.kill)
            server.settimeout(desk.PATIENCE)
            with server.accept()[0] as connection:
                connection.settimeout(desk.PATIENCE)
                serve(connection)
            output, errors = process.communicate(timeout=desk.PATIENCE)
        self.assertIn(process.returncode, (0, 1, 2), errors)
        self.assertIn(b"does not answer this user", output)

    def test_a_server_that_refuses_is_a_note(self):
        def refuse(connection):
            connection.recv(12)
            # Setup failed, in version 11.0 of the protocol, for a reason of 4 bytes.
            connection.sendall(b"\0\4\x0b\0\0\0\1\0nono")
        self.check_with(refuse)
        self.check_with(lambda connection: connection.recv(12))

    def test_a_server_that_goes_is_a_note(self):
        screen = self.start_server()

        # The real server answers the setup; nobody answers the first request.
        def go(connection):
            with socket.socket(socket.AF_UNIX) as real:
                real.settimeout(desk.PATIENCE)
                real.connect(f"/tmp/.X11-unix/X{screen.display[1:]}")
                real.sendall(connection.recv(12))
                answer = real.recv(8)
                length = 4 * int.from_bytes(answer[6:8], "little")
                while len(answer) < 8 + length:
                    answer += real.recv(8 + length - len(answer))
                connection.sendall(answer)
                connection.recv(4)
        self.check_with(go)


if __name__ == "__main__":
    unittest.main()
