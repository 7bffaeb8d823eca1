"""The start scripts, except for installing and building."""
import os
import pathlib
import shutil
import subprocess
import tempfile
import unittest

import desk

TOOLS = desk.ROOT / "tools"


class Scripts(unittest.TestCase):
    def setUp(self):
        self.folder = pathlib.Path(tempfile.mkdtemp(prefix="vantorix scripts "))
        self.addCleanup(shutil.rmtree, self.folder, ignore_errors=True)
        self.delivered = self.folder / "delivered"
        (self.delivered / "themes" / "default").mkdir(parents=True)
        (self.delivered / "playlists").mkdir()
        (self.delivered / "themes" / "default" / "theme.ini").write_text("[zonelist]\n", encoding="utf-8")
        self.deliver("[Main]\n; where\nStartPath=\nTheme=default\n[Key]\nhaut=38\n")
        self.home = self.folder / "build" / "home"

    def deliver(self, config):
        (self.delivered / "config.ini").write_text(config, encoding="utf-8", newline="")

    def make_home(self, music="/music"):
        subprocess.run([TOOLS / "make_home.sh", self.delivered, self.home, music], check=True)
        return self.config()

    def config(self):
        return (self.home / "config.ini").read_bytes().decode()

    def test_a_new_home_holds_everything_and_the_music_folder(self):
        self.assertEqual(self.make_home("/a b/c\\d&e"),
                         "[Main]\n; where\nStartPath=/a b/c\\d&e\nTheme=default\n[Key]\nhaut=38\n")
        self.assertTrue((self.home / "playlists").is_dir())
        self.assertEqual((self.home / "themes" / "default" / "theme.ini").read_text(encoding="utf-8"), "[zonelist]\n")

    def test_a_second_run_changes_nothing(self):
        self.make_home()
        before = {path: path.stat().st_mtime_ns for path in self.home.rglob("*")}
        self.make_home()
        after = {path: path.stat().st_mtime_ns for path in self.home.rglob("*") if path.name != "config.ini"}
        self.assertEqual(after, {path: time for path, time in before.items() if path.name != "config.ini"})

    def test_a_changed_config_keeps_all_but_its_music_folder(self):
        self.make_home()
        (self.home / "config.ini").write_text("[Main]\nstartpath = /old\nTheme=mine\n", encoding="utf-8")
        self.deliver("[Main]\nStartPath=\nTheme=newer\n")
        self.assertEqual(self.make_home("/new"), "[Main]\nStartPath=/new\nTheme=mine\n")

    def test_an_unchanged_config_follows_the_delivered_one(self):
        self.make_home()
        self.deliver("[Main]\nStartPath=\nTheme=newer\n")
        self.assertEqual(self.make_home("/new"), "[Main]\nStartPath=/new\nTheme=newer\n")

    def test_only_the_first_music_folder_of_the_main_section_is_set(self):
        for config, expected in (
                ("[Key]\nStartPath=x\n[MAIN]\r\nStartPath=\r\nStartPath=z\n",
                 "[Key]\nStartPath=x\n[MAIN]\r\nStartPath=/m\r\nStartPath=z\n"),
                ("[Main]\nTheme=a\n[Key]\nStartPath=x\n", "[Main]\nTheme=a\nStartPath=/m\n[Key]\nStartPath=x\n"),
                ("[Key]\nhaut=1\n", "[Key]\nhaut=1\n[Main]\nStartPath=/m\n"),
                ("[Main]\n", "[Main]\nStartPath=/m\n"),
                ("", "[Main]\nStartPath=/m\n")):
            with self.subTest(config):
                self.make_home()
                (self.home / "config.ini").write_text(config, encoding="utf-8", newline="")
                self.assertEqual(self.make_home("/m"), expected)

    def test_older_files_are_renewed_and_newer_ones_kept(self):
        self.make_home()
        theme = self.home / "themes" / "default" / "theme.ini"
        source = self.delivered / "themes" / "default" / "theme.ini"
        source.write_text("[zonelist]\nnew=1\n", encoding="utf-8")
        os.utime(theme, (1, 1))
        self.make_home()
        self.assertIn("new=1", theme.read_text(encoding="utf-8"))
        theme.write_text("mine", encoding="utf-8")
        os.utime(source, (1, 1))
        self.make_home()
        self.assertEqual(theme.read_text(encoding="utf-8"), "mine")

    def test_a_new_home_gets_the_playlist_of_its_music_and_only_then(self):
        music = self.folder / "music"
        music.mkdir()
        (music / "playlist.txt").write_text("a - b.mp3\nin/é.mp3\n", encoding="utf-8")
        self.make_home(music)
        party = next((self.home / "playlists").glob("*.vtxpl"))
        self.assertEqual(party.read_bytes().decode(),
                         f" 2 \r\n{music}/a - b.mp3\r\na - b.mp3\r\n{music}/in/é.mp3\r\né.mp3\r\n")
        party.unlink()
        self.make_home(music)
        self.assertEqual(list((self.home / "playlists").glob("*.vtxpl")), [])

    def test_the_fonts_of_a_theme_come_into_its_folder(self):
        fonts = {}
        for line in (TOOLS / "theme_fonts.txt").read_text(encoding="utf-8").splitlines():
            if not line.startswith("#"):
                theme, *names = line.split()
                fonts.setdefault(theme, set()).add(pathlib.Path(names[-1]))
        self.assertEqual(set(fonts), {"default", "touch", "wall"})
        self.make_home()
        # Only one theme is delivered here: fonts do not create folders for the others.
        self.assertEqual({file.name for file in (self.home / "themes").rglob("*.ttf")}, {font.name for font in fonts["default"]})
        for theme in ("touch", "wall"):
            self.assertFalse((self.home / "themes" / theme).exists())

    def test_run_names_a_folder_that_is_missing(self):
        for arguments in (["/there is no such folder"], ["a", "b"], ["--help"]):
            with self.subTest(arguments):
                answer = subprocess.run([desk.ROOT / "run.sh", *arguments], capture_output=True, text=True)
                self.assertEqual((answer.returncode, answer.stdout), (2, ""))
        answer = subprocess.run([desk.ROOT / "run.sh", "no music/"], capture_output=True, text=True, cwd=self.folder)
        self.assertIn(f'"{self.folder}/no music"', answer.stderr)

    def test_every_package_stands_in_a_known_group(self):
        for line in (TOOLS / "packages.txt").read_text(encoding="utf-8").splitlines():
            if not line.startswith("#"):
                self.assertRegex(line, r"^(build|run|view|test|optional|assets|package|package-test|arm64) [a-z0-9+.-]+$")

    def test_installing_what_is_there_says_nothing(self):
        tools = self.folder / "tools"
        tools.mkdir()
        shutil.copy(TOOLS / "install_packages.sh", tools)
        (tools / "packages.txt").write_text("core bash\ncore coreutils\nother no-such-package\n", encoding="utf-8")
        answer = subprocess.run([tools / "install_packages.sh", "core"], capture_output=True, text=True)
        self.assertEqual((answer.returncode, answer.stdout, answer.stderr), (0, "", ""))


if __name__ == "__main__":
    unittest.main()
