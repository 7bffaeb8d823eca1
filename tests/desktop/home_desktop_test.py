"""The tasks of the command line that need no display: --setup, --backup and --restore with the real program."""
import fcntl
import os
import pathlib
import random
import shutil
import signal
import subprocess
import tarfile
import tempfile
import time
import unittest

# The long run: VANTORIX_HOME_KILLS=300.
KILLS = int(os.environ.get("VANTORIX_HOME_KILLS", "60"))


class Home(unittest.TestCase):
    def setUp(self):
        self.folder = pathlib.Path(tempfile.mkdtemp(prefix="vantorix-home-"))
        self.addCleanup(shutil.rmtree, self.folder)
        # An installed program finds the delivered files next to it.
        (self.folder / "bin").mkdir()
        self.program = self.folder / "bin/vantorix"
        shutil.copy2(os.environ["VANTORIX"], self.program)
        share = self.folder / "share/vantorix"
        self.write(share / "config.ini", b"; delivered\r\n[Main]\r\nStartPath=\r\nTheme=default\r\n")
        self.write(share / "themes/default/theme.ini", b"[zonelist]\n")
        self.write(share / "playlists/.keep", b"")
        self.write(self.folder / "music/one.mp3", b"")
        self.write(self.folder / "music/more/two.mp3", b"")
        self.home = self.folder / "data/vantorix"
        self.archive = self.folder / "backup.tar"
        self.environment = {"PATH": os.environ["PATH"], "XDG_DATA_HOME": str(self.folder / "data"),
                            **{name: value for name, value in os.environ.items() if name.endswith("SAN_OPTIONS")}}

    @staticmethod
    def write(path, content):
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_bytes(content)

    def run_program(self, *arguments):
        return subprocess.run([self.program, *map(str, arguments)], env=self.environment, cwd=self.folder, text=True,
                              capture_output=True, timeout=120, check=False)

    def assert_done(self, *arguments):
        result = self.run_program(*arguments)
        self.assertEqual((result.returncode, result.stderr), (0, ""))
        return result.stdout

    def assert_failed(self, code, words, *arguments):
        result = self.run_program(*arguments)
        self.assertEqual(result.returncode, code, result.stderr)
        self.assertIn(words, result.stderr)

    def fill(self, mark):
        for name in ("config.ini", "stats.ini", "playlists/party.vtxpl"):
            self.write(self.home / name, mark)
        # Large enough that kills find it half written.
        for number in range(12):
            self.write(self.home / f"themes/own/{number}.png", mark * 20_000)

    def state(self):
        found = {}
        for name in ("config.ini", "pathconfig.ini", "stats.ini", "playlists", "themes"):
            top = self.home / name
            for path in [top, *sorted(top.rglob("*"))] if top.exists() else []:
                found[str(path.relative_to(self.home))] = path.read_bytes() if path.is_file() else None
        return found

    def test_setup_fills_a_new_home_and_sets_the_music_folder(self):
        told = self.assert_done("--setup", "music")
        self.assertIn("2 music files", told)
        self.assertEqual((self.home / "config.ini").read_bytes(),
                         f"; delivered\r\n[Main]\r\nStartPath={self.folder}/music\r\nTheme=default\r\n".encode())
        self.assertTrue((self.home / "playlists/.keep").exists())
        self.assertFalse((self.home / "themes").exists())
        self.assert_failed(1, "there is no folder", "--setup", self.folder / "none")

    def test_wrong_command_lines_end_with_2(self):
        self.assert_failed(2, "only one of", "--setup", "music", "--backup", "x")
        self.assert_failed(2, "--setup needs", "--setup")
        self.assert_failed(2, "there is no folder", "--setup", "music", "--home", self.folder / "none")

    def test_an_old_copy_of_a_theme_is_named(self):
        self.write(self.home / "themes/default/theme.ini", b"[zonelist]\n")
        self.assertIn(f"{self.home}/themes/default", self.assert_done("--setup", "music"))

    def test_a_backup_opens_elsewhere_and_comes_back(self):
        self.fill(b"saved")
        saved = self.state()
        self.assert_done("--backup", "backup.tar")
        with tarfile.open(self.archive) as archive:
            names = archive.getnames()
            self.assertEqual(archive.extractfile("stats.ini").read(), b"saved")
        self.assertIn("themes/own/3.png", names)
        self.fill(b"present")
        present = self.state()
        self.assert_done("--restore", self.archive)
        self.assertEqual(self.state(), saved)
        self.assert_done("--restore", self.home / "before-restore.tar")
        self.assertEqual(self.state(), present)
        self.assert_failed(1, "is in the application folder", "--backup", self.home / "x.tar")
        self.assert_failed(1, "cannot be read", "--restore", self.folder / "none.tar")
        self.assert_failed(1, "byte 0 is not the start of a tar entry", "--restore", self.program)
        self.assertEqual(self.state(), present)

    def test_a_home_in_use_is_backed_up_and_not_changed(self):
        self.fill(b"saved")
        self.assert_done("--backup", self.archive)
        holder = os.open(self.home, os.O_RDONLY)
        self.addCleanup(os.close, holder)
        fcntl.flock(holder, fcntl.LOCK_EX)
        self.archive.unlink()
        self.assert_done("--backup", self.archive)
        self.assertTrue(self.archive.exists())
        self.assert_failed(1, "is in use by", "--restore", self.archive)
        self.assert_failed(1, "is in use by", "--setup", "music")

    @unittest.skipIf(os.geteuid() != 0, "only the superuser can give files away")
    def test_a_home_of_another_user_keeps_its_owner(self):
        somebody = 12345
        # The search for leaks may not look into a process that has changed its user.
        self.environment["ASAN_OPTIONS"] = self.environment.get("ASAN_OPTIONS", "") + ":detect_leaks=0"
        self.fill(b"saved")
        self.assert_done("--backup", self.archive)
        os.chmod(self.archive, 0o600)
        os.chmod(self.folder, 0o755)
        for path in [self.home, *self.home.rglob("*")]:
            os.chown(path, somebody, somebody)
        self.assert_done("--restore", self.archive)
        self.assert_done("--setup", self.folder / "music")
        self.assertEqual({(path.stat().st_uid, path.stat().st_gid) for path in [self.home, *self.home.rglob("*")]},
                         {(somebody, somebody)})
        os.chmod(self.folder / "music", 0o700)
        self.assert_failed(1, "cannot be read", "--setup", self.folder / "music")

    def kill_at_random(self, seconds, *arguments):
        program = subprocess.Popen([self.program, *map(str, arguments)], env=self.environment,
                                   stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        # What was put together is exchanged near the end, where half of the kills are.
        time.sleep(self.random.uniform(self.random.choice((0, 0.8)) * seconds, seconds))
        program.send_signal(signal.SIGKILL)
        return program.wait() == -signal.SIGKILL

    def seconds_of(self, *arguments):
        start = time.monotonic()
        self.assert_done(*arguments)
        return time.monotonic() - start

    def test_a_killed_restore_leaves_the_old_or_the_new_state(self):
        self.random = random.Random(1)
        self.fill(b"saved")
        saved = self.state()
        self.assert_done("--backup", self.archive)
        self.fill(b"present")
        present = self.state()
        seconds = self.seconds_of("--restore", self.archive)
        kills = {"old": 0, "new": 0}
        while sum(kills.values()) < KILLS:
            self.fill(b"present")
            if not self.kill_at_random(seconds, "--restore", self.archive):
                continue
            # The next start of any kind completes what was decided. A quarter of these starts is killed too.
            if self.random.random() < 0.25:
                self.kill_at_random(seconds / 4, "--setup", self.folder / "none")
            self.run_program("--setup", self.folder / "none")
            found = self.state()
            self.assertIn(found, (present, saved))
            self.assertFalse(list(self.home.glob(".restore*")))
            kills["new" if found == saved else "old"] += 1
        print(f"kills of a restore of {seconds:.3f} s: {kills}")

    def test_a_killed_backup_leaves_the_old_or_the_new_archive(self):
        self.random = random.Random(2)
        self.fill(b"saved")
        self.assert_done("--backup", self.archive)
        before = self.archive.read_bytes()
        self.fill(b"present")
        present = self.state()
        seconds = self.seconds_of("--backup", self.folder / "other.tar")
        kills = {"old": 0, "new": 0}
        while sum(kills.values()) < KILLS:
            self.archive.write_bytes(before)
            if not self.kill_at_random(seconds, "--backup", self.archive):
                continue
            if self.archive.read_bytes() == before:
                kills["old"] += 1
                continue
            self.assert_done("--restore", self.archive)
            self.assertEqual(self.state(), present)
            kills["new"] += 1
        print(f"kills of a backup of {seconds:.3f} s: {kills}")

    def interrupt_at_random(self, seconds, *arguments):
        """Sends SIGINT at a random time and returns the exit code, which is negative before the program catches it."""
        program = subprocess.Popen([self.program, *map(str, arguments)], env=self.environment,
                                   stdout=subprocess.DEVNULL, stderr=subprocess.PIPE)
        time.sleep(self.random.uniform(0, seconds))
        program.send_signal(signal.SIGINT)
        errors = program.communicate()[1].decode()
        self.assertIn(program.returncode, (0, -signal.SIGINT, 128 + signal.SIGINT), errors)
        self.assertEqual("interrupted; nothing has been changed" in errors, program.returncode > 0, errors)
        return program.returncode

    def test_an_interrupted_backup_or_restore_leaves_nothing(self):
        self.random = random.Random(3)
        self.fill(b"saved")
        saved = self.state()
        self.assert_done("--backup", self.archive)
        self.fill(b"present")
        present = self.state()
        other = self.folder / "other.tar"
        for arguments in (("--backup", other), ("--restore", self.archive)):
            seconds = self.seconds_of(*arguments)
            codes = []
            while codes.count(128 + signal.SIGINT) < 5:
                self.fill(b"present")
                (self.home / "before-restore.tar").unlink(missing_ok=True)
                other.unlink(missing_ok=True)
                codes.append(self.interrupt_at_random(seconds, *arguments))
                self.assertLess(len(codes), 200, "the program never says that it was interrupted")
                self.assertEqual(other.exists(), arguments[0] == "--backup" and codes[-1] == 0)
                self.assertEqual(self.state(), saved if arguments[0] == "--restore" and codes[-1] == 0 else present)
                self.assertEqual([path for folder in (self.folder, self.home) for path in folder.glob(".*")], [])
            print(f"{arguments[0]} of {seconds:.3f} s: exit codes {codes}")

    def test_an_interrupted_setup_changes_nothing(self):
        self.assert_done("--setup", "music")
        before = self.state()
        # Counting takes four seconds at most.
        for number in range(1500):
            (self.folder / f"many/{number}").mkdir(parents=True)
        self.random = random.Random(4)
        seconds = self.seconds_of("--setup", self.folder / "many")
        codes = []
        while 128 + signal.SIGINT not in codes:
            self.assert_done("--setup", "music")
            program = subprocess.Popen([self.program, "--setup", self.folder / "many"], env=self.environment,
                                       stdout=subprocess.DEVNULL, stderr=subprocess.PIPE)
            time.sleep(self.random.uniform(0, seconds))
            program.send_signal(signal.SIGINT)
            errors = program.communicate()[1].decode()
            codes.append(program.returncode)
            self.assertLess(len(codes), 200, "the program never says that it was interrupted")
            self.assertIn(codes[-1], (0, -signal.SIGINT, 128 + signal.SIGINT), errors)
            self.assertEqual("the music folder has not been set" in errors, codes[-1] > 0)
            if codes[-1] != 0:
                self.assertEqual(self.state(), before)
            self.assertEqual(list(self.home.glob(".*")), [])
        print(f"--setup of {seconds:.3f} s: exit codes {codes}")


if __name__ == "__main__":
    unittest.main()
