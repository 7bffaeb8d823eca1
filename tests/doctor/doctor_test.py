#!/usr/bin/env python3
"""The real program with --check: every planted fault is found, nothing else is, and nothing on the disk changes."""

import array
import fcntl
import json
import os
import pathlib
import re
import resource
import shutil
import signal
import stat
import subprocess
import sys
import tempfile
import termios
import time
import unittest

sys.path.insert(0, str(pathlib.Path(__file__).parent))
import planted_library  # noqa: E402

PROGRAM = os.environ["VANTORIX"]
ROOT = pathlib.Path(__file__).resolve().parents[2]
TRACKS = int(os.environ.get("VANTORIX_TRACKS", "30000"))
# The time in which names, tags, covers and settings of 30,000 files must be checked, with some for the start.
LONGEST = 30
# Only a fault reaches it.
PATIENCE = 120


def run(*arguments, **options):
    return subprocess.run([PROGRAM, *map(os.fsencode, arguments)], stdout=subprocess.PIPE, stderr=subprocess.PIPE,
                          check=False, timeout=300, **options)


def findings_of(output):
    """The findings of a report, which has one JSON object a line and nothing else."""
    found = []
    for line in output.decode("utf-8").splitlines():
        finding = json.loads(line)
        assert list(finding) == ["level", "subject", "path", "text", "advice"], line
        assert finding["text"] and finding["level"] in ("error", "warning", "note"), line
        assert finding["subject"] in ("music", "theme", "settings", "machine"), line
        found.append(finding)
    return found


def state_of(folder):
    """Everything below a folder with its sizes and times, without the times of reading."""
    state = {}
    for path, folders, files in os.walk(os.fsencode(folder)):
        for name in folders + files + [b"."]:
            place = os.path.join(path, name)
            status = os.lstat(place)
            state[place] = (status.st_mode, status.st_size, status.st_mtime_ns, status.st_ctime_ns)
    return state


def text_of(path):
    """A path as JSON has it: bytes that are not UTF-8 are lone surrogates."""
    return path.decode("utf-8", "surrogateescape")


