"""The ways to end: signals, the window system's close request, a stop by an error, a wrong command line."""
import os
import pty
import select
import signal
import subprocess
import tempfile
import time
import tty
import unittest

import desk


class Ends(desk.DeskTest):
    def test_each_signal_ends_it_by_the_exit_routine(self):
        for number in (signal.SIGTERM, signal.SIGINT, signal.SIGHUP):
            with self.subTest(number.name):
                self.start_and_see()
                self.signal(number)
                self.assert_ends(0)

    def test_the_windows_close_request_ends_it(self):
        self.start_and_see()
        desk.request_close(self.screen, self.screen.window())
        self.assert_ends(0)

    def test_a_signal_ends_it_while_it_waits_for_a_silent_controller(self):
        controller, line = pty.openpty()
        self.addCleanup(os.close, controller)
        self.addCleanup(os.close, line)
        tty.setraw(line)
        desk.edit(self.home / "config.ini", "\nActive=false", "\nActive=true")
        self.start_and_see("--serial", f"1={os.ttyname(line)}")
        self.press_until_log("Return", " : Some Artist - First Track.wav")
        received = bytearray()

        def receive(wanted):
            if select.select([controller], [], [], 0)[0]:
                received.extend(os.read(controller, 65536))
            return wanted in received

        self.press_until("Return", lambda: receive(b"AT+R-0\r\nAT+R-0\r\n"), "the jukebox repeats the command")
        self.signal()
        desk.wait_until(lambda: receive(b"AT+R-1\r\n"), "the command that frees the controller")
        self.assert_ends(0)


    def test_a_signal_ends_it_in_a_page_turn_that_never_ends(self):
        # The new left page is far wider than the leaf that folds before it: see D-20.
        desk.edit(self.home / "themes" / "default" / "theme.ini", "ZoneListPageDroiteWidth=676", "ZoneListPageDroiteWidth=20")
        self.start_and_see()
        self.press_until_log("Return", " : PageAnim")
        before = len(self.log())
        # The key is delivered and dropped, which shows that the turn still runs.
        self.screen.press("Down")
        self.see_change(self.screen.picture(), "the turning leaf")
        self.assertNotIn(" : RedrawJukebox", self.log()[before:])
        self.signal()
        self.assert_ends(0)


class StopPagePointer(desk.DeskTest):
    """The pointer over the page of a stop is that of the jukebox, not that of a busy one or of the desktop."""

    def setUp(self):
        super().setUp()
        self.screen.run("xdotool", "mousemove", "640", "360")

    def use_touch(self):
        desk.edit(self.home / "config.ini", "\nTactileMode=false", "\nTactileMode=true")

    def pointer_of_the_jukebox(self):
        self.start_and_see()
        self.see_rest("the picture")
        pointer = self.screen.pointer()
        self.signal()
        self.assert_ends(0)
        return pointer

    def assert_page_has(self, is_expected):
        """Starts the jukebox, which stops, and checks the pointer over its page. The page goes after 15 seconds."""
        self.start_and_see_any()
        desk.wait_until(lambda: is_expected(self.screen.pointer()), "the pointer over the page", 8)
        self.assertIn("stopped by run-time error", self.told())
        self.assertIsNone(self.jukebox.poll())

    def break_theme(self):
        desk.edit(self.home / "themes" / "default" / "theme.ini", "\nBlockMainRemainX=", "\nBlockMainRemainX=none")

    def test_it_is_hidden(self):
        desktop = self.screen.pointer()
        hidden = self.pointer_of_the_jukebox()
        self.assertTrue(any(desktop))
        self.assertFalse(any(hidden))
        self.break_theme()
        self.assert_page_has(lambda pointer: pointer == hidden)

    def test_it_is_hidden_before_the_mode_is_read(self):
        desk.edit(self.home / "config.ini", "\nFullscreen=false", "\nFullscreen=true")
        desk.edit(self.home / "config.ini", "\nFullscreenSize=", "\nFullscreenSize=none ")
        self.assert_page_has(lambda pointer: not any(pointer))
        self.assertIn("FullscreenSize", self.told())

    def test_it_is_an_arrow_in_touch_mode(self):
        self.use_touch()
        arrow = self.pointer_of_the_jukebox()
        self.assertTrue(any(arrow))
        self.break_theme()
        self.assert_page_has(lambda pointer: pointer == arrow)


