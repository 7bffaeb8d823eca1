#!/usr/bin/python3
"""Each check of tools/ passes a clean tree and finds the faults that are planted in it."""

import json
import os
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
COMPILER = "g++"

ARCHITECTURE = """# Architecture

## Who may include whom

| Folder | What is there | Sees | Toolkits |
|---|---|---|---|
| `core` | code | | Qt Core only |
| `imaging` | code | all above | Qt Core, Qt Gui |
| `imaging/png` | code | `imaging/image.h`, `core` | Qt Core only |
| `state` | code | all above | Qt Core |
| `library` | code | all above | Qt Core |
| `rendering` | code | all above | Qt Core |
| `app/cabinet` | code | everything | Qt Core, Qt Widgets |
"""

CLEAN_SOURCES = {
    "src/core/integer.h": "#include <QString>\n#include <cstdint>\nstruct Integer {};\n",
    "src/imaging/image.h": '#include "core/integer.h"\nclass Image { Integer size; };\n',
    "src/imaging/surface.h": "#include <QImage>\nstruct Surface {};\n",
    "src/imaging/png/parser.cpp": '#include "imaging/image.h"\n#include <span>\n',
    "src/state/keys.h": "struct Keys {};\n",
    "src/state/theme_state.h": '#include "state/keys.h"\nstruct ThemeState { Keys keys; };\n',
    "src/state/form_main.h": '#include "state/theme_state.h"\nstruct Form_Main : ThemeState {};\n',
    "src/library/place.h": "struct Place { int x; };\n",
    "src/rendering/slot.h": '#include "library/place.h"\nvoid Draw(Place place);\n',
    "src/rendering/slot.cpp": '#include "rendering/slot.h"\n#include "state/form_main.h"\n',
    "src/app/cabinet/main.cpp": '#include "state/form_main.h"\n#include <QWidget>\n',
}

STATE = """# Architecture

## The state

| Struct | Owner | What it holds |
|---|---|---|
| `form.queue`, `form.player` | playback | the queue |

### Who else writes what

| Variables | Rooms | Why |
|---|---|---|
| `form.queue.Selected` | shell | ticks choose it |
"""

REGISTER = """# Not bugs

| Number | Symptom | Why | Where | Test |
|---|---|---|---|---|
| D-01 | It is odd. | It is used. | `src/pause.cpp` | `tests/pause_test.cpp`, `tests/sessions/queue/a-pause` |
"""

MARKED = "// Deliberate D-01: it is odd. One expects otherwise.\n"


def run(check, root, *options):
    """A check's exit code and all its output, or its own fault."""
    command = [sys.executable, str(ROOT / "tools" / f"{check}.py"), "--root", str(root), *options]
    result = subprocess.run(command, capture_output=True, text=True, check=False)
    if "Traceback" in result.stderr:
        raise AssertionError(result.stderr)
    return result.returncode, result.stdout + result.stderr


class TreeTest(unittest.TestCase):
    """A test with a source tree of its own."""

    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.root = Path(folder.name)

    def write(self, path, text):
        place = self.root / path
        place.parent.mkdir(parents=True, exist_ok=True)
        place.write_bytes(text) if isinstance(text, bytes) else place.write_text(text, encoding="utf-8")

    def assert_finds(self, check, *words, options=()):
        code, output = run(check, self.root, *options)
        self.assertEqual(code, 1, output)
        for word in words:
            self.assertIn(word, output)
        return output

    def assert_passes(self, check, options=()):
        code, output = run(check, self.root, *options)
        self.assertEqual(code, 0, output)
        return output


