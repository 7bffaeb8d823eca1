"""Ways to freeze or stop the jukebox, and how it answers keys again without anybody's help.

VANTORIX_LADDER_TABLE=1 adds the ways that take a minute each, and prints the seconds until each answers again.
"""
import os
import pathlib
import pty
import resource
import shutil
import signal
import time
import tty
import unittest

import desk
import supervisor

PRINTS_TABLE = os.environ.get("VANTORIX_LADDER_TABLE") == "1"
# The time without a message after which the supervisor ends the jukebox, in seconds.
WATCHDOG = 6
RESTARTED = " : Relancé : "


class Ladder(desk.DeskTest):
    """A jukebox that looks after itself, under a supervisor."""

    def setUp(self):
        super().setUp()
        for key in ("RestartWhenStuck", "RestartAfterStop", "KeepCreditsAndQueue"):
            desk.edit(self.home / "config.ini", f"\n{key}=false\n", f"\n{key}=true\n")
        self.supervisor = None

    def supervise(self, *arguments, environment=None):
        self.errors = self.folder / "stderr"
        self.supervisor = supervisor.Supervisor(
            self.folder, [desk.PROGRAM, "--home", str(self.home), *arguments],
            {**self.screen.environment, **(environment or {})}, WATCHDOG, self.errors)
        self.addCleanup(self.supervisor.end)
        self.supervisor.see_ready()

    def fail_if_ended(self, what):
        """The supervisor starts an ended jukebox again."""

    def answers(self):
        before = self.count_taken()
        self.screen.press("Down")
        end = time.monotonic() + 1
        while time.monotonic() < end:
            if self.count_taken() > before:
                return True
            time.sleep(0.05)
        return False

    def see_answers_again(self, what, began, starts):
        """Waits until the jukebox has started again and answers a key."""
        desk.wait_until(lambda: len(self.supervisor.ready) >= starts, f"{what}: start {starts}", 3 * desk.PATIENCE)
        desk.wait_until(self.answers, f"{what}: an answer to a key", 60)
        if PRINTS_TABLE:
            print(f"\n| {what} | {time.monotonic() - began:.1f} |", flush=True)

    def heal(self, what, freeze, starts=2):
        desk.wait_until(self.answers, "the first answer to a key")
        began = time.monotonic()
        freeze()
        self.see_answers_again(what, began, starts)