class TwoOnOneHome(desk.DeskTest):
    def test_the_second_one_says_which_process_has_the_folder_and_a_kill_frees_it(self):
        self.start_and_see()
        first = self.jukebox
        before = self.log()
        second = subprocess.run([desk.PROGRAM, "--home", str(self.home)], env=self.screen.environment,
                                capture_output=True, text=True, timeout=desk.PATIENCE)
        self.assertEqual((second.returncode, second.stdout), (2, ""))
        self.assertIn(f'"{self.home}" is in use by vantorix, process {first.pid}', second.stderr)
        self.assertEqual(self.log()[:len(before)], before)
        self.assertEqual([line for line in self.log() if "Lancement" in line], before[:1])
        first.kill()
        first.wait()
        self.start_and_see()
        self.signal()
        self.assert_ends(0)


class Hangs(desk.DeskTest):
    """A signal ends the jukebox within five seconds, whatever hangs. The limit allows for a busy machine."""
    BOUND = 20

    def assert_ends_soon(self, code):
        start = time.monotonic()
        self.signal()
        self.assert_ends(code)
        seconds = time.monotonic() - start
        print(f"{self.id()}: ended after {seconds:.1f} s", flush=True)
        self.assertLess(seconds, self.BOUND)

    def hang_in(self, folder):
        """Returns two files. Once the first one exists, listing this folder never returns. The second one appears when
        that has begun."""
        on, mark = self.folder / "on", self.folder / "hangs"
        self.screen.environment.update(LD_PRELOAD=os.environ["HUNG_FOLDER_LIBRARY"], HUNG_FOLDER=str(folder),
                                       HUNG_FOLDER_ON=str(on), HUNG_FOLDER_MARK=str(mark))
        return on, mark

    def test_a_signal_ends_it_in_a_folder_that_does_not_answer(self):
        on, mark = self.hang_in(self.music / "First Album")
        self.start_and_see()
        on.touch()
        self.press_until("Return", mark.exists, "the folder is listed")
        self.assert_ends_soon(128 + signal.SIGTERM)

    def test_a_signal_ends_a_start_that_does_not_come_to_its_end(self):
        on, mark = self.hang_in(self.music)
        on.touch()
        self.start()
        desk.wait_until(mark.exists, "the music is listed")
        self.assert_ends_soon(128 + signal.SIGTERM)

    def test_a_signal_ends_it_while_the_sound_server_stands_still(self):
        folder = self.folder / "pulse"
        script = str(desk.ROOT / "tests" / "desktop" / "pulse.sh")
        subprocess.run([script, "start", str(folder)], check=True, stdout=subprocess.DEVNULL, timeout=desk.PATIENCE)
        self.addCleanup(subprocess.run, [script, "stop", str(folder)], check=True)
        server = int((folder / "pid").read_text())
        self.screen.environment["PULSE_SERVER"] = f"unix:{folder}/native"
        self.start_and_see()
        self.press_until_log("Return", " : Some Artist - First Track.wav")
        self.press_until("Return", lambda: self.log().count(" : Valider") > 1, "the pick")
        os.kill(server, signal.SIGSTOP)
        self.addCleanup(os.kill, server, signal.SIGCONT)
        self.assert_ends_soon(0)