class DoctorTest(unittest.TestCase):
    def setUp(self):
        self.folder = tempfile.mkdtemp()
        os.chmod(self.folder, 0o755)
        self.addCleanup(self.remove)

    def remove(self):
        for name in ("music/Disk/Locked", "music/Broken/Locked.mp3"):
            if os.path.exists(os.path.join(self.folder, name)):
                os.chmod(os.path.join(self.folder, name), stat.S_IRWXU)
        shutil.rmtree(self.folder)

    def home(self, music):
        """A correct home for a music folder."""
        home = os.path.join(self.folder, "good")
        subprocess.run([ROOT / "tools/make_home.sh", ROOT / "home", home, music], check=True)
        os.makedirs(os.path.join(home, "playlists"), exist_ok=True)
        return home

    def test_every_planted_fault_is_found_and_nothing_else(self):
        planted = planted_library.make(self.folder, TRACKS)
        self.assertGreaterEqual(len(planted.faults), 40)
        before = state_of(self.folder)
        begin = time.monotonic()
        done = run("--check", "--json", "--home", text_of(planted.home))
        seconds = time.monotonic() - begin
        used = resource.getrusage(resource.RUSAGE_CHILDREN)
        print(f"{TRACKS} tracks: {seconds:.1f} s, {used.ru_utime + used.ru_stime:.1f} s of the processor, "
              f"{used.ru_maxrss // 1024} MB", file=sys.stderr)
        self.assertEqual(done.returncode, 2, done.stderr)
        self.assertEqual(state_of(self.folder), before)
        self.assertEqual(done.stderr, b"")
        self.compare(planted, [f for f in findings_of(done.stdout) if f["subject"] != "machine"])
        self.assertLess(seconds, LONGEST)
        text = run("--check", "--home", text_of(planted.home))
        self.assertEqual(text.returncode, 2)
        self.assertLess(text.stdout.index(b"error: "), text.stdout.index(b"warning: "))
        self.assertLess(text.stdout.rindex(b"warning: "), text.stdout.index(b"note: "))

    def compare(self, planted, found):
        rest, missed = list(found), []
        for level, subject, path, word in planted.faults:
            matching = [f for f in rest if f["level"] == level and f["subject"] == subject and
                        f["path"] == text_of(path) and word in f["text"]]
            if len(matching) == 1:
                rest.remove(matching[0])
            else:
                missed.append((level, subject, path, word, len(matching)))
        self.assertEqual(missed, [], "not found once")
        self.assertEqual(rest, [], "invented")
        for finding in found:
            self.assertTrue(finding["advice"] or finding["level"] == "note", finding)

    def test_the_demo_library_with_a_correct_home_has_no_fault(self):
        done = run("--check", ROOT / "demo", "--deep", "--json", "--home", self.home(ROOT / "demo"))
        found = [f for f in findings_of(done.stdout) if f["subject"] != "machine" and f["level"] != "note"]
        self.assertEqual(found, [])
        self.assertEqual(done.stderr, b"")

    def test_deep_opens_every_file(self):
        music = pathlib.Path(self.folder, "music")
        music.mkdir()
        shutil.copy(ROOT / "demo" / "Amazing_Grace.mp3", music)
        for name in ("garbage.mp3", "noise.avi", "garbage.flac"):
            (music / name).write_bytes(bytes(range(256)) * 40)
        (music / "Amazing_Grace.jpg").write_bytes(b"\xff\xd8\xff garbage")
        home = self.home(music)
        quick = run("--check", "--json", "--home", home)
        self.assertEqual([f for f in findings_of(quick.stdout) if f["subject"] == "music"], [])
        deep = run("--check", "--deep", "--json", "--home", home)
        found = {(f["level"], os.path.basename(f["path"])) for f in findings_of(deep.stdout)
                 if f["subject"] == "music"}
        self.assertEqual(found, {("warning", "garbage.mp3"), ("error", "noise.avi"), ("warning", "garbage.flac"),
                                 ("warning", "Amazing_Grace.jpg")})
        self.assertEqual(deep.returncode, 2)

    @unittest.skipUnless(shutil.which("ffmpeg"), "ffmpeg is missing")
    def test_the_commands_convert(self):
        music = pathlib.Path(self.folder, "It's music")
        music.mkdir()
        sound = ["-f", "lavfi", "-i", "sine=440:duration=1"]
        video = ["-f", "lavfi", "-i", "testsrc=duration=1:size=64x48:rate=5"]
        for number, (ending, inputs) in enumerate([(ending, sound) for ending in ("m4a", "ogg", "opus", "aac", "wv", "aiff")] +
                                                  [(ending, video + sound) for ending in ("mp4", "mkv", "webm", "mov")]):
            subprocess.run(["ffmpeg", "-loglevel", "error", *inputs, music / f"{number} '$x` {ending}.{ending}"],
                           check=True)
        home = self.home(music)
        found = [f for f in findings_of(run("--check", "--json", "--home", home).stdout) if f["subject"] == "music"]
        unlisted = [f for f in found if "is not listed" in f["text"]]
        self.assertEqual(len(unlisted), 10)
        for finding in unlisted:
            command = finding["advice"].removeprefix("Convert it: ")
            subprocess.run(["sh", "-c", command], check=True, stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
                           stderr=subprocess.DEVNULL)
            os.remove(finding["path"])
        self.assertEqual(sorted(path.suffix for path in music.iterdir()),
                         [".avi"] * 4 + [".flac"] * 2 + [".mp3"] * 4)
        deep = findings_of(run("--check", "--deep", "--json", "--home", home).stdout)
        self.assertEqual([f for f in deep if f["subject"] == "music"], [])

    def test_a_folder_that_is_none_is_a_wrong_command_line(self):
        home = self.home(self.folder)
        for name in (os.path.join(self.folder, "missing"), os.path.join(home, "config.ini")):
            done = run("--check", name, "--home", home)
            self.assertEqual((done.returncode, done.stdout), (2, b""))
            self.assertIn(b"there is no folder", done.stderr)
        done = run("--check", "--home", os.path.join(self.folder, "missing"))
        self.assertEqual((done.returncode, done.stdout), (2, b""))

    def test_all_faults_of_the_theme_are_found(self):
        home = self.home(ROOT / "demo")
        theme = pathlib.Path(home, "themes", "default", "theme.ini")
        text = theme.read_text()
        for key in ("BlockMainBtnStopX", "BlockMainBtnPlayX"):
            text = re.sub(f"^{key}=.*$", f"{key}=wide", text, flags=re.MULTILINE)
        theme.write_text(text)
        done = run("--check", "--json", "--home", home)
        found = [f for f in findings_of(done.stdout) if f["subject"] == "theme" and f["level"] == "error"]
        self.assertEqual([f["path"] for f in found], [str(theme), str(theme)])
        self.assertEqual(done.returncode, 2)

    def test_a_running_jukebox_is_a_note_and_no_obstacle(self):
        home = self.home(ROOT / "demo")
        folder = os.open(home, os.O_RDONLY)
        self.addCleanup(os.close, folder)
        fcntl.flock(folder, fcntl.LOCK_EX)
        done = run("--check", "--json", "--home", home)
        self.assertIn("in use", " ".join(f["text"] for f in findings_of(done.stdout)))
        self.assertNotEqual(done.returncode, 2)

    def test_missing_decoders_are_named_with_their_packages(self):
        environment = dict(os.environ, GST_PLUGIN_SYSTEM_PATH_1_0=self.folder, GST_PLUGIN_PATH_1_0="",
                           GST_REGISTRY_1_0=os.path.join(self.folder, "registry"))
        done = run("--check", "--json", "--home", self.home(ROOT / "demo"), env=environment)
        machine = [f for f in findings_of(done.stdout) if f["subject"] == "machine"]
        for package in ("good", "ugly", "bad"):
            self.assertIn(f"apt install gstreamer1.0-plugins-{package}", [f["advice"] for f in machine])
        self.assertIn("apt install gstreamer1.0-libav", [f["advice"] for f in machine])

    def test_a_terminal_shows_progress_and_the_time_left(self):
        home = self.home(ROOT / "demo")
        master, slave = os.openpty()
        self.addCleanup(os.close, master)
        done = subprocess.run([PROGRAM, "--check", "--deep", "--json", "--home", home], stdout=subprocess.PIPE,
                              stderr=slave, check=False, timeout=60)
        os.close(slave)
        shown = os.read(master, 1 << 20).decode()
        self.assertIn(" tracks", shown)
        self.assertRegex(shown, r"[0-9]+ of [0-9]+ files opened, [0-9:]* left")
        self.assertTrue(shown.endswith("\r\x1b[K"), "the line is not erased")
        findings_of(done.stdout)

    def start(self, *arguments, **options):
        process = subprocess.Popen([PROGRAM, *map(os.fsencode, arguments)], stdout=subprocess.PIPE, **options)
        self.addCleanup(process.communicate)
        self.addCleanup(process.kill)
        return process

    def wait_until(self, condition, what):
        end = time.monotonic() + PATIENCE
        while not condition():
            self.assertLess(time.monotonic(), end, what)
            time.sleep(0.02)

    def environment(self, **more):
        """Of a program whose temporary folders are seen: without a runtime folder it makes one too."""
        scratch = pathlib.Path(self.folder, "scratch")
        scratch.mkdir()
        environment = {**os.environ, **more, "TMPDIR": str(scratch)}
        environment.pop("XDG_RUNTIME_DIR", None)
        return scratch, environment

    # The pipe is full while the signal comes, so the check cannot complete before it.
    def test_an_interrupt_leaves_whole_findings_as_json(self):
        music = pathlib.Path(self.folder, "music")
        for number in range(1500):
            (music / f"{number:04} has nothing in it").mkdir(parents=True)
        scratch, environment = self.environment()
        process = self.start("--check", "--json", "--home", self.home(music), stderr=subprocess.PIPE, env=environment)
        waiting = array.array("i", [0])

        def is_full():
            before = waiting[0]
            fcntl.ioctl(process.stdout, termios.FIONREAD, waiting)
            time.sleep(0.2)
            # A busy machine may pause earlier; the pipe holds 65,536 bytes.
            return waiting[0] == before > 32768
        self.wait_until(is_full, "findings")
        process.send_signal(signal.SIGINT)
        time.sleep(0.5)
        output, errors = process.communicate(timeout=PATIENCE)
        self.assertEqual(process.returncode, 128 + signal.SIGINT, errors)
        found = [f for f in findings_of(output) if "shows an empty page" in f["text"]]
        self.assertGreater(len(found), 50)
        self.assertLess(len(found), 1500)
        self.assertRegex(errors.decode(), r"\Avantorix: The check is incomplete, because it was interrupted\. "
                                          r"Looked at so far: settings, machine, theme, [0-9,]+ folders, 0 tracks\.\n\Z")
        self.assertEqual(list(scratch.iterdir()), [])

    # The folder never answers, as on a disk of the network whose server is gone.
    def test_an_interrupt_shows_what_is_found_although_a_disk_hangs(self):
        music = pathlib.Path(self.folder, "music")
        # The list of a folder says what the folders in it hold, so the one that hangs is one further down.
        for name in ("Album", "Empty", "Zoo/Lost"):
            (music / name).mkdir(parents=True)
        shutil.copy(ROOT / "demo" / "Amazing_Grace.mp3", music / "Album")
        home = self.home(music)
        mark = pathlib.Path(self.folder, "mark")
        _, environment = self.environment(LD_PRELOAD=os.environ["HUNG_FOLDER_LIBRARY"], HUNG_FOLDER=str(music / "Zoo/Lost"),
                                          HUNG_FOLDER_ON=home, HUNG_FOLDER_MARK=str(mark))
        process = self.start("--check", "--home", home, stderr=subprocess.PIPE, env=environment)
        self.wait_until(mark.exists, "the folder is listed")
        process.send_signal(signal.SIGTERM)
        output, errors = process.communicate(timeout=PATIENCE)
        self.assertEqual((process.returncode, errors), (128 + signal.SIGTERM, b""))
        self.assertIn(f"warning: {music}/Empty\n    The folder shows an empty page", output.decode())
        self.assertEqual(output.decode().splitlines()[-1],
                         "The check is incomplete, because it was interrupted. "
                         "Looked at so far: settings, machine, theme, 3 folders, 1 tracks.")

    def test_an_interrupt_shows_the_files_that_do_not_open(self):
        music = pathlib.Path(self.folder, "music")
        music.mkdir()
        (music / "0000.mp3").write_bytes(bytes(range(256)) * 40)
        for number in range(1, 3000):
            (music / f"{number:04}.mp3").symlink_to(ROOT / "demo" / "Amazing_Grace.mp3")
        scratch, environment = self.environment()
        master, slave = os.openpty()
        self.addCleanup(os.close, master)
        process = self.start("--check", "--deep", "--home", self.home(music), stderr=slave, env=environment)
        os.close(slave)
        shown = b""
        while not re.search(rb" [1-9][0-9]+ of 3,000 files opened|\r\x1b\[K[1-9][0-9]+ of 3,000", shown):
            shown += os.read(master, 1 << 16)
        begin = time.monotonic()
        process.send_signal(signal.SIGINT)
        output = process.communicate(timeout=PATIENCE)[0].decode()
        self.assertLess(time.monotonic() - begin, 10)
        self.assertEqual(process.returncode, 128 + signal.SIGINT)
        self.assertIn(f"warning: {music}/0000.mp3\n    It does not play", output)
        self.assertRegex(output.splitlines()[-1], r"1 folders, 3,000 tracks, [0-9,]+ of 3,000 files opened\.\Z")
        self.assertEqual(list(scratch.iterdir()), [])

    def test_the_first_start_has_not_been_yet(self):
        environment = dict(os.environ, XDG_DATA_HOME=os.path.join(self.folder, "data"))
        program = shutil.copy(PROGRAM, os.path.join(self.folder, "vantorix"))
        share = os.path.join(os.path.dirname(self.folder), "share")
        self.assertFalse(os.path.exists(share))
        done = subprocess.run([program, "--check", ROOT / "demo", "--json"], stdout=subprocess.PIPE, env=environment,
                              stderr=subprocess.PIPE, check=False, timeout=60)
        self.assertFalse(os.path.exists(os.path.join(self.folder, "data")), done.stderr)


if __name__ == "__main__":
    unittest.main()
