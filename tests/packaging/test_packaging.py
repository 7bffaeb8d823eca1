#!/usr/bin/python3
"""Quick checks of what the packages contain: desktop entry, metainfo, manuals, completion, units, scripts, files."""

import os
import re
import shutil
import subprocess
import tempfile
import time
import unittest
import xml.etree.ElementTree
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
PACKAGING = ROOT / "packaging"
MANUALS = ROOT / "docs" / "man"
COMPLETIONS = PACKAGING / "completion"
KIOSK = PACKAGING / "kiosk"
BUILD = Path(os.environ.get("BUILD_FOLDER", ROOT / "build"))
PROGRAMS = ("vantorix", "vantorix-console", "vantorix-leds")
UNITS = sorted(KIOSK.glob("*.service"))


def needs(tool):
    """Skips a test whose tool is not installed, and names the tool."""
    return unittest.skipUnless(shutil.which(tool), f"{tool} is not installed")


class PackagingTest(unittest.TestCase):
    def run_and_check(self, *command, **options):
        """Runs a command that has to succeed, and returns what it prints."""
        run = subprocess.run(list(map(str, command)), stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True,
                             check=False, **options)
        self.assertEqual(run.returncode, 0, f"{command[0]}: {run.stdout}")
        return run.stdout

    def temporary_folder(self):
        return Path(self.enterContext(tempfile.TemporaryDirectory()))

    def installed(self, component):
        """A folder with everything that a component installs."""
        folder = self.temporary_folder()
        self.run_and_check(os.environ.get("CMAKE", "cmake"), "--install", BUILD, "--prefix", "/usr",
                           "--component", component, env=os.environ | {"DESTDIR": str(folder)})
        return folder


class Desktop(PackagingTest):
    entry = PACKAGING / "desktop" / "vantorix.desktop"

    @needs("desktop-file-validate")
    def test_the_desktop_entry_is_valid(self):
        self.assertEqual(self.run_and_check("desktop-file-validate", self.entry), "")

    def test_its_icon_has_every_size(self):
        for size in (16, 24, 32, 48, 64, 128, 256, 512):
            header = (PACKAGING / "desktop" / f"vantorix-{size}.png").read_bytes()[:24]
            self.assertEqual((int.from_bytes(header[16:20], "big"), int.from_bytes(header[20:24], "big")), (size, size))


class Metainfo(PackagingTest):
    @needs("appstreamcli")
    def test_the_metainfo_is_valid(self):
        for file in (PACKAGING / "desktop").glob("*.metainfo.xml"):
            self.run_and_check("appstreamcli", "validate", "--no-net", file)


class Manuals(PackagingTest):
    @needs("man")
    def test_the_pages_are_formatted_without_warnings(self):
        for page in MANUALS.iterdir():
            run = subprocess.run(["man", "--warnings", "-E", "UTF-8", "-l", "-Tutf8", str(page)], capture_output=True,
                                 text=True, check=False, env=os.environ | {"MANROFFSEQ": "", "MANWIDTH": "80"})
            self.assertEqual((run.returncode, run.stderr), (0, ""), page)
            self.assertGreater(len(run.stdout.splitlines()), 30, page)

    def test_the_delivered_themes_are_listed(self):
        page = (MANUALS / "vantorix.1").read_text()
        for theme in (ROOT / "home" / "themes").iterdir():
            self.assertIn(f'"{theme.name}"', page)

    def test_every_option_has_a_place_in_its_page(self):
        for program in PROGRAMS:
            help_text = self.run_and_check(BUILD / program, "--help")
            page = (MANUALS / f"{program}.1").read_text().replace("\\-", "-")
            for option in set(re.findall(r"--[a-z]+", help_text)):
                self.assertIn(option, page, program)


