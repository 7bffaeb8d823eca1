#!/usr/bin/env python3
"""Runs clang-tidy over the changed sources of a built tree, two processes at a time.

Usage: run_tidy.py BUILD_FOLDER [SOURCE...]

A run over one source spends most of its time on the toolkit's headers. Therefore many sources are checked as one file,
with the flags of all of them. In it, a name of an unnamed namespace that another source also uses gets a suffix. If the
group does not compile, the sources with errors are checked apart from the others; a group with findings is halved until
they are those of single sources. Sources named on the command line are checked one by one. The precompiled headers
belong to g++ and are left out.

A clean group gets a stamp in BUILD_FOLDER/tidy with a hash of everything that affects the result: the sources and all
our headers that they include, their compile commands, the list of checks. Exit code 1 if anything was found.
"""
import concurrent.futures
import functools
import hashlib
import json
import pathlib
import re
import shlex
import subprocess
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent
FOLDERS = ("src", "bench")
WORKERS = 2
LINES_OF_A_GROUP = 3000
# Windowing headers define macros such as None and Status, which other sources use as names, and a type with a name of ours.
WINDOWING = re.compile(r"^#include <(X11|xcb)/", re.MULTILINE)
DISPLAYS = {ROOT / "src" / "platform" / name for name in ("display.h", "ports.h")}
# vantorix-leds shares no code with the jukebox, and some of its types have the same names.
LEDS = ROOT / "src" / "app" / "leds"
UNNAMED_NAMESPACE = re.compile(r"^namespace \{\n(.*?)^\} // namespace$", re.DOTALL | re.MULTILINE)
# What a line of an unnamed namespace declares: a type, otherwise the first name that is followed by one of these signs.
DECLARED_TYPE = re.compile(r"^(?:struct|class|union|enum(?: class| struct)?) (\w+)")
DECLARED_NAME = re.compile(r"(?<![\w:])([A-Za-z_]\w*)\s*(?:\(|=|\{|\[|;)")
DECLARES_NOTHING = re.compile(r"[ /}#]|static_assert|using [^=]*;")
ATTRIBUTE = re.compile(r"^__attribute__\(\(.*?\)\)+ ")
WORD = re.compile(r"[A-Za-z_]\w*")
TYPES_AND_OPERATORS = {"void", "bool", "char", "int", "unsigned", "long", "float", "double", "auto", "alignas",
                       "decltype", "noexcept", "operator", "sizeof", "requires"}


def read_dependencies(build):
    """Maps each object file to the files that it was made from, according to ninja."""
    lines = subprocess.run(["ninja", "-C", build, "-t", "deps"], capture_output=True, text=True, check=True).stdout
    dependencies = {}
    current = None
    for line in lines.splitlines():
        if line.startswith("    "):
            current.append(line.strip())
        elif ": #deps" in line:
            current = dependencies.setdefault(line.split(": #deps")[0], [])
    return dependencies


class Source:
    """A source with its compile flags and the files that affect clang-tidy's findings."""

    def __init__(self, entry, build, dependencies):
        self.path = pathlib.Path(entry["file"]).resolve()
        self.name = str(self.path.relative_to(ROOT))
        self.top = self.path.relative_to(ROOT).parts[0]
        self.text = self.path.read_text(encoding="utf-8")
        self.lines = self.text.count("\n")
        self.has_main = "\nint main(" in self.text
        words = shlex.split(entry["command"])
        product = words[words.index("-o") + 1]
        self.flags = []
        skipped = False
        for word in words[1:]:
            if not skipped and word not in ("-c", "-o", "-include", "-Winvalid-pch", entry["file"]):
                self.flags.append(word)
            skipped = word in ("-o", "-include")
        # What a precompiled header includes is known as what that was made from.
        header = f"{words[words.index('-include') + 1]}.gch" if "-include" in words else ""
        header = header.removeprefix(f"{build}/")
        files = {(build / file).resolve() for file in dependencies.get(product, []) + dependencies.get(header, [])}
        self.files = {file for file in files if file.is_relative_to(ROOT) and not file.is_relative_to(build)}

    def unnamed(self):
        """The names in its unnamed namespaces."""
        names = set()
        for body in UNNAMED_NAMESPACE.findall(self.text):
            for line in body.splitlines():
                if line and not DECLARES_NOTHING.match(line):
                    line = ATTRIBUTE.sub("", line)
                    found = DECLARED_TYPE.findall(line) or DECLARED_NAME.findall(line)
                    names.update([name for name in found if name not in TYPES_AND_OPERATORS][:1])
        return names

    def words(self):
        """The words of the source and of all our headers that it includes."""
        return set().union(*(words_of(path) for path in {self.path, *self.files}))

    def has_windows(self):
        return any(WINDOWING.search(path.read_text(encoding="utf-8")) for path in {self.path, *self.files})

    def renamed(self, suffix, others):
        """Its lines, with a suffix at the names of its unnamed namespaces that are words of others. A name that the source
        also uses as a member of a class keeps it."""
        names = "|".join(sorted(name for name in self.unnamed() & others if not re.search(rf"\w::{name}\b", self.text)))
        if not names:
            return self.text.splitlines()
        use = re.compile(rf"(?<![\w.])(?<!->)({names})\b")
        return [line if line.startswith("#include") else use.sub(rf"\1{suffix}", line) for line in self.text.splitlines()]


