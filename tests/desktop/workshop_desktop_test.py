"""The theme workshop with the real program: --check-theme, --frames and --watch."""
import json
import os
import pathlib
import shutil
import signal
import subprocess
import tempfile
import time
import unittest

import desk

CONSOLE = os.environ.get("VANTORIX_CONSOLE", str(desk.ROOT / "build" / "vantorix-console"))
PLAIN = desk.ROOT / "tests/homes/plain/themes/default"
# Sanitized programs take longer.
SLOWNESS = int(os.environ.get("VANTORIX_SLOWNESS", "1"))


def run_program(*arguments, code=0, **options):
    result = subprocess.run([desk.PROGRAM, *map(str, arguments)], capture_output=True, text=True, timeout=600,
                            check=False, **options)
    if result.returncode != code:
        raise AssertionError(f"{arguments}: exit code {result.returncode}\n{result.stdout}\n{result.stderr}")
    return result.stdout


def findings(theme, code, *arguments):
    """The findings in a theme, as objects."""
    return [json.loads(line) for line in run_program("--check-theme", theme, "--json", *arguments, code=code).splitlines()]


class Folder(unittest.TestCase):
    def setUp(self):
        self.folder = pathlib.Path(tempfile.mkdtemp(prefix="vantorix-workshop-"))
        self.addCleanup(shutil.rmtree, self.folder, ignore_errors=True)


class Check(Folder):
    def test_the_delivered_themes_have_no_faults(self):
        home = self.folder / "home"
        subprocess.run([desk.ROOT / "tools/make_home.sh", desk.ROOT / "home", home, self.folder], check=True)
        for theme in sorted({path.name for path in (desk.ROOT / "home/themes").iterdir()} - {"wall"}):
            with self.subTest(theme=theme):
                self.assertEqual(findings(home / "themes" / theme, 0), [])
        # The menu of the album wall is beyond the screen.
        for section, found in zip(("horitontal", "vertical"), findings(home / "themes/wall", 0), strict=True):
            self.assertEqual(found["level"], "note")
            self.assertIn(f"[{section}] BlockCommand: the menu at 4000,", found["text"])

    def test_the_themes_of_the_tests_lack_only_letters(self):
        for theme in ("default", "small"):
            with self.subTest(theme=theme):
                found, = findings(desk.ROOT / "tests/homes/plain/themes" / theme, 0)
                self.assertEqual((found["level"], found["subject"]), ("note", "theme"))
                self.assertIn('lacks "ÆÝŒ"', found["text"])

    def test_the_exit_code_is_the_worst_level(self):
        theme = self.folder / "theme"
        shutil.copytree(PLAIN, theme)
        desk.edit(theme / "theme.ini", "BlockMainRemainFontColor=244,242,234", "BlockMainRemainFontColor=60,60,60")
        self.assertEqual([each["level"] for each in findings(theme, 1)], ["warning", "note"])
        (theme / "move.mp3").unlink()
        words = run_program("--check-theme", theme, code=2)
        self.assertIn(f"error: {theme}/move.mp3\n", words)
        self.assertIn("1 error, 1 warning, 1 note", words)

    def test_a_name_is_found_in_the_application_folder(self):
        home = self.folder / "home"
        shutil.copytree(desk.ROOT / "tests/homes/plain", home)
        self.assertIn("0 errors", run_program("--home", home, "--check-theme", "small"))
        self.assertIn("there is no theme to check", run_program("--home", home, "--check-theme", "nothing", code=2))

    def test_nothing_is_written(self):
        theme = self.folder / "theme"
        shutil.copytree(PLAIN, theme)
        empty = self.folder / "empty"
        empty.mkdir()
        before = sorted(theme.iterdir())
        run_program("--check-theme", theme, cwd=empty,
                    env={**os.environ, "HOME": str(empty), "XDG_DATA_HOME": str(empty / "data")})
        self.assertEqual(sorted(theme.iterdir()), before)
        self.assertEqual([path for path in empty.rglob("*") if "cache" not in str(path)], [])


