#!/usr/bin/env python3
"""The real program with --check: every planted fault is found, nothing else is, and nothing on the disk changes."""

import json
import os
import pathlib
import re
import resource
import shutil
import stat
import subprocess
import sys
import tempfile
import time
import unittest

sys.path.insert(0, str(pathlib.Path(__file__).parent))
import planted_library  # noqa: E402

PROGRAM = os.environ["VANTORIX"]
ROOT = pathlib.Path(__file__).resolve().parents[2]
TRACKS = int(os.environ.get("VANTORIX_TRACKS", "30000"))
# The time in which names, tags, covers and settings of 30,000 files must be checked, with some for the start.
LONGEST = 30


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
        import fcntl
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

    def test_ctrl_c_ends_it_at_once(self):
        home = self.home(ROOT / "demo")
        process = subprocess.Popen([PROGRAM, "--check", "--deep", "--home", home], stdout=subprocess.PIPE,
                                   stderr=subprocess.PIPE)
        time.sleep(0.5)
        begin = time.monotonic()
        process.send_signal(2)
        process.communicate(timeout=60)
        self.assertEqual(process.returncode, -2)
        self.assertLess(time.monotonic() - begin, 5)

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