class Includes(TreeTest):
    def setUp(self):
        super().setUp()
        self.write("docs/architecture.md", ARCHITECTURE)
        for path, text in CLEAN_SOURCES.items():
            self.write(path, text)

    def test_clean(self):
        self.assertIn("11 files", self.assert_passes("check_includes"))

    def test_header_with_form(self):
        self.write("src/rendering/slot.h", '\n#include "state/form_main.h"\nvoid Draw(Form_Main& form);\n')
        self.assert_finds("check_includes", "src/rendering/slot.h:2:", "does not include")

    def test_header_without_need(self):
        self.write("src/rendering/slot.h", '#include "library/place.h"\n// Place\nvoid Draw();\n')
        self.assert_finds("check_includes", "src/rendering/slot.h:1:", "only for a type, and uses none")

    def test_room_further_up(self):
        self.write("src/library/place.cpp", '#include "rendering/slot.h"\n')
        self.assert_finds("check_includes", "src/library/place.cpp:1:", '"library" may not include "rendering/slot.h"')

    def test_named_folder_further_up(self):
        self.write("docs/architecture.md", ARCHITECTURE.replace("| `core` | code | |", "| `core` | code | `library` |"))
        self.write("src/core/clock.cpp", '#include "library/place.h"\n')
        self.assert_finds("check_includes", "src/core/clock.cpp:1:", '"core" may not include')

    def test_folder_that_is_not_named(self):
        self.write("src/imaging/png/parser.cpp", '#include "imaging/surface.h"\n')
        self.assert_finds("check_includes", "src/imaging/png/parser.cpp:1:", '"imaging/surface.h"')

    def test_toolkit(self):
        self.write("src/rendering/slot.cpp", "int a;\n  #  include <QWidget>\n")
        self.assert_finds("check_includes", "src/rendering/slot.cpp:2:", "may not use Qt Widgets")

    def test_toolkit_behind_our_header(self):
        self.write("src/imaging/image.h", '#include "imaging/surface.h"\nclass Image { Surface surface; };\n')
        self.assert_finds("check_includes", "png/parser.cpp:1:", 'reach <QImage> through "imaging/surface.h"')

    def test_unknown_toolkit(self):
        self.write("src/core/integer.h", "#include <boost/any.hpp>\n")
        self.assert_finds("check_includes", "src/core/integer.h:1:", "no toolkit known to this check")

    def test_missing_header(self):
        self.write("src/core/clock.cpp", '#include "core/clock.h"\n')
        self.assert_finds("check_includes", "src/core/clock.cpp:1:", 'there is no "core/clock.h"')

    def test_file_without_rule(self):
        self.write("src/odd/deep/file.h", "\n")
        self.assert_finds("check_includes", "src/odd/deep/file.h:1:", "no row")

    def test_rule_without_file(self):
        (self.root / "src/app/cabinet/main.cpp").unlink()
        self.assert_finds("check_includes", "docs/architecture.md:13:", "this folder has no files: app/cabinet")

    def test_missing_table(self):
        self.write("docs/architecture.md", "# Architecture\n")
        self.assert_finds("check_includes", "no table")


class Writes(TreeTest):
    def setUp(self):
        super().setUp()
        self.write("docs/architecture.md", STATE)
        self.write("src/playback/queue.cpp", "form.queue.Count += 1;\nform.player.Path(form.queue.Count).clear();\n")
        self.write("src/shell/tick.cpp", "if (form.queue.Count == 1) {\n    form.queue.Selected = 2;\n}\n")

    def assert_finds_write(self, line):
        self.write("src/shell/tick.cpp", f"form.queue.Selected = 2;\n{line}\n")
        self.assert_finds("check_writes", 'src/shell/tick.cpp:2: "shell" may not write')

    def test_clean(self):
        self.assertIn("3 writes, 2 structs", self.assert_passes("check_writes"))

    def test_assignment(self):
        self.assert_finds_write("form.queue.Count = 1;")

    def test_assignment_with_operation(self):
        self.assert_finds_write("form.queue.Count -= 1;")

    def test_assignment_to_an_element(self):
        self.assert_finds_write("form.queue.Path(form.queue.At(CInt16(x))) = path;")

    def test_assignment_to_a_member(self):
        self.assert_finds_write("form.queue.Row(1).X = 1;")

    def test_call_that_changes(self):
        self.assert_finds_write("form.player.Path.clear();")

    def test_comparison_and_comment(self):
        self.write("src/shell/wait.cpp", "if (form.queue.Count == 1) {}\n// form.queue.Count = 1;\n")
        self.assert_passes("check_writes")

    def test_row_for_another_room(self):
        self.write("src/theme/read.cpp", "form.queue.Selected = 2;\n")
        self.assert_finds("check_writes", 'src/theme/read.cpp:1: "theme" may not write form.queue.Selected, which "playback"')

    def test_row_that_nobody_needs(self):
        self.write("src/shell/tick.cpp", "int a;\n")
        self.assert_finds("check_writes", 'docs/architecture.md:13: "shell" does not write form.queue.Selected')

    def test_program(self):
        self.write("src/app/console/commands.cpp", "form.queue.Count = 1;\n")
        self.assert_passes("check_writes")

    def test_missing_table(self):
        self.write("docs/architecture.md", "# Architecture\n")
        self.assert_finds("check_writes", "no table")