class Stops(desk.DeskTest):
    def break_theme(self):
        theme = self.home / "themes" / "default" / "theme.ini"
        lines = theme.read_text(encoding="utf-8").splitlines()
        kept = [line for line in lines if not line.lower().startswith("zonelistx=")]
        self.assertEqual(len(kept), len(lines) - 1)
        theme.write_text("\n".join(kept) + "\n", encoding="utf-8")
        return theme

    def assert_told(self, where):
        lines = [line for line in self.told().splitlines() if "run-time error" in line]
        self.assertEqual(len(lines), 1, self.told())
        for words in ("13", "Type mismatch", str(where), "zonelist", "ZoneListX"):
            self.assertIn(words.lower(), lines[0].lower())
        logged = [line for line in self.log() if "erreur 13" in line]
        self.assertEqual(len(logged), 1, self.log())
        self.assertIn("ZoneListX".lower(), logged[0].lower())

    def test_a_broken_theme_is_told_on_a_page_that_a_key_closes(self):
        theme = self.break_theme()
        start = time.monotonic()
        page = self.start_and_see_any()
        self.assertFalse(desk.is_black(page))

        def press():
            self.screen.press("a")
            return self.jukebox.poll() is not None
        desk.wait_until(press, "the page closes at a key", 12)
        self.assert_ends(1)
        self.assertLess(time.monotonic() - start, 60)
        self.assert_told(theme)

    def test_the_page_closes_by_itself(self):
        self.break_theme()
        self.start_and_see_any()
        seen = time.monotonic()
        self.assert_ends(1)
        self.assertGreater(time.monotonic() - seen, 5)

    def test_the_page_closes_by_a_signal(self):
        self.break_theme()
        self.start_and_see_any()
        seen = time.monotonic()
        self.signal()
        self.assert_ends(1)
        self.assertLess(time.monotonic() - seen, 12)

    def test_a_port_that_does_not_exist_is_told(self):
        desk.edit(self.home / "config.ini", "\nActive=false", "\nActive=true")
        self.start_and_see_any("--serial", "1=/dev/there is none")
        self.signal()
        self.assert_ends(1)
        self.assertIn("8002", self.told())
        self.assertIn("/dev/there is none", self.told())

    def test_an_unwritable_log_is_told(self):
        (self.home / "vantorix.log").mkdir()
        self.start_and_see_any()
        self.signal()
        self.assert_ends(1)
        self.assertIn("75", self.told())


class CommandLine(unittest.TestCase):
    def run_with(self, *arguments, **environment):
        unset = ("DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM")
        clean = {name: value for name, value in os.environ.items() if name not in unset}
        return subprocess.run([desk.PROGRAM, *arguments], env={**clean, **environment}, capture_output=True,
                              text=True, timeout=desk.PATIENCE)

    def test_help_and_version_need_no_display(self):
        answer = self.run_with("--help")
        self.assertEqual((answer.returncode, answer.stderr), (0, ""))
        self.assertIn("--home DIR", answer.stdout)
        answer = self.run_with("--version")
        self.assertEqual((answer.returncode, answer.stderr), (0, ""))
        self.assertRegex(answer.stdout, r"^vantorix \d+\.\d+\.\d+\n$")

    def test_a_wrong_command_line_is_code_2_and_one_line(self):
        for arguments in (["--hom", "/"], ["x"], ["--home"], ["--serial", "1"], ["--home", "/there is no such folder"]):
            with self.subTest(arguments):
                answer = self.run_with(*arguments)
                self.assertEqual((answer.returncode, answer.stdout), (2, ""))
                self.assertEqual(len(answer.stderr.splitlines()), 1, answer.stderr)

    def test_a_home_without_a_jukebox_is_code_2_and_stays_as_it_is(self):
        with tempfile.TemporaryDirectory() as folder:
            answer = self.run_with("--home", folder)
            self.assertEqual((answer.returncode, answer.stdout), (2, ""))
            self.assertIn(f'"{folder}" is no application folder', answer.stderr)
            self.assertEqual(os.listdir(folder), [])

    def test_without_a_display_it_says_so(self):
        home = str(desk.ROOT / "home")
        for environment in ({}, {"DISPLAY": ":987654"}, {"QT_QPA_PLATFORM": "there is none"}):
            with self.subTest(environment):
                answer = self.run_with("--home", home, **environment)
                self.assertEqual(answer.returncode, 1, answer.stderr)
                self.assertIn("vantorix: ", answer.stderr)


if __name__ == "__main__":
    unittest.main()