class Frames(Folder):
    SIZES = ("640x360", "384x600")

    def setUp(self):
        super().setUp()
        self.home = self.folder / "home"
        self.music = self.folder / "music"
        shutil.copytree(desk.ROOT / "tests/homes/plain", self.home)
        (self.music / "An Album").mkdir(parents=True)
        desk.write_tone(self.music / "An Album" / "Somebody - Something.wav", 30)
        self.configure("StartPath", "@MUSIC@", self.music)

    def configure(self, key, old, new):
        desk.edit(self.home / "config.ini", f"\n{key}={old}\n", f"\n{key}={new}\n")

    def take(self, *sizes):
        target = self.folder / "frames"
        options = [word for size in sizes for word in ("--size", size)]
        words = run_program("--home", self.home, "--check-theme", "default", "--frames", target, *options)
        self.assertIn("pictures are in", words)
        return target

    def frame_of_the_console(self, size, lines):
        target = self.folder / f"{size}.png"
        subprocess.run([CONSOLE, "--home", self.home, "--screen", size], input="\n".join([*lines, f"frame {target}", ""]),
                       capture_output=True, text=True, check=True)
        return target.read_bytes()

    def test_frames_equal_those_of_the_console(self):
        frames = self.take(*self.SIZES)
        buy = ["key 45"] * 8 + ["key 13"] + [line for keys in ((13, 40, 40), (13, 39), (13, 40), (13,)) for line in
                                               [f"key {keys[0]}", "tick 1", *(f"key {key}" for key in keys[1:])]]
        for size, orientation in zip(self.SIZES, ("horizontal", "vertical")):
            if orientation == "vertical":
                self.configure("Orientation", "horizontal", "vertical")
            with self.subTest(size=size):
                self.assertEqual((frames / f"{size}-first.png").read_bytes(), self.frame_of_the_console(size, []))
                self.assertEqual((frames / f"{size}-covers.png").read_bytes(),
                                 self.frame_of_the_console(size, ["key 13"]))
                self.configure("ManageCoin", "false", "true")
                self.assertEqual((frames / f"{size}-bought.png").read_bytes(), self.frame_of_the_console(size, buy))
                self.configure("ManageCoin", "true", "false")

    def test_every_situation_looks_different(self):
        # Samples: the home has no music.
        shutil.rmtree(self.music)
        frames = self.take(self.SIZES[0])
        pictures = {}
        for picture in sorted(frames.glob("640x360-*.png")):
            self.assertNotIn(picture.read_bytes(), pictures, f"{picture.name} looks like another one")
            pictures[picture.read_bytes()] = picture.name
        self.assertGreaterEqual(len(pictures), 20)
        self.assertTrue((frames / "index.png").is_file())

    def test_only_the_target_is_written(self):
        scratch = self.folder / "scratch"
        scratch.mkdir()
        before = {path: path.stat().st_mtime_ns for path in [*self.home.rglob("*"), *self.music.rglob("*")]}
        run_program("--home", self.home, "--check-theme", "default", "--frames", self.folder / "frames", "--size",
                    "320x180", env={**os.environ, "TMPDIR": str(scratch)})
        after = {path: path.stat().st_mtime_ns for path in [*self.home.rglob("*"), *self.music.rglob("*")]}
        self.assertEqual(before, after)
        self.assertEqual(list(scratch.iterdir()), [])

    def start_frames(self, *arguments):
        """Starts writing pictures, with a scratch folder of its own, and waits for some."""
        scratch = self.folder / "scratch"
        scratch.mkdir(exist_ok=True)
        frames = self.folder / "frames"
        # Without a runtime folder the program makes one.
        environment = {name: value for name, value in os.environ.items() if name != "XDG_RUNTIME_DIR"}
        program = subprocess.Popen([desk.PROGRAM, "--home", self.home, "--check-theme", "default", "--frames", frames,
                                    *arguments], env={**environment, "TMPDIR": str(scratch)}, text=True,
                                   stdout=subprocess.PIPE, stderr=subprocess.PIPE)
        self.addCleanup(program.communicate)
        self.addCleanup(program.kill)
        desk.wait_until(lambda: len(list(frames.glob("*.png"))) > 2, "three pictures")
        return program, scratch, frames

    def test_a_signal_leaves_whole_pictures_and_no_temporary_folder(self):
        for number, arguments in ((signal.SIGINT, ()), (signal.SIGTERM, ("--json",))):
            with self.subTest(signal=number):
                program, scratch, frames = self.start_frames(*arguments)
                self.assertTrue(list(scratch.iterdir()))
                program.send_signal(number)
                words, errors = program.communicate(timeout=desk.PATIENCE)
                self.assertEqual(program.returncode, 128 + number, errors)
                self.assertEqual(list(scratch.iterdir()), [])
                pictures = list(frames.iterdir())
                self.assertEqual([path.name for path in pictures if not path.read_bytes().endswith(b"IEND\xaeB`\x82")], [])
                self.assertFalse((frames / "index.png").exists())
                line = f"incomplete, because it was interrupted. Looked at so far: the theme, {len(pictures)} pictures."
                self.assertIn(line, errors if arguments else words.splitlines()[-1])
                for found in words.splitlines() if arguments else ():
                    json.loads(found)
                shutil.rmtree(frames)

    def test_what_a_killed_run_has_left_does_no_harm(self):
        program, scratch, _ = self.start_frames()
        program.kill()
        program.wait()
        left = sorted(scratch.rglob("*"))
        self.assertTrue(left)
        run_program("--home", self.home, "--check-theme", "default", "--frames", self.folder / "frames", "--size",
                    "320x180", env={**os.environ, "TMPDIR": str(scratch)})
        self.assertEqual(sorted(scratch.rglob("*")), left)

    def test_a_theme_that_stops_the_jukebox_is_reported(self):
        (self.home / "themes/default/move.mp3").unlink()
        words = run_program("--home", self.home, "--check-theme", "default", "--frames", self.folder / "frames", "--size",
                            "640x360", code=2)
        self.assertIn("640x360: the first page: The jukebox ended with error 5", words)

    def test_a_target_that_cannot_be_written_is_reported(self):
        (self.folder / "file").write_bytes(b"")
        fault = findings(PLAIN, 2, "--frames", self.folder / "file")[-1]
        self.assertIn("cannot be made", fault["text"])
        self.assertEqual(fault["subject"], "machine")