class Deliberate(TreeTest):
    def setUp(self):
        super().setUp()
        self.write("docs/deliberate.md", REGISTER)
        self.write("src/pause.cpp", "int a;\n" + MARKED)
        self.write("tests/pause_test.cpp", "// D-01\n")
        self.write("tests/sessions/queue/a-pause/session.txt", "# D-01\nkey 13\n")

    def test_clean(self):
        self.assert_passes("check_deliberate")

    def test_mark_without_row(self):
        self.write("src/clock.cpp", MARKED.replace("01", "02"))
        self.assert_finds("check_deliberate", "src/clock.cpp:1: D-02 is not in docs/deliberate.md")

    def test_mark_without_number(self):
        self.write("src/clock.cpp", MARKED.replace("01", "??"))
        self.write("src/other.cpp", "int a; // Deliberate: so it is\n")
        self.assert_finds("check_deliberate", "src/clock.cpp:1:", "src/other.cpp:1:", "without a number")

    def test_row_without_mark(self):
        self.write("src/pause.cpp", "int a;\n")
        self.assert_finds("check_deliberate", "D-01 is not marked in src/")

    def test_mark_elsewhere(self):
        (self.root / "src/pause.cpp").rename(self.root / "src/wait.cpp")
        self.assert_finds("check_deliberate", "deliberate.md:5: D-01 is marked in `src/wait.cpp`, not `src/pause.cpp`")

    def test_row_without_test(self):
        self.write("tests/pause_test.cpp", "\n")
        (self.root / "tests/sessions/queue/a-pause/session.txt").unlink()
        self.assert_finds("check_deliberate", "D-01 is named by no test")

    def test_test_of_another_name(self):
        self.write("tests/wait_test.cpp", "// D-01\n")
        self.assert_finds("check_deliberate", "deliberate.md:5: D-01 is tested by", "`tests/wait_test.cpp`")

    def test_test_without_row(self):
        self.write("tests/wait_test.cpp", "// D-07\n")
        self.assert_finds("check_deliberate", "tests/wait_test.cpp:1: D-07 is not in")

    def test_row_twice(self):
        self.write("docs/deliberate.md", REGISTER + REGISTER.split("\n")[-2] + "\n")
        self.assert_finds("check_deliberate", "D-01 occurs twice")

    def test_empty_reason(self):
        self.write("docs/deliberate.md", REGISTER.replace("It is used.", ""))
        self.assert_finds("check_deliberate", "D-01 needs a symptom and a reason")

    def test_fill(self):
        row = next(line for line in REGISTER.split("\n") if line.startswith("| D-01"))
        self.write("docs/deliberate.md", REGISTER.replace(row, "| D-01 | It is odd. | It is used. | none | none |"))
        self.assert_passes("check_deliberate", ["--fill"])
        self.assertEqual((self.root / "docs/deliberate.md").read_text(encoding="utf-8"), REGISTER)