class Stuck(Ladder):
    """Errors that leave the jukebox without keys."""

    def assert_restarted_for(self, words):
        self.assertTrue(any(line.startswith(RESTARTED) and words in line for line in self.log()), self.log()[:8])
        old = (self.home / "vantorix.log.1").read_bytes().decode()
        self.assertTrue(any(" : Relance : " in line and words in line for line in old.split("\r\n")))
        self.assertEqual(self.supervisor.ends, [])
        # The same process, under the same name.
        name = pathlib.Path(f"/proc/{self.supervisor.process.pid}/comm").read_text(encoding="utf-8").strip()
        self.assertEqual(name, pathlib.Path(desk.PROGRAM).name)

    def test_broken_video(self):
        shutil.rmtree(self.music)
        self.music.mkdir()
        (self.music / "Broken.avi").write_bytes(b"no video")
        self.supervise()
        # The first stop starts the video again, the second one leaves it out.
        self.heal("a video that cannot be played, twice", lambda: self.screen.press("Up", "Return"), 3)
        self.assert_restarted_for("Broken.avi")
        self.assertTrue(any("Broken.avi retiré de la file d'attente" in line for line in self.log()))
        self.assertFalse((self.home / "session.json").exists())

    def test_damaged_playlist(self):
        shutil.rmtree(self.music)
        self.music.mkdir()
        (self.music / "Damaged.vtxpl").write_bytes(b"no number\r\n")
        self.supervise()
        self.heal("a damaged playlist", lambda: self.screen.press("Up", "Return"))
        self.assert_restarted_for("Damaged.vtxpl")

    def test_count_that_is_no_number(self):
        self.flatten()
        (self.home / "stats.ini").write_text(f"[PayingCount]\n{self.music}=many\n", encoding="utf-8")
        self.supervise()
        self.heal("a play count that is no number", lambda: self.screen.press("Up", "Return"))
        self.assert_restarted_for("13")

    def flatten(self):
        """Puts all tracks into the music folder itself."""
        for track in sorted(self.music.rglob("*.wav")):
            track.rename(self.music / track.name)
        for folder in [path for path in self.music.iterdir() if path.is_dir()]:
            folder.rmdir()

    def test_vanished_folder(self):
        self.supervise()
        # The cursor moves between the two folders.
        for folder in self.music.iterdir():
            shutil.rmtree(folder)
        self.heal("a folder that has vanished", lambda: self.screen.press("Up", "Return"))
        self.assert_restarted_for("76")

    def test_vanished_sound_of_the_theme(self):
        self.flatten()
        for track in self.music.iterdir():
            desk.write_tone(track, 6)
        self.supervise()
        (self.home / "themes" / "default" / "charge.mp3").unlink()
        desk.wait_until(self.answers, "the first answer to a key")
        began = time.monotonic()
        self.take("Return")
        time.sleep(2)
        self.take("Return")
        # The theme is not complete, so the jukebox stops at each start until the file is back.
        desk.wait_until(lambda: (self.home / "vantorix.log.1").exists(), "the restart")
        shutil.copy(desk.ROOT / "home" / "themes" / "default" / "charge.mp3", self.home / "themes" / "default")
        self.see_answers_again("the theme's sound has vanished, and is back after the first stop", began, 2)

    def test_log_that_cannot_be_written(self):
        self.supervise()

        def freeze():
            resource.prlimit(self.supervisor.process.pid, resource.RLIMIT_FSIZE, (0, resource.RLIM_INFINITY))
            self.screen.press("Down")

        desk.wait_until(self.answers, "the first answer to a key")
        began = time.monotonic()
        freeze()
        desk.wait_until(lambda: len(self.supervisor.ready) == 2, "the jukebox without a log", 120)
        # Only the screen shows that a key is answered.
        before = self.see_rest("the frame")
        self.screen.press("Down")
        self.see_change(before, "the answer to a key")
        if PRINTS_TABLE:
            print(f"\n| a log that cannot be written | {time.monotonic() - began:.1f} |", flush=True)
        self.assertEqual(self.supervisor.ends, [])


class Stopped(Ladder):
    """Errors that stop the program."""

    def test_word_wider_than_its_box(self):
        folder = self.music / "Album"
        folder.mkdir()
        desk.write_tone(folder / ("Artist - " + "W" * 60 + ".wav"), 30)
        for name in ("First", "Second"):
            shutil.rmtree(self.music / f"{name} Album")
        self.supervise()
        self.heal("a title that does not fit", lambda: self.screen.press("Up", "Return"))
        self.assertTrue(any(line.startswith(RESTARTED) for line in self.log()))

    def test_three_stops_wait_for_a_key(self):
        theme = self.home / "themes" / "default" / "theme.ini"
        good = theme.read_bytes()
        self.supervise()
        self.supervisor.end()
        theme.write_bytes(good.replace(b"BlockCommandX=", b"BlockCommandX=none"))
        self.errors.unlink()
        self.supervisor = supervisor.Supervisor(self.folder, [desk.PROGRAM, "--home", str(self.home)],
                                                self.screen.environment, WATCHDOG, self.errors)
        self.addCleanup(self.supervisor.end)
        for stop in (1, 2):
            desk.wait_until(lambda: self.told().count("stopped by run-time error") == stop, f"stop {stop}")  # noqa: B023
            self.see_change(bytes(3 * desk.SCREEN_SIZE[0] * desk.SCREEN_SIZE[1]), f"page {stop}")
            self.press_until("space", lambda: self.told().count("stopped by run-time error") > stop, f"a key ends page {stop}")  # noqa: B023
        page = self.see_rest("the third page")
        # It does not close by itself, and feeds the watchdog while it waits.
        time.sleep(17 if PRINTS_TABLE else 2)
        self.assertEqual(self.screen.picture(), page)
        self.assertEqual(self.supervisor.ends, [])
        theme.write_bytes(good)
        self.screen.press("space")
        self.see_answers_again("a broken theme, mended, and a key at the third page", time.monotonic(), 1)