@functools.cache
def words_of(path):
    return frozenset(WORD.findall(path.read_text(encoding="utf-8")))


def pairs_of(flags):
    """The flags as tuples: an option that has its value in the next word, and that word, stay together."""
    words = iter(flags)
    return [(word, next(words)) if word == "-isystem" else (word,) for word in words]


def all_flags(sources):
    """The flags of several sources without repetitions."""
    pairs = dict.fromkeys(pair for source in sources for pair in pairs_of(source.flags))
    return [word for pair in pairs for word in pair]


def grouped(sources):
    """Sources of one top folder in groups, the longest group first."""
    groups = []
    for source in sorted(sources, key=lambda source: source.name):
        kind = (source.top, bool(DISPLAYS & source.files), source.has_windows(), LEDS in source.path.parents)
        for group in groups:
            if (group["kind"] == kind and group["lines"] + source.lines <= LINES_OF_A_GROUP
                    and not (source.has_main and group["has_main"])):
                group["sources"].append(source)
                group["has_main"] |= source.has_main
                group["lines"] += source.lines
                break
        else:
            groups.append({"kind": kind, "lines": source.lines, "has_main": source.has_main, "sources": [source]})
    return [group["sources"] for group in sorted(groups, key=lambda group: -group["lines"])]


def hash_of(group, version):
    """The input of the hash for a group; None if ninja does not know the headers of a source."""
    if not all(source.files for source in group):
        return None
    digest = hashlib.sha256(version.encode())
    for source in group:
        digest.update(shlex.join([source.name, *source.flags]).encode())
    for path in sorted(set().union(*(source.files for source in group)) | {ROOT / ".clang-tidy"}):
        digest.update(str(path.relative_to(ROOT)).encode() + b"\0" + path.read_bytes())
    return digest.hexdigest()


def tidy(path, flags):
    command = ["clang-tidy", "--quiet", "--warnings-as-errors=*", f"--config-file={ROOT / '.clang-tidy'}", str(path), "--",
               *flags]
    return subprocess.run(command, capture_output=True, text=True, check=False)


def joined(group):
    """The lines of several sources as one, each with its source. An include that an earlier source has is left out."""
    included = set()
    lines = []
    words = {source.name: source.words() for source in group}
    for index, source in enumerate(group):
        others = set().union(*(words[other.name] for other in group if other is not source))
        own = [line for line in source.renamed(f"Of{index}", others)
               if not (line.startswith("#include") and line in included)]
        included.update(line for line in own if line.startswith("#include"))
        lines += [(line, source) for line in own]
    return lines


def divided(group, lines, whole, report):
    """A group with findings in two: the sources that do not compile in it and the others, otherwise its halves."""
    errors = re.findall(rf"^{re.escape(str(whole))}:(\d+):\d+: error: .*\[clang-diagnostic-", report, re.MULTILINE)
    broken = {lines[int(number) - 1][1].name for number in errors}
    if 0 < len(broken) < len(group):
        return [source for source in group if source.name in broken], [source for source in group if source.name not in broken]
    return group[:len(group) // 2], group[len(group) // 2:]


def check(group, folder):
    """clang-tidy's findings in a group; empty if it is clean."""
    if len(group) == 1:
        run = tidy(group[0].path, group[0].flags)
        return run.stdout + run.stderr if run.returncode != 0 else ""
    whole = folder / (group[0].name.replace("/", "__") + ".group.cpp")
    lines = joined(group)
    whole.write_text("".join(line + "\n" for line, _ in lines), encoding="utf-8")
    run = tidy(whole, [*all_flags(group), "-I", str(ROOT / group[0].top)])
    if run.returncode == 0:
        return ""
    # Only single sources give a finding its location.
    return "".join(check(part, folder) for part in divided(group, lines, whole, run.stdout))


def main():
    build = pathlib.Path(sys.argv[1]).resolve()
    chosen = {pathlib.Path(name).resolve() for name in sys.argv[2:]}
    version = subprocess.run(["clang-tidy", "--version"], capture_output=True, text=True, check=True).stdout
    dependencies = read_dependencies(build)
    sources = []
    for entry in json.loads((build / "compile_commands.json").read_text()):
        path = pathlib.Path(entry["file"]).resolve()
        if any(path.is_relative_to(ROOT / folder) for folder in FOLDERS) and (not chosen or path in chosen):
            sources.append(Source(entry, build, dependencies))
    stamps = build / "tidy"
    stamps.mkdir(exist_ok=True)
    work = {}
    for group in [[source] for source in sources] if chosen else grouped(sources):
        key = hash_of(group, version)
        stamp = stamps / (hashlib.sha256("\0".join(source.name for source in group).encode()).hexdigest() + ".ok")
        if key is None or not stamp.exists() or stamp.read_text() != key:
            work[stamp] = (group, key)

    count = sum(len(group) for group, _ in work.values())
    checked = found = 0
    with concurrent.futures.ThreadPoolExecutor(WORKERS) as pool:
        running = {pool.submit(check, group, stamps): stamp for stamp, (group, _) in work.items()}
        for done in concurrent.futures.as_completed(running):
            stamp = running[done]
            group, key = work[stamp]
            findings = done.result()
            checked += len(group)
            print(f"[{checked}/{count}] {group[-1].name}", flush=True)
            if findings:
                found += 1
                print(findings, flush=True)
            elif key is not None:
                stamp.write_text(key)
    print(f"clang-tidy: {count} sources checked, findings in {found} groups")
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