class Behaviour(TreeTest):
    def setUp(self):
        super().setUp()
        (self.root / "docs").mkdir()
        self.write("tests/sessions/about.txt", "The rules\n\nWhat it does.\n\nqueue\ntouch\n")
        self.write("tests/sessions/queue/about.txt", "The queue\n\nHow it grows.\n\nsecond\nfirst\n")
        self.write("tests/sessions/touch/about.txt", "Touch\n\nWhat a press does.\n\npress\n")
        for name, text in (("queue/first", "# A pick joins the queue,\n# and starts.\n\n# Pick.\nkey 13\n"),
                           ("queue/second", "# Deliberate D-07: The end is *cut*.\nkey 13\n"),
                           ("touch/press", "# `PressAt` acts at_once.\ndown 1 1\n# See D-08.\nup 1 1\n")):
            self.write(f"tests/sessions/{name}/session.txt", text)
        self.write("tests/sessions/media/tone.mp3", b"\0")
        self.assert_passes("make_behaviour")

    def page(self):
        return (self.root / "docs/behaviour.md").read_text(encoding="utf-8")

    def assert_page_finds(self, *words):
        """The fault is found with --check and when writing, and the page is not changed."""
        before = self.page()
        self.assert_finds("make_behaviour", *words, options=["--check"])
        self.assert_finds("make_behaviour", *words)
        self.assertEqual(self.page(), before)

    def test_page(self):
        self.assertIn("3 sessions", self.assert_passes("make_behaviour", ["--check"]))
        self.assertIn("# The rules\n\nWhat it does.\n\n", self.page())
        self.assertIn("- [The queue](#the-queue)\n- [Touch](#touch)\n\n## The queue\n\nHow it grows.\n\n"
                      "- The end is \\*cut\\*. ([session](../tests/sessions/queue/second), deliberate: "
                      "[D-07](deliberate.md))\n"
                      "- A pick joins the queue, and starts. ([session](../tests/sessions/queue/first))\n\n"
                      "## Touch\n\nWhat a press does.\n\n"
                      "- `PressAt` acts at\\_once. ([session](../tests/sessions/touch/press), deliberate: "
                      "[D-08](deliberate.md))\n", self.page())

    def test_page_that_says_something_else(self):
        self.write("tests/sessions/touch/press/session.txt", "# A press waits.\ndown 1 1\n")
        self.assert_finds("make_behaviour", "docs/behaviour.md:21: does not match the sessions", options=["--check"])
        self.assertNotIn("waits", self.page())
        self.assert_passes("make_behaviour")
        self.assertIn("- A press waits. (", self.page())

    def test_missing_page(self):
        (self.root / "docs/behaviour.md").unlink()
        self.assert_finds("make_behaviour", "docs/behaviour.md:1: does not match", options=["--check"])

    def test_session_without_rule(self):
        for text in ("key 13\n# Too late.\n", "\n# Too late.\nkey 13\n", "# Deliberate D-07: \nkey 13\n"):
            with self.subTest(text=text):
                self.write("tests/sessions/queue/first/session.txt", text)
                self.assert_page_finds("tests/sessions/queue/first/session.txt:1: has no rule")

    def test_rule_that_is_no_sentence(self):
        for rule in ("first the queue, then the track.", "The queue", "Deliberate D-07: the queue."):
            with self.subTest(rule=rule):
                self.write("tests/sessions/queue/first/session.txt", f"# {rule}\nkey 13\n")
                self.assert_page_finds("tests/sessions/queue/first/session.txt:1: the rule is not a sentence")

    def test_subject_without_introduction(self):
        (self.root / "tests/sessions/touch/about.txt").unlink()
        self.assert_page_finds("tests/sessions/touch/about.txt:1: missing")
        self.write("tests/sessions/touch/about.txt", "Touch\n\npress\n")
        self.assert_page_finds("tests/sessions/touch/about.txt:1: needs a heading")

    def test_session_that_is_not_listed(self):
        self.write("tests/sessions/queue/third/session.txt", "# A third rule.\nkey 13\n")
        self.assert_page_finds("tests/sessions/queue/about.txt:1: third is not listed")

    def test_subject_that_is_not_listed(self):
        self.write("tests/sessions/lights/about.txt", "Lights\n\nLamps.\n\nblink\n")
        self.write("tests/sessions/lights/blink/session.txt", "# They blink.\nkey 13\n")
        self.assert_page_finds("tests/sessions/about.txt:1: lights is not listed")

    def test_list_with_a_wrong_name(self):
        self.write("tests/sessions/queue/about.txt", "The queue\n\nHow it grows.\n\nsecond\nfirst\nsecond\nlast\n")
        self.assert_page_finds("second is listed twice", "last is listed and does not exist")

    def test_session_without_subject(self):
        self.write("tests/sessions/stray/session.txt", "# A stray rule.\nkey 13\n")
        self.assert_page_finds("tests/sessions/stray/session.txt:1: a session belongs in the folder of a subject")


