#!/usr/bin/python3
"""Sources that tools/run_tidy.py checks as one file have the findings that each has by itself."""

import json
import re
import shutil
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
FINDING = re.compile(r"^(\S+?):(\d+):\d+: (?:error|warning): .*\[([\w.-]+)(?:,-warnings-as-errors)?\]$", re.MULTILINE)

HEADER = """#pragma once
struct Row {
    int height;
};
int SizeOf(const Row& row);
"""

# The same names in unnamed namespaces: a constant, a type, a routine, a type with a constructor, an alias, and a local
# variable that has the name of another source's constant.
CLEAN = {
    "src/row.h": HEADER,
    "src/a.cpp": '#include "row.h"\nnamespace {\nconstexpr int kMost = 3;\nstruct Entry {\n    int size;\n};\n'
                 "int Twice(int size) {\n    return kMost * size;\n}\n} // namespace\n"
                 "int SizeOf(const Row& row) {\n    return Twice(Entry{row.height}.size);\n}\n",
    "src/b.cpp": "namespace {\nconstexpr int kMost = 4;\nclass Entry {\npublic:\n    explicit Entry(int size);\n"
                 "    int Size() const;\n\nprivate:\n    int size_;\n};\nEntry::Entry(int size) : size_(size) {}\n"
                 "int Entry::Size() const {\n    return size_;\n}\n} // namespace\n"
                 "int SizeB() {\n    return Entry(kMost).Size();\n}\n",
    "src/c.cpp": "#include <vector>\nnamespace {\nusing Entry = std::vector<int>;\n} // namespace\n"
                 "int SizeC() {\n    constexpr int kMost = 7;\n    const Entry entry(kMost);\n"
                 "    return static_cast<int>(entry.size());\n}\n",
}

# The overloads of a name in a header and in an unnamed namespace: with its suffix the second hides nothing any more, so
# this source does not compile together with one that uses the name.
OVERLOADED = {
    "src/overload.h": "#pragma once\nint Twice(double size);\n",
    "src/d.cpp": '#include "overload.h"\nnamespace {\nint Twice(const char* text) {\n    return *text;\n}\n} // namespace\n'
                 'int SizeD() {\n    return Twice("d") + Twice(2.5);\n}\n',
}

PLANTED = {
    "src/bugprone.cpp": ("bugprone-integer-division", "double HalfOf(int size) {\n    return size / 2;\n}\n"),
    "src/misc.cpp": ("misc-redundant-expression", "bool IsSame(int size) {\n    return size == size;\n}\n"),
    "src/analyzer.cpp": ("clang-analyzer-core.NullDereference",
                         "int Read(const int* place) {\n    if (!place) {\n        return *place;\n    }\n    return 1;\n}\n"),
    "src/performance.cpp": ("performance-unnecessary-value-param",
                            "#include <string>\nbool HasMore(std::string text) {\n    return text.size() > 1;\n}\n"),
    "src/readability.cpp": ("readability-braces-around-statements",
                            "int Sign(int size) {\n    if (size < 0)\n        return -1;\n    return 1;\n}\n"),
    "src/planted.h": ("modernize-use-nullptr", "#pragma once\ninline const char* NoText() {\n    return 0;\n}\n"),
    "src/user.cpp": (None, '#include "planted.h"\nconst char* Text() {\n    return NoText();\n}\n'),
}


class Tree:
    """A source tree with its own copy of the script."""

    def __init__(self, root, files):
        self.root, self.build = Path(root).resolve(), Path(root).resolve() / "build"
        for name in ("tools/run_tidy.py", ".clang-tidy"):
            (self.root / name).parent.mkdir(exist_ok=True)
            shutil.copy(ROOT / name, self.root / name)
        for name, text in files.items():
            (self.root / name).parent.mkdir(exist_ok=True)
            (self.root / name).write_text(text, encoding="utf-8")
        self.build.mkdir()
        (self.build / "build.ninja").write_text("rule none\n  command = true\n", encoding="utf-8")
        commands = [{"file": str(self.root / name), "command": f"c++ -std=c++20 -I{self.root}/src -o {name}.o -c {self.root / name}"}
                    for name in files if name.endswith(".cpp")]
        (self.build / "compile_commands.json").write_text(json.dumps(commands), encoding="utf-8")

    def check(self, *sources):
        run = subprocess.run([sys.executable, "-B", str(self.root / "tools" / "run_tidy.py"), str(self.build),
                              *(str(self.root / source) for source in sources)],
                             capture_output=True, text=True, check=False, cwd=self.root)
        found = {(str(Path(path).relative_to(self.root)), int(line), check) for path, line, check in FINDING.findall(run.stdout)}
        return run.returncode, found, run.stdout + run.stderr

    def groups(self):
        """How many files were made of several sources."""
        return len(list((self.build / "tidy").glob("*.group.cpp")))


class TidyTest(unittest.TestCase):
    def tree(self, files):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        return Tree(folder.name, files)

    def test_clashing_names_are_one_group(self):
        tree = self.tree(CLEAN)
        code, found, text = tree.check()
        self.assertEqual((code, found), (0, set()), text)
        self.assertEqual(tree.groups(), 1, text)

    def test_a_source_that_does_not_compile_with_others_is_checked_apart(self):
        tree = self.tree({**CLEAN, **OVERLOADED})
        code, found, text = tree.check()
        self.assertEqual((code, found), (0, set()), text)
        self.assertIn("4 sources checked", text)

    def test_planted_findings_are_those_of_single_sources(self):
        files = {**CLEAN, **OVERLOADED, **{name: text for name, (_, text) in PLANTED.items()}}
        tree = self.tree(files)
        code, together, text = tree.check()
        self.assertEqual(code, 1, text)
        self.assertEqual({(name, check) for name, _, check in together},
                         {(name, check) for name, (check, _) in PLANTED.items() if check}, text)
        _, alone, _ = tree.check(*(name for name in files if name.endswith(".cpp")))
        self.assertEqual(together, alone)

    def test_a_source_that_never_compiles_is_found(self):
        tree = self.tree({**CLEAN, "src/broken.cpp": "int Broken() {\n    return missing;\n}\n"})
        code, found, text = tree.check()
        self.assertEqual((code, found), (1, {("src/broken.cpp", 2, "clang-diagnostic-error")}), text)


if __name__ == "__main__":
    unittest.main()