class Watch(desk.DeskTest):
    def setUp(self):
        super().setUp()
        self.theme = self.home / "themes/mine"
        shutil.copytree(PLAIN, self.theme)
        self.ini = self.theme / "theme.ini"

    def start_watching(self):
        before = self.screen.picture()
        self.start("--check-theme", "mine", "--watch")
        self.see_change(before, "the window")
        desk.wait_until(lambda: self.title("mine - 1920x1080"), "the title")
        return self.see_rest("the first picture")

    def title(self, name):
        return self.screen.run("xdotool", "search", "--name", ".").split() and name in self.names()

    def names(self):
        windows = self.screen.run("xdotool", "search", "--name", ".").split()
        return [self.screen.run("xdotool", "getwindowname", window).decode().strip() for window in windows]

    def change(self, before, what, change):
        """Changes the theme and returns the next picture and the seconds until it is seen."""
        begin = time.monotonic()
        change()
        picture = self.see_change(before, what)
        return picture, time.monotonic() - begin

    # Without load it takes half a second. The limit is below the interval at which the window looks by itself.
    def test_a_saved_file_is_seen_at_once(self):
        first = self.start_watching()
        seconds = []
        for colour in ("90,255,90", "255,120,120", "120,160,255"):
            text = self.ini.read_text(encoding="utf-8")
            begin = text.index("ZoneListPisteTitreTitreFontColor=")
            changed = text[:begin] + f"ZoneListPisteTitreTitreFontColor={colour}" + text[text.index("\n", begin):]
            first, taken = self.change(first, colour, lambda new=changed: self.ini.write_text(new, encoding="utf-8"))
            seconds.append(taken)
        self.assertLess(min(seconds), 2.5 * SLOWNESS, seconds)

    def test_an_editor_that_renames_is_noticed(self):
        first = self.start_watching()

        def save():
            other = self.theme / ".theme.ini.swp"
            other.write_text(self.ini.read_text(encoding="utf-8").replace("244,242,234", "90,255,90"), encoding="utf-8")
            other.rename(self.ini)
        self.change(first, "a renamed file", save)

    def test_a_fault_is_shown_as_words_and_mended(self):
        first = self.start_watching()
        words, _ = self.change(first, "the words",
                               lambda: desk.edit(self.ini, "BlockMainRemainX=76", "BlockMainRemainX=oops"))
        # The last good picture is dimmed behind the words.
        self.assertLess(sum(words), sum(first) * 0.7)
        self.assertGreater(sum(words), sum(first) * 0.1)
        desk.edit(self.ini, "BlockMainRemainX=oops", "BlockMainRemainX=76")
        self.see_again(first, "the mended theme")

    def test_no_fault_ends_the_window(self):
        first = self.start_watching()
        good = self.ini.read_bytes()
        self.ini.write_bytes(good[:700])
        broken = self.see_change(first, "half a file")
        shutil.move(self.theme, self.folder / "away")
        gone = self.see_change(broken, "no folder")
        self.assertNotEqual(gone, first)
        shutil.move(self.folder / "away", self.theme)
        self.ini.write_bytes(good)
        self.see_again(first, "the theme that is back")

    def test_an_interrupt_leaves_no_temporary_folder(self):
        scratch = self.folder / "scratch"
        scratch.mkdir()
        self.screen.environment["TMPDIR"] = str(scratch)
        self.start_watching()
        self.assertEqual(len(list(scratch.iterdir())), 1)
        self.signal(signal.SIGINT)
        self.assert_ends(0)
        self.assertEqual(list(scratch.iterdir()), [])

    def test_an_interrupt_before_the_window_leaves_no_temporary_folder(self):
        scratch = self.folder / "scratch"
        scratch.mkdir()
        self.screen.environment["TMPDIR"] = str(scratch)
        self.start("--check-theme", "mine", "--watch")
        desk.wait_until(lambda: list(scratch.iterdir()), "the temporary folder")
        self.signal(signal.SIGINT)
        self.assert_ends(0)
        self.assertEqual(list(scratch.iterdir()), [])

    def test_keys_choose_situation_and_size(self):
        first = self.start_watching()
        self.screen.run("xdotool", "search", "--name", "mine", "windowfocus")
        self.screen.press("Right")
        self.see_change(first, "another situation")
        self.screen.press("1")
        self.see_again(first, "the first situation")
        self.screen.press("Up")
        desk.wait_until(lambda: self.title("mine - 1080x1920"), "another size")
        self.screen.press("Escape")
        self.assert_ends(0)


if __name__ == "__main__":
    unittest.main()