class Completion(PackagingTest):
    def test_every_option_is_completed(self):
        for program in PROGRAMS:
            help_text = self.run_and_check(BUILD / program, "--help")
            completion = (COMPLETIONS / program).read_text()
            for option in set(re.findall(r"--[a-z]+", help_text)):
                self.assertIn(option, completion, program)

    def complete(self, program, *words):
        """What bash offers after these words."""
        script = f"""
            . /usr/share/bash-completion/bash_completion
            . {COMPLETIONS / program}
            COMP_WORDS=({program} {' '.join(f"'{word}'" for word in words)})
            COMP_CWORD={len(words)}
            COMP_LINE="${{COMP_WORDS[*]}}"
            COMP_POINT=${{#COMP_LINE}}
            compopt() {{ :; }}
            _{program.replace('-', '_')} 2>&1
            printf '%s\\n' "${{COMPREPLY[@]}}"
        """
        return self.run_and_check("bash", "--norc", "-c", script).split()

    @unittest.skipUnless(Path("/usr/share/bash-completion/bash_completion").exists(), "bash-completion is not installed")
    def test_words_are_offered(self):
        self.assertEqual(self.complete("vantorix", "--b"), ["--backup"])
        self.assertEqual(self.complete("vantorix-console", "--home", str(ROOT / "hom")), [str(ROOT / "home")])
        self.assertIn("--window=ring", self.complete("vantorix-leds", "--w"))
        self.assertEqual(self.complete("vantorix-kiosk", "o"), ["on", "off"])


class Units(PackagingTest):
    @needs("systemd-analyze")
    def test_the_units_are_well_formed(self):
        folder = self.temporary_folder()
        # Only the programs of this machine can be started here, so a unit's own are replaced.
        for unit in UNITS:
            text = re.sub(r"^ExecStart=.*$", "ExecStart=/bin/true", unit.read_text(), flags=re.MULTILINE)
            (folder / unit.name).write_text(re.sub(r"^Documentation=.*$", "", text, flags=re.MULTILINE))
        self.assertEqual(self.run_and_check("systemd-analyze", "verify", "--recursive-errors=no", "--man=no",
                                            *sorted(folder.iterdir())), "")

    @needs("systemd-analyze")
    def test_their_exposure_is_below_four(self):
        for unit in UNITS:
            # Ten times the greatest exposure that is accepted.
            report = self.run_and_check("systemd-analyze", "security", "--no-pager", "--offline=true",
                                        "--threshold=39", unit)
            print(report.splitlines()[-1])

    def test_what_they_start_is_installed(self):
        folder = self.installed("kiosk")
        for unit in UNITS:
            program = re.search(r"^ExecStart=(\S+)", unit.read_text(), re.MULTILINE)[1]
            self.assertTrue(os.access(folder / program[1:], os.X_OK), program)


class Scripts(PackagingTest):
    @needs("shellcheck")
    def test_shellcheck_has_no_complaints(self):
        scripts = [*PACKAGING.glob("*.sh"), *(PACKAGING / "machine").glob("*.sh"),
                   *(file for file in KIOSK.iterdir() if file.suffix not in (".service", ".conf", ".rules")),
                   *(PACKAGING / "debian").glob("*.p*inst"), *(PACKAGING / "debian").glob("*.p*rm")]
        self.assertGreater(len(scripts), 10)
        self.assertEqual(self.run_and_check("shellcheck", "-x", *scripts, cwd=ROOT), "")