class Hung(Ladder):
    """What only a supervisor can heal."""

    def test_folder_that_never_answers(self):
        on, mark = self.folder / "on", self.folder / "mark"
        self.supervise(environment={"LD_PRELOAD": os.environ["HUNG_FOLDER_LIBRARY"], "HUNG_FOLDER": str(self.music / "First Album"),
                                    "HUNG_FOLDER_ON": str(on), "HUNG_FOLDER_MARK": str(mark)})

        def freeze():
            on.touch()
            self.screen.press("Up")
            self.press_until("Return", mark.exists, "the folder hangs")
            # The next start finds a disk that answers.
            on.unlink()

        self.heal("a folder that never answers", freeze)
        self.assertEqual(self.supervisor.ends, [-signal.SIGABRT])
        self.assertTrue(any("Arrêt brutal par le signal 6" in line for line in self.log()))

    def test_crash(self):
        self.supervise()
        self.heal("a crash", lambda: self.supervisor.process.send_signal(signal.SIGSEGV))
        # A sanitizer reports the signal and ends the process with 1.
        self.assertIn(self.supervisor.ends, ([-signal.SIGSEGV], [1]))
        self.assertTrue(any("Arrêt brutal par le signal 11" in line for line in self.log()))

    def test_kill(self):
        self.supervise()
        self.heal("a kill", lambda: self.supervisor.process.kill())
        self.assertFalse(any("Arrêt brutal" in line for line in self.log()))

    def test_watchdog_is_fed_by_a_jukebox_at_rest_in_a_dialog_and_on_a_page(self):
        self.supervise()
        self.screen.press("F9")
        desk.wait_until(lambda: self.screen.focus() not in ("", "Vantorix Jukebox"), "the configuration")
        time.sleep(2 * WATCHDOG)
        self.assertEqual((self.supervisor.ends, len(self.supervisor.ready)), ([], 1))

    def test_watchdog_can_be_switched_off(self):
        desk.edit(self.home / "config.ini", "\nWatchdog=true", "\nWatchdog=false")
        self.supervise()
        desk.wait_until(lambda: self.supervisor.limit is None, "the end of the watch")


@unittest.skipUnless(PRINTS_TABLE, "they take a minute each")
class Endless(Ladder):
    """Handlers that let events run and never end."""

    def test_silent_controller(self):
        controller, line = pty.openpty()
        self.addCleanup(os.close, controller)
        self.addCleanup(os.close, line)
        tty.setraw(line)
        os.set_blocking(controller, False)
        desk.edit(self.home / "config.ini", "\nActive=false", "\nActive=true")
        self.supervise("--serial", f"1={os.ttyname(line)}")
        self.screen.press("Return")
        time.sleep(2)
        began = time.monotonic()
        self.screen.press("Return")
        desk.wait_until(lambda: (self.home / "vantorix.log.1").exists(), "the restart", 180)
        print(f"\n| a controller that does not answer: starts again | {time.monotonic() - began:.1f} |", flush=True)

    def test_page_turn_that_never_ends(self):
        desk.edit(self.home / "themes" / "default" / "theme.ini", "ZoneListPageDroiteWidth=676", "ZoneListPageDroiteWidth=20")
        self.supervise()
        self.heal("a page turn that never ends", lambda: self.screen.press("Return"))


if __name__ == "__main__":
    unittest.main()
