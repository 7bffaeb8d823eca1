#!/usr/bin/env python3
"""Runs clang-tidy over the sources of a built tree, two at a time, and only over those that have changed.

Usage: run_tidy.py BUILD_FOLDER [SOURCE...]

A source that was clean has a stamp in BUILD_FOLDER/tidy with a hash of what decides the answer: the source and every
header of ours that it includes, its compile command, the list of checks. Exit code 1 when anything was found.
"""
import concurrent.futures
import hashlib
import json
import pathlib
import shlex
import subprocess
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent
FOLDERS = ("src", "bench")
WORKERS = 2


def read_dependencies(build):
    """Object file to the files that it was made from, as ninja remembers them."""
    lines = subprocess.run(["ninja", "-C", build, "-t", "deps"], capture_output=True, text=True, check=True).stdout
    dependencies = {}
    current = None
    for line in lines.splitlines():
        if line.startswith("    "):
            current.append(line.strip())
        elif ": #deps" in line:
            current = dependencies.setdefault(line.split(": #deps")[0], [])
    return dependencies


def hash_of(entry, build, dependencies, version):
    """What decides the answer for one source; nothing when ninja does not know its headers."""
    command = shlex.split(entry["command"])
    files = dependencies.get(command[command.index("-o") + 1])
    if not files:
        return None
    paths = {(build / file).resolve() for file in files} | {ROOT / ".clang-tidy"}
    digest = hashlib.sha256((entry["command"] + version).encode())
    for path in sorted(paths):
        if path.is_relative_to(ROOT):
            digest.update(str(path.relative_to(ROOT)).encode() + b"\0" + path.read_bytes())
    return digest.hexdigest()


def check(source, build):
    return subprocess.run(["clang-tidy", "-p", str(build), "--quiet", "--warnings-as-errors=*", str(source)],
                          capture_output=True, text=True)


def main():
    build = pathlib.Path(sys.argv[1]).resolve()
    chosen = {pathlib.Path(name).resolve() for name in sys.argv[2:]}
    version = subprocess.run(["clang-tidy", "--version"], capture_output=True, text=True, check=True).stdout
    dependencies = read_dependencies(build)
    work = {}
    for entry in json.loads((build / "compile_commands.json").read_text()):
        source = pathlib.Path(entry["file"]).resolve()
        if not any(source.is_relative_to(ROOT / folder) for folder in FOLDERS) or (chosen and source not in chosen):
            continue
        key = hash_of(entry, build, dependencies, version)
        stamp = build / "tidy" / (str(source.relative_to(ROOT)) + ".ok")
        if key is None or not stamp.exists() or stamp.read_text() != key:
            work[source] = (key, stamp)

    found = 0
    with concurrent.futures.ThreadPoolExecutor(WORKERS) as pool:
        running = {pool.submit(check, source, build): source for source in sorted(work)}
        for done in concurrent.futures.as_completed(running):
            source = running[done]
            key, stamp = work[source]
            result = done.result()
            if result.returncode != 0:
                found += 1
                print(f"--- {source.relative_to(ROOT)}\n{result.stdout}{result.stderr}", flush=True)
            elif key is not None:
                stamp.parent.mkdir(parents=True, exist_ok=True)
                stamp.write_text(key)
    print(f"clang-tidy: {len(work)} sources looked at, {found} with findings")
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