class MusicWait(PackagingTest):
    def wait(self, config, seconds):
        file = self.temporary_folder() / "config.ini"
        file.write_text(config)
        begin = time.monotonic()
        words = self.run_and_check(KIOSK / "kiosk-wait-for-music", file,
                                   env=os.environ | {"VANTORIX_MUSIC_WAIT": str(seconds)})
        return words.strip(), time.monotonic() - begin

    def test_music_that_is_there_is_not_waited_for(self):
        words, seconds = self.wait(f"; StartPath=/no\r\n[Main]\r\nstartpath = {ROOT}/demo\r\n", 20)
        self.assertEqual(words, f"The music folder {ROOT}/demo was there after 0 seconds.")
        self.assertLess(seconds, 10)

    def test_a_missing_disk_is_waited_for_a_limited_time(self):
        empty = self.temporary_folder()
        words, seconds = self.wait(f"[Key]\nStartPath=/\n[Main]\nStartPath={empty}\n", 2)
        self.assertIn("still missing or empty after 2 seconds", words)
        self.assertGreaterEqual(seconds, 2)

    def test_without_a_music_folder_nothing_is_waited_for(self):
        self.assertEqual(self.wait("[Main]\nStartPath=\n", 20)[0], "No music folder is set yet.")
        self.assertEqual(self.wait("", 20)[0], "No music folder is set yet.")


class KioskCommand(PackagingTest):
    def setUp(self):
        # A clone in root's home cannot be entered by other users.
        folder = self.temporary_folder()
        folder.chmod(0o755)
        self.script = shutil.copy(KIOSK / "vantorix-kiosk", folder)

    def run_kiosk(self, *words, user=None):
        return subprocess.run([self.script, *words], capture_output=True, text=True, check=False, user=user)

    def test_wrong_commands_show_the_usage(self):
        for words in ((), ("start",), ("on", "now"), ("setup",)):
            run = self.run_kiosk(*words)
            self.assertEqual(run.returncode, 2, words)
            self.assertIn("vantorix-kiosk setup FOLDER", run.stderr)
        self.assertEqual(self.run_kiosk("--help").returncode, 0)

    def test_it_says_that_root_is_needed(self):
        user = "nobody" if os.geteuid() == 0 else None
        for words, command in ((("on",), "on"), (("off",), "off"), (("setup", "/"), "setup FOLDER")):
            run = self.run_kiosk(*words, user=user)
            self.assertEqual(run.returncode, 1)
            self.assertIn(f"Try: sudo vantorix-kiosk {command}", run.stderr)


class InstallTree(PackagingTest):
    # The fonts are missing where their package was missing when CMake ran.
    fonts = {f"/usr/share/vantorix/themes/{theme}/{font}" for theme in ("default", "touch", "wall")
             for font in ("VantorixTitles.ttf", "RobotoCondensed-Medium.ttf")}

    def test_every_component_installs_what_the_list_has(self):
        for component in ("jukebox", "demo", "kiosk"):
            folder = self.installed(component)
            files = {"/" + str(path.relative_to(folder)) for path in folder.rglob("*") if not path.is_dir()} - self.fonts
            # Themes, documentation and music are whole folders.
            for source, target in (("home/themes", "/usr/share/vantorix/themes"), ("demo", "/usr/share/vantorix-demo"),
                                   ("docs", "/usr/share/doc/vantorix-jukebox/docs")):
                copied = {f"{target}/{path.relative_to(ROOT / source)}" for path in (ROOT / source).rglob("*")
                          if path.is_file() and "man" not in path.parts}
                if copied & files:
                    self.assertEqual(copied - files, set())
                    files = files - copied | {target + "/"}
            expected = (ROOT / "tests" / "packaging" / f"{component}.txt").read_text().splitlines()
            self.assertEqual(sorted(files), expected, component)

    def test_the_links_of_the_documentation_work(self):
        folder = self.installed("jukebox") / "usr/share/doc/vantorix-jukebox"
        checked = 0
        for page in folder.rglob("*.md"):
            for link in re.findall(r"\]\(([^)#:]+)(?:#[^)]*)?\)", page.read_text()):
                target = (page.parent / link).resolve()
                # Pages for developers also link to the sources and the tests, which are not installed.
                if target.relative_to(folder).parts[0] not in ("src", "tests"):
                    self.assertTrue(target.exists(), f"{page.relative_to(folder)} links to {link}")
                    checked += 1
        self.assertGreater(checked, 30)