class Words(TreeTest):
    # In pieces, so that this file passes the check itself.
    PLANTED = [
        "see the sp" + "ec here",
        "Sp" + "ecification.",
        "as in Pa" + "rt 7.2 of it",
        "cd /wo" + "rk/main",
        "// TO" + "DO later",
        "GTEST_" + "SKIP();",
        "TEST(Clock, DISA" + "BLED_Ticks)",
    ]
    INNOCENT = ["specific inspector of species", "part 7 of 8", "artwork/main", "mkdtemp XXXX" + "XX", "hackle"]

    def test_clean(self):
        self.write("src/clock.cpp", "\n".join(self.INNOCENT) + "\n")
        self.assertIn("1 file", self.assert_passes("check_words"))

    def test_each_word(self):
        for text in self.PLANTED:
            with self.subTest(text=text):
                self.write("src/clock.cpp", "int a;\n" + text + "\n")
                self.assert_finds("check_words", "src/clock.cpp:2:")

    def test_name_of_a_file(self):
        self.write("docs/sp" + "ec.md", "text\n")
        self.assert_finds("check_words", "in the name of the file")

    def test_exempt(self):
        self.write("docs/picture.svg", self.PLANTED[0])
        self.write("demo/sound.mp3", b"\0" + self.PLANTED[0].encode())
        self.assert_passes("check_words")

    def test_long_source(self):
        self.write("src/clock.cpp", "int a;\n" * 701)
        self.write("home/theme.ini", "a=1\n" * 900)
        self.assertNotIn("theme.ini", self.assert_finds("check_words", "src/clock.cpp:701: 701 lines"))

    def test_what_git_ignores(self):
        subprocess.run(["git", "init", "-q", str(self.root)], check=True)
        self.write(".gitignore", "/build/\n")
        self.write("build/notes.txt", self.PLANTED[0])
        self.assert_passes("check_words")
        self.write("notes.txt", self.PLANTED[0])
        self.assert_finds("check_words", "notes.txt:1:")


class Headers(TreeTest):
    def setUp(self):
        super().setUp()
        self.write("src/core/integer.h", "#pragma once\nstruct Integer {};\n")
        self.write("src/core/clock.h", '#pragma once\n#include "core/integer.h"\ninline Integer Now() { return {}; }\n')
        self.write("src/core/clock.cpp", '#include "core/clock.h"\n')
        source = "src/core/clock.cpp"
        command = f"{COMPILER} -Isrc -std=c++20 -Wall -Werror -o clock.o -MD -MT clock.o -MF clock.d -c {source}"
        entry = {"directory": str(self.root), "command": command, "file": source}
        self.write("build/compile_commands.json", json.dumps([entry]))
        self.options = ["--build", str(self.root / "build")]

    def make_old(self):
        """Makes everything written so far older than the note of a run."""
        for path in (self.root / "src").rglob("*.*"):
            os.utime(path, (1, 1))

    def test_clean(self):
        self.assertIn("2 headers", self.assert_passes("check_headers", self.options))

    def test_header_that_needs_another(self):
        self.write("src/core/timer.h", "#pragma once\nInteger Later();\n")
        self.assert_finds("check_headers", "src/core/timer.h:1:", "Integer", options=self.options)

    def test_nothing_is_compiled_twice(self):
        self.make_old()
        self.assert_passes("check_headers", self.options)
        notes = {path: path.stat().st_mtime_ns for path in (self.root / "build/check_headers").iterdir()}
        self.assertEqual(len(notes), 2)
        self.assert_passes("check_headers", self.options)
        self.assertEqual(notes, {path: path.stat().st_mtime_ns for path in notes})

    def test_a_change_below_is_seen(self):
        self.make_old()
        self.assert_passes("check_headers", self.options)
        self.write("src/core/integer.h", "#pragma once\nstruct Whole {};\n")
        self.assert_finds("check_headers", "src/core/clock.h:1:", options=self.options)

    def test_a_change_of_flags_is_seen(self):
        self.make_old()
        self.assert_passes("check_headers", self.options)
        commands = self.root / "build/compile_commands.json"
        commands.write_text(commands.read_text(encoding="utf-8").replace("-Isrc ", ""), encoding="utf-8")
        self.assert_finds("check_headers", "src/core/clock.h:1:", options=self.options)

    def test_missing_build(self):
        code, output = run("check_headers", self.root, "--build", str(self.root / "nowhere"))
        self.assertEqual(code, 2)
        self.assertIn("compile_commands.json", output)


if __name__ == "__main__":
    unittest.main()
