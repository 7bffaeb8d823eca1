#!/usr/bin/env python3
"""Runs clang-tidy over the changed sources of a built tree, two processes at a time.

Usage: run_tidy.py BUILD_FOLDER [SOURCE...]

Most of the time of a run is spent on the toolkit's headers. Therefore sources of one folder whose unnamed namespaces do
not clash are checked as one file, in groups of at most ten; a group that does not compile is halved. Sources named on
the command line are checked one by one. The precompiled headers belong to g++ and are left out.

A clean group gets a stamp in BUILD_FOLDER/tidy with a hash of everything that affects the result: the sources and all
our headers that they include, their compile commands, the list of checks. Exit code 1 if anything was found.
"""
import concurrent.futures
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
LARGEST_GROUP = 10
UNNAMED_NAMESPACE = re.compile(r"^namespace \{\n(.*?)^\} // namespace$", re.DOTALL | re.MULTILINE)
DECLARED_NAME = re.compile(r"\b([A-Za-z_]\w*)\s*(?:\(|=|\{|\[|;)")


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
        self.text = self.path.read_text(encoding="utf-8")
        words = shlex.split(entry["command"])
        product = words[words.index("-o") + 1]
        self.flags = []
        skipped = False
        for word in words[1:]:
            if not skipped and word not in ("-c", "-o", "-include", "-Winvalid-pch", entry["file"]):
                self.flags.append(word)
            skipped = word in ("-o", "-include")
        files = {(build / file).resolve() for file in dependencies.get(product, [])}
        self.files = {file for file in files if file.is_relative_to(ROOT) and not file.is_relative_to(build)}

    def unnamed(self):
        """The names in its unnamed namespaces, which can clash when two sources become one."""
        names = set()
        for body in UNNAMED_NAMESPACE.findall(self.text):
            for line in body.splitlines():
                if line and line[0] not in " /}#":
                    names.update(DECLARED_NAME.findall(line)[:1])
        return names


def grouped(sources):
    """Sources of one folder with the same flags, in groups without a clash of names."""
    groups = []
    for source in sorted(sources, key=lambda source: source.name):
        names = source.unnamed()
        for group in groups:
            if (group["folder"] == source.path.parent and group["flags"] == source.flags
                    and len(group["sources"]) < LARGEST_GROUP and not group["names"] & names):
                group["sources"].append(source)
                group["names"] |= names
                break
        else:
            groups.append({"folder": source.path.parent, "flags": source.flags, "names": names, "sources": [source]})
    return [group["sources"] for group in groups]


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


def tidy(path, flags, *options):
    command = ["clang-tidy", "--quiet", "--warnings-as-errors=*", f"--config-file={ROOT / '.clang-tidy'}", *options,
               str(path), "--", *flags]
    return subprocess.run(command, capture_output=True, text=True, check=False)


def compiles(path, flags):
    """Whether a source compiles. clang-tidy needs at least one check to run."""
    return tidy(path, flags, "--checks=-*,readability-misleading-indentation").returncode == 0


def joined(group):
    """The text of several sources as one. An include that an earlier source already has is left out."""
    included = set()
    lines = []
    for source in group:
        own = [line for line in source.text.splitlines() if not (line.startswith("#include") and line in included)]
        included.update(line for line in own if line.startswith("#include"))
        lines += own
    return "\n".join(lines) + "\n"


def check_one_by_one(group):
    runs = [tidy(source.path, source.flags) for source in group]
    return "".join(run.stdout + run.stderr for run in runs if run.returncode != 0)


def check(group, folder):
    """clang-tidy's findings in a group; empty if it is clean. A group that does not compile is halved."""
    if len(group) == 1:
        return check_one_by_one(group)
    whole = folder / (group[0].name.replace("/", "__") + ".group.cpp")
    whole.write_text(joined(group), encoding="utf-8")
    flags = [*group[0].flags, "-I", str(group[0].path.parent)]
    if not compiles(whole, flags):
        half = len(group) // 2
        return check(group[:half], folder) + check(group[half:], folder)
    # Only single sources give a finding its location.
    return "" if tidy(whole, flags).returncode == 0 else check_one_by_one(group)


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