class Dependencies(PackagingTest):
    def entries(self, paragraph, name):
        """The entries of a field of debian/control, without their versions."""
        control = (PACKAGING / "debian" / "control").read_text()
        paragraph = next(part for part in control.split("\n\n") if part.startswith(paragraph + "\n"))
        value = re.search(rf"^{name}:((?: .*\n|\n .*)+)", paragraph + "\n", re.MULTILINE)[1]
        return {entry.split()[0] for entry in value.split(",")}

    def field(self, paragraph, name):
        """The packages that a field of debian/control names."""
        return {entry.removesuffix(":any") for entry in self.entries(paragraph, name)}

    def group(self, name):
        rows = (row.split() for row in (ROOT / "tools" / "packages.txt").read_text().splitlines())
        return {row[1] for row in rows if len(row) == 2 and row[0] == name}

    def test_the_package_is_built_with_what_the_build_script_installs(self):
        tests_alone = {"g++", "libgtest-dev", "libgmock-dev", "libbenchmark-dev"}
        self.assertEqual(self.field("Source: vantorix-jukebox", "Build-Depends") - {"debhelper-compat"},
                         self.group("build") - tests_alone)

    # Without ":any" a cross-build replaces such a program by that of the machine it builds for, which does not run.
    @needs("dpkg-query")
    def test_a_cross_build_uses_programs_that_run(self):
        entries = self.entries("Source: vantorix-jukebox", "Build-Depends")
        # It fails for the packages that are not installed, and lists the others.
        run = subprocess.run(["dpkg-query", "-W", "-f", "${Package} ${Multi-Arch}\n",
                              *(entry.removesuffix(":any") for entry in entries)],
                             stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True, check=False)
        of_any_machine = {row.split()[0] for row in run.stdout.splitlines() if row.endswith(" allowed")}
        self.assertIn("python3", of_any_machine)
        self.assertEqual({f"{package}:any" for package in of_any_machine} - entries, set())

    def test_the_package_needs_what_the_run_script_installs(self):
        libraries = {package for package in self.group("run") if package.startswith("lib")}
        needed = (self.field("Package: vantorix-jukebox", "Depends")
                  | self.field("Package: vantorix-jukebox", "Recommends"))
        self.assertEqual(self.group("run") - libraries - needed, set())


class Copyright(PackagingTest):
    def setUp(self):
        self.paragraphs = (PACKAGING / "debian" / "copyright").read_text().split("\n\n")

    def test_every_licence_is_there_in_full(self):
        used = {re.search(r"^License: (\S+)", part, re.MULTILINE)[1] for part in self.paragraphs if part.startswith("Files:")}
        texts = {part.split()[1] for part in self.paragraphs if part.startswith("License:") and part.count("\n") > 10}
        self.assertEqual(used, texts)

    def test_the_fonts_that_the_build_makes_have_a_paragraph(self):
        rows = (row.split() for row in (ROOT / "tools" / "theme_fonts.txt").read_text().splitlines() if row[:1].isalpha())
        made = {row[2] for row in rows if len(row) == 3}
        named = {path.rpartition("/")[2] for part in self.paragraphs if part.startswith("Files:")
                 for path in part.splitlines()[0].split()[1:]}
        self.assertEqual(made, {"VantorixTitles.ttf"})
        self.assertEqual(made - named, set())


class Versions(PackagingTest):
    def test_the_version_is_the_same_everywhere(self):
        version = re.search(r"project\(vantorix VERSION (\S+)", (ROOT / "CMakeLists.txt").read_text())[1]
        changelog = (PACKAGING / "debian" / "changelog").read_text()
        self.assertEqual(re.match(r"vantorix-jukebox \(([^-]+)-\d+\)", changelog)[1], version)
        file = next((PACKAGING / "desktop").glob("*.metainfo.xml"))
        self.assertEqual(xml.etree.ElementTree.parse(file).find("releases/release").get("version"), version)


if __name__ == "__main__":
    unittest.main()
